#include "app/core/SettingVC.h"

#include <gtest/gtest.h>

#include "app/core/ApplicationMain.h"
#include "app/core/Constant.h"
#include "app/core/HomeViewController.h"
#include "app/SimTest.h"
#include "app/VC/PopupMenu.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel {
namespace {

class SettingVCTest : public testing::SimTest {
 protected:
  // Launches, waits for the home screen and opens the settings from its menu, half a second later.
  std::shared_ptr<SettingVC> open(const std::string& fixture = "{}") {
    launchToHome(fixture);
    home = std::dynamic_pointer_cast<HomeViewController>(nav()->topViewController());
    EXPECT_TRUE(home);
    home->performAction("onMenuBtn:", home->btnMenu);
    pressPopupMenuEntry(2);
    advance(0.49);
    EXPECT_FALSE(nav()->presentedViewController());
    advance(0.01);
    auto settings = std::dynamic_pointer_cast<SettingVC>(nav()->presentedViewController());
    EXPECT_TRUE(settings);
    EXPECT_EQ(settings->modalPresentationStyle(), UIModalPresentationStyle::overFullScreen);
    return settings;
  }
  std::shared_ptr<HomeViewController> home;
};

// Two quick presses of rate opening the store twice is the e2e
// storage_analysis_from_menu_then_settings scenario's.
TEST_F(SettingVCTest, EachLinkOpensATenthOfASecondAfterItsPressEvenAfterAQuickBack) {
  struct Row {
    const char* selector;
    const char* sender;
    std::string url;
  };
  const Row rows[] = {{"onPrivacyPolicyBtn:", "btnPrivacyPolicy", Constant::privacyUrl()},
                      {"onClickTermsofUs:", "btnTerms", Constant::termsUrl()},
                      {"onRateUsBtn:", "btnRateUs", Constant::rateUrl()}};
  auto settings = open();
  std::vector<std::string> expected;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.selector);
    press(*settings, row.selector, row.sender);
    advance(0.09);
    EXPECT_EQ(openedURLs(), expected);
    advance(0.01);
    expected.push_back(row.url);
    EXPECT_EQ(openedURLs(), expected);
  }
  EXPECT_EQ(nav()->presentedViewController(), settings) << "the screen stays";

  // A press followed by a quick back still opens.
  press(*settings, "onPrivacyPolicyBtn:", "btnPrivacyPolicy");
  press(*settings, "onBackBtn:", "btnBack");
  EXPECT_FALSE(nav()->presentedViewController()) << "gone at once";
  EXPECT_EQ(nav()->topViewController(), home) << "what lay below is left as it was";
  advance(0.1);
  expected.push_back(Constant::privacyUrl());
  EXPECT_EQ(openedURLs(), expected);
}

TEST_F(SettingVCTest, TheShareSheetComesAfterThreeTenthsAndIsAnchoredOnlyOnAPad) {
  for (const char* idiom : {"phone", "pad"}) {
    SCOPED_TRACE(idiom);
    auto settings = open(std::string(R"({"device": {"idiom": ")") + idiom + "\"}}");
    auto button = std::dynamic_pointer_cast<UIView>(settings->outlet("btnShareUs"));
    press(*settings, "onShareUsBtn:", "btnShareUs");
    advance(0.29);
    EXPECT_FALSE(settings->presentedViewController());
    advance(0.01);
    auto sheet = std::dynamic_pointer_cast<UIActivityViewController>(settings->presentedViewController());
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->itemDescriptions(), (std::vector<std::string>{Constant::shareUrl()}));
    if (std::string(idiom) == "pad") {
      ASSERT_TRUE(sheet->popoverPresentationController());
      EXPECT_EQ(sheet->popoverPresentationController()->sourceView.lock(), button);
    } else {
      EXPECT_FALSE(sheet->popoverPresentationController());
    }
    EXPECT_TRUE(openedURLs().empty()) << "sharing opens nothing";
    platform.reset();
  }
}

TEST_F(SettingVCTest, TheTitleShowsWhileTheHeaderIsCollapsedWhichItCannotBeAndAnAdShows) {
  auto settings = open(R"({"ads": {"applovin": {"native": "fill"}}})");
  auto header = settings->HEADERView->delegate();
  ASSERT_TRUE(header);
  header->headerDidFinishCollapsing();
  EXPECT_FALSE(settings->TitleView->isHidden());
  header->headerDidFinishExpanding();
  EXPECT_TRUE(settings->TitleView->isHidden());
  // Under its 50-point minimum, the header has no room to collapse.
  settings->mainScrollView->setContentOffset({0, 300});
  EXPECT_EQ(settings->heightOfHeaderViewConstant->constant(), 44.0);
  EXPECT_EQ(settings->HEADERView->headerHeight(), 44.0) << "the header read its height at the scroll";
  settle();
  ASSERT_EQ(settings->nativeAdview->subviews().size(), 1u);
  EXPECT_TRUE(std::dynamic_pointer_cast<MANativeAdView>(settings->nativeAdview->subviews()[0]));
}
}  // namespace
}  // namespace nimbrel
