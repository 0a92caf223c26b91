#include "platform/ads/MANativeAdLoader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FakeAdNetworks.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"

namespace {

using ads_test::FakeAppLovinNetwork;
using Lines = std::vector<std::string>;

class RecordingNativeDelegate : public MANativeAdDelegate {
 public:
  Lines heard;
  std::optional<MAAd> ad;
  void didLoadNativeAd(const std::shared_ptr<MANativeAdView>& view, const MAAd& loaded) override {
    heard.push_back(std::string("didLoadNativeAd ") + (view ? "with view" : "without view"));
    ad = loaded;
  }
  void didFailToLoadNativeAdForAdUnitIdentifier(const std::string& unit, const MAError& error) override {
    heard.push_back("didFailToLoadNativeAd " + unit + " " + std::to_string(error.code));
  }
  void didClickNativeAd(const MAAd&) override { heard.push_back("didClickNativeAd"); }
};

class MANativeAdLoaderTest : public ::testing::Test {
 protected:
  ManualRunLoop loop;
  std::shared_ptr<FakeAppLovinNetwork> network = std::make_shared<FakeAppLovinNetwork>();
  std::shared_ptr<RecordingNativeDelegate> delegate = std::make_shared<RecordingNativeDelegate>();

  void SetUp() override { AppLovinNetwork::install(network); }

  std::shared_ptr<MANativeAdLoader> makeLoader() {
    auto loader = std::make_shared<MANativeAdLoader>("native");
    loader->setNativeAdDelegate(delegate);
    return loader;
  }
};

TEST_F(MANativeAdLoaderTest, LoadingReportsTheAdOrNoFillOneTurnLaterToALoaderStillThere) {
  struct Row {
    bool fill, loaderDestroyed;
    Lines heard;
  };
  for (const Row& row : {Row{true, false, {"didLoadNativeAd without view"}},
                         Row{false, false, {"didFailToLoadNativeAd native 204"}}, Row{true, true, {}}}) {
    network->filled.clear();
    if (row.fill) network->filled.insert(MAAdFormat::native);
    delegate->heard.clear();
    auto loader = makeLoader();

    loader->loadAd();
    if (row.loaderDestroyed) loader.reset();

    EXPECT_TRUE(delegate->heard.empty());
    loop.runUntilIdle();
    EXPECT_EQ(delegate->heard, row.heard);
  }
  ASSERT_TRUE(delegate->ad.has_value());
  EXPECT_EQ(delegate->ad->format, MAAdFormat::native);
}

// A native layout: title 101, body 102, call to action 103, plus an untagged badge label.
struct Layout {
  std::shared_ptr<MANativeAdView> view = std::make_shared<MANativeAdView>(CGRectMake(0, 0, 390, 120));
  std::shared_ptr<UILabel> title = std::make_shared<UILabel>();
  std::shared_ptr<UILabel> body = std::make_shared<UILabel>();
  std::shared_ptr<UIButton> cta = std::make_shared<UIButton>();
  std::shared_ptr<UILabel> badge = std::make_shared<UILabel>();

  Layout() {
    title->setTag(101);
    body->setTag(102);
    cta->setTag(103);
    badge->setText("Ad");
    for (const auto& v : std::initializer_list<std::shared_ptr<UIView>>{badge, title, body, cta}) {
      view->addSubview(v);
    }
  }
};

TEST_F(MANativeAdLoaderTest, RenderingFillsOnlyTheSubviewsBoundByTagOfABoundView) {
  Layout unbound;
  EXPECT_FALSE(makeLoader()->renderNativeAdView(unbound.view, {}));
  EXPECT_FALSE(makeLoader()->renderNativeAdView(nullptr, {}));
  EXPECT_FALSE(unbound.view->renderedAd().has_value());
  EXPECT_EQ(unbound.title->text(), std::nullopt);

  struct Row {
    const char* name;
    long bodyTag, ctaTag;
    std::optional<std::string> body, cta;
  };
  for (const Row& row : {Row{"all bound", 102, 103, "Try it now", "Install"},
                         Row{"only the title bound", 0, 0, std::nullopt, std::nullopt}}) {
    SCOPED_TRACE(row.name);
    Layout layout;
    layout.view->setTag(500);  // the ad view itself is tagged, so tag 0 finds its untagged children
    MANativeAdViewBinder binder;
    binder.titleLabelTag = 101;
    binder.bodyLabelTag = row.bodyTag;
    binder.callToActionButtonTag = row.ctaTag;
    layout.view->bindViewsWithAdViewBinder(binder);

    EXPECT_TRUE(makeLoader()->renderNativeAdView(
        layout.view, {MAAdFormat::native, "native", "Fake", "Great app", "Try it now", "Install"}));

    EXPECT_EQ(layout.title->text(), "Great app");
    EXPECT_EQ(layout.body->text(), row.body);
    EXPECT_EQ(layout.cta->currentTitle(), row.cta);
    EXPECT_EQ(layout.badge->text(), "Ad");
    ASSERT_TRUE(layout.view->renderedAd().has_value());
    EXPECT_EQ(layout.view->renderedAd()->title, "Great app");
  }
}

}  // namespace
