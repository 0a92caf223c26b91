#include "app/ads/AppLovinBannerAd.h"

#include "app/ads/AdLog.h"
#include "platform/foundation/FatalError.h"

namespace nimbrel {

UIView& AppLovinBannerAd::host(int line) {
  if (!view) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/AppLovinBannerAd", line);
  return *view;
}

void AppLovinBannerAd::didExpandAd(const MAAd&) { debugPrintLine("didExpand(_:)"); }
void AppLovinBannerAd::didCollapseAd(const MAAd&) { debugPrintLine("didCollapse(_:)"); }

void AppLovinBannerAd::didLoadAd(const MAAd&) {
  debugPrintLine("didLoad(_:)");
  host(40).setHidden(false);
}

void AppLovinBannerAd::didFailToLoadAdForAdUnitIdentifier(const std::string&, const MAError&) {
  debugPrintLine("didFailToLoadAd(forAdUnitIdentifier:withError:)");
  host(45).setHidden(true);
}

void AppLovinBannerAd::didDisplayAd(const MAAd&) { debugPrintLine("didDisplay(_:)"); }

void AppLovinBannerAd::didHideAd(const MAAd&) {
  debugPrintLine("didHide(_:)");
  host(54).setHidden(true);
}

void AppLovinBannerAd::didClickAd(const MAAd&) { debugPrintLine("didClick(_:)"); }

void AppLovinBannerAd::didFailToDisplayAd(const MAAd&, const MAError&) {
  debugPrintLine("didFail(toDisplay:withError:)");
  host(63).setHidden(true);
}

}  // namespace nimbrel
