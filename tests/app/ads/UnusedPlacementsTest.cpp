// The placements no screen creates: they stand ready with their callbacks.
#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/ads/AppLovinBannerAd.h"
#include "app/ads/AppLovinNativeAdTemplate.h"
#include "app/ads/GoogleNativeAds.h"
#include "app/core/HomeViewController.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/uikit/UINib.h"

namespace nimbrel {
namespace {

class UnusedPlacementsTest : public testing::SimTest {};

TEST_F(UnusedPlacementsTest, ABannerShowsItsHostWhileAnAdStandsAndATemplateAdIsPinnedOverItsHost) {
  start();
  auto banner = std::make_shared<AppLovinBannerAd>();
  banner->view = std::make_shared<UIView>();
  banner->didLoadAd(MAAd{});
  EXPECT_FALSE(banner->view->isHidden());
  banner->didHideAd(MAAd{});
  EXPECT_TRUE(banner->view->isHidden());
  banner->didExpandAd(MAAd{});
  EXPECT_EQ(takeLog(), (std::vector<std::string>{"\"didLoad(_:)\"", "\"didHide(_:)\"", "\"didExpand(_:)\""}));
  banner->view.reset();
  EXPECT_DEATH(banner->didFailToDisplayAd(MAAd{}, MAError{}), "Unexpectedly found nil");

  // A template ad is pinned over its host by four constraints.
  auto placement = std::make_shared<AppLovinNativeAdTemplate>();
  placement->view = std::make_shared<UIView>(CGRectMake(0, 0, 300, 100));
  placement->view->setHidden(true);
  auto adView = std::make_shared<MANativeAdView>();
  placement->didLoadNativeAd(adView, MAAd{});
  EXPECT_FALSE(placement->view->isHidden());
  EXPECT_EQ(adView->superview(), placement->view);
  EXPECT_EQ(placement->view->constraints().size(), 4u);
  EXPECT_EQ(adView->frame().size, (CGSize{300, 100}));
  placement->didFailToLoadNativeAdForAdUnitIdentifier("unit", MAError{});
  EXPECT_TRUE(placement->view->isHidden());
  placement->view.reset();
  EXPECT_DEATH(placement->didFailToLoadNativeAdForAdUnitIdentifier("unit", MAError{}), "Unexpectedly found nil");
}

TEST_F(UnusedPlacementsTest, HomeBuildsTheFourGoogleLayoutsFromTheirNibsOrTheProcessEnds) {
  launchToHome();
  auto home = std::dynamic_pointer_cast<HomeViewController>(nav()->topViewController());
  ASSERT_TRUE(home);
  const auto& google = *home->googleNativeAds;
  EXPECT_TRUE(google.googleNativeAdsCustomeView1 && google.googleNativeAdsCustomeView2 &&
              google.googleNativeAdsCustomeView3 && google.googleNativeAdsCustomeView4);
  EXPECT_TRUE(google.googleNativeAdsCustomeView3->adUIView);
  GADAdLoader loader("unit");
  EXPECT_DEATH(home->googleNativeAds->adLoaderDidReceiveNativeAd(loader, GADNativeAd{}), "Unexpectedly found nil");
  // A nib whose first object is of another class.
  UINib::registerNib("GoogleNativeAdsCustomeView3", [] {
    return std::vector<std::shared_ptr<NSObject>>{std::make_shared<GoogleNativeAdsCustomeView4>()};
  });
  EXPECT_DEATH(GoogleNativeAds(), "Could not cast value to 'Nimbrel.GoogleNativeAdsCustomeView3'");
}

}  // namespace
}  // namespace nimbrel
