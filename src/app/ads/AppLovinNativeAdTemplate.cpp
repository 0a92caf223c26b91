#include "app/ads/AppLovinNativeAdTemplate.h"

#include "app/ads/AdLog.h"
#include "platform/ads/MANativeAdView.h"
#include "platform/foundation/FatalError.h"
#include "platform/uikit/NSLayoutConstraint.h"

namespace nimbrel {

UIView& AppLovinNativeAdTemplate::host(int line) {
  if (!view) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/AppLovinNativeAdTemplate", line);
  }
  return *view;
}

void AppLovinNativeAdTemplate::didLoadNativeAd(const std::shared_ptr<MANativeAdView>& adView, const MAAd&) {
  debugPrintLine("didLoadNativeAd(_:for:)");
  if (!adView) return;
  UIView& h = host(30);
  h.setHidden(false);
  h.addSubview(adView);
  adView->setTranslatesAutoresizingMaskIntoConstraints(false);
  auto hostPtr = view;
  for (auto attribute : {NSLayoutAttribute::width, NSLayoutAttribute::height, NSLayoutAttribute::centerX,
                         NSLayoutAttribute::centerY}) {
    h.addConstraint(std::make_shared<NSLayoutConstraint>(adView, attribute, hostPtr, attribute, 1.0, 0.0));
  }
  adView->setFrame(h.bounds());
}

void AppLovinNativeAdTemplate::didFailToLoadNativeAdForAdUnitIdentifier(const std::string&, const MAError&) {
  debugPrintLine("didFailToLoadNativeAd(forAdUnitIdentifier:withError:)");
  host(44).setHidden(true);
}

void AppLovinNativeAdTemplate::didClickNativeAd(const MAAd&) { debugPrintLine("didClickNativeAd(_:)"); }

}  // namespace nimbrel
