#include "platform/coreimage/GaussianBlur.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A bright vertical line on an opaque grey field, blurred with sigma 10: across the line the
// profile is the Gaussian's within the three-box approximation, the same on both sides, the
// same on every row, and the light is neither made nor lost.
TEST(GaussianBlurTest, ALineSpreadsAsTheGaussianOfItsSigma) {
  const int w = 81, h = 41, line = 40, margin = 30;
  const double sigma = 10;
  std::vector<std::uint8_t> rgba(static_cast<size_t>(w) * h * 4);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      std::uint8_t* p = rgba.data() + (static_cast<size_t>(y) * w + x) * 4;
      p[0] = p[1] = p[2] = x == line ? 255 : 0;
      p[3] = 255;
    }
  }
  auto out = gaussianBlurRGBA(rgba.data(), w, h, sigma, margin);
  ASSERT_EQ(out.width, w + 2 * margin);
  ASSERT_EQ(out.height, h + 2 * margin);
  auto red = [&](int x, int y) { return double(out.rgba[(static_cast<size_t>(y + margin) * out.width + x + margin) * 4]); };
  auto alpha = [&](int x, int y) { return double(out.rgba[(static_cast<size_t>(y + margin) * out.width + x + margin) * 4 + 3]); };
  const int mid = h / 2;
  double total = 0;
  for (int d = -25; d <= 25; ++d) {
    double expected = 255 * std::exp(-d * d / (2 * sigma * sigma)) / (sigma * std::sqrt(2 * M_PI));
    EXPECT_NEAR(red(line + d, mid), expected, 1.5) << "at " << d;
    EXPECT_NEAR(red(line + d, mid), red(line - d, mid), 1.0) << "at " << d;
    EXPECT_EQ(red(line + d, mid), red(line + d, mid - 5)) << "at " << d;
    total += red(line + d, mid);
  }
  EXPECT_NEAR(total, 255, 6);
  EXPECT_LT(alpha(-margin, mid), 10) << "the blur fades out past the source's edge";
}

}  // namespace
