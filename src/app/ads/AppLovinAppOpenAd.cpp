#include "app/ads/AppLovinAppOpenAd.h"

#include "app/ads/AdLog.h"
#include "app/ads/AppLovinAdId.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/SharedInstance.h"

namespace nimbrel {

std::shared_ptr<AppLovinAppOpenAd> AppLovinAppOpenAd::shared() {
  return SharedInstance<AppLovinAppOpenAd>::get();
}

void AppLovinAppOpenAd::load(std::function<void()> done) {
  completion = std::move(done);
  appOpenAd = std::make_shared<MAAppOpenAd>(AppLovinAdId::appOpenAdUnit);
  appOpenAd->setDelegate(std::shared_ptr<MAAdDelegate>(strongSelf<AppLovinAppOpenAd>()));
  appOpenAd->loadAd();
}

void AppLovinAppOpenAd::callCompletion(int line) {
  if (!completion) {
    fatalError("Unexpectedly found nil while unwrapping an Optional value",
               "Nimbrel/AppLovinAppOpenAd", line);
  }
  completion();
}

void AppLovinAppOpenAd::didLoadAd(const MAAd&) {
  debugPrintLine("didLoad(_:)");
  if (appOpenAd && appOpenAd->isReady()) appOpenAd->showAd();
}

void AppLovinAppOpenAd::didFailToLoadAdForAdUnitIdentifier(const std::string&, const MAError&) {
  debugPrintLine("didFailToLoadAd(forAdUnitIdentifier:withError:)");
  callCompletion(41);
}

void AppLovinAppOpenAd::didDisplayAd(const MAAd&) {
  debugPrintLine("didDisplay(_:)");
}

void AppLovinAppOpenAd::didHideAd(const MAAd&) {
  debugPrintLine("didHide(_:)");
  callCompletion(50);
}

void AppLovinAppOpenAd::didClickAd(const MAAd&) {
  debugPrintLine("didClick(_:)");
}

void AppLovinAppOpenAd::didFailToDisplayAd(const MAAd&, const MAError&) {
  debugPrintLine("didFail(toDisplay:withError:)");
  callCompletion(59);
}

}  // namespace nimbrel
