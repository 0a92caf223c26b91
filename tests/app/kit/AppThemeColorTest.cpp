#include "app/kit/AppThemeColor.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

constexpr double kRed = 0.9834601f, kGreen = 0.7096537f, kBlue = 0.16932446f;

TEST(AppThemeColorTest, TheThemeIsTheSinglePrecisionDesignValueWidened) {
  // Widened floats, not the decimal literals read as doubles.
  EXPECT_NE(AppThemeColor().AppTheme().red, 0.9834601);
  EXPECT_EQ(static_cast<float>(AppThemeColor().AppTheme().green), 0.7096537f);
  EXPECT_EQ(themeTextColor, UIColor::rgba(kRed, kGreen, kBlue));
}

TEST(AppThemeColorTest, TheSelectionFillIsTheThemeOfTheMomentItIsFirstRead) {
  AppThemeColor colors;
  const UIColor blue = UIColor::systemBlueColor();
  colors.setAppTheme(blue);
  EXPECT_EQ(colors.selectionFillColor(), blue);
  // Kept when the theme changes later, in copies too.
  colors.setAppTheme(UIColor::systemRedColor());
  AppThemeColor copy = colors;
  EXPECT_EQ(colors.selectionFillColor(), blue);
  EXPECT_EQ(copy.selectionFillColor(), blue);
  EXPECT_EQ(copy.AppTheme(), UIColor::systemRedColor());
}

}  // namespace
}  // namespace nimbrel
