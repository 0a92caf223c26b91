#include "app/storyboard/NativeAdNib.h"

#include "app/ads/GoogleNativeAdsCustomeViews.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINib.h"

namespace nimbrel {

namespace {

std::shared_ptr<MANativeAdView> makeLayout(double width, double height, bool withMedia) {
  auto view = std::make_shared<MANativeAdView>(CGRectMake(0, 0, width, height));
  view->setBackgroundColor(UIColor::whiteColor());
  auto icon = std::make_shared<UIImageView>(CGRectMake(8, 8, 40, 40));
  icon->setTag(104);
  auto title = std::make_shared<UILabel>(CGRectMake(56, 8, width - 64, 20));
  title->setTag(101);
  title->setFont(UIFont::boldSystemFontOfSize(15));
  auto body = std::make_shared<UILabel>(CGRectMake(56, 30, width - 64, 36));
  body->setTag(102);
  body->setNumberOfLines(2);
  body->setFont(UIFont::systemFontOfSize(13));
  auto cta = std::make_shared<UIButton>(CGRectMake(width - 108, height - 40, 100, 32));
  cta->setTag(103);
  for (const auto& v : std::initializer_list<std::shared_ptr<UIView>>{icon, title, body, cta}) {
    view->addSubview(v);
  }
  if (withMedia) {
    auto media = std::make_shared<UIView>(CGRectMake(8, 72, width - 16, height - 120));
    media->setTag(105);
    view->addSubview(media);
  }
  return view;
}

}  // namespace

void registerNativeAdNib() {
  UINib::registerNib("AppLovinNativeAdView", [] {
    return std::vector<std::shared_ptr<NSObject>>{
        makeLayout(390, 300, true),
        makeLayout(390, 250, true),
        makeLayout(390, 120, false),
    };
  });
}

namespace {

// A layout of one Google native view: the ad view filling it.
template <class View>
void registerGoogleLayout(double height) {
  UINib::registerNib(View::kTypeName, [height] {
    auto view = std::make_shared<View>(CGRectMake(0, 0, 390, height));
    view->adUIView = std::make_shared<GADNativeAdView>(view->bounds());
    view->addSubview(view->adUIView);
    return std::vector<std::shared_ptr<NSObject>>{view};
  });
}

}  // namespace

void registerGoogleNativeAdNibs() {
  registerGoogleLayout<GoogleNativeAdsCustomeView1>(120);
  registerGoogleLayout<GoogleNativeAdsCustomeView2>(300);
  registerGoogleLayout<GoogleNativeAdsCustomeView3>(250);
  registerGoogleLayout<GoogleNativeAdsCustomeView4>(90);
}

}  // namespace nimbrel
