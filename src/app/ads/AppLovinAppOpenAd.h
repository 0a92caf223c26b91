#pragma once

#include <functional>
#include <memory>

#include "platform/ads/MAAdDelegate.h"
#include "platform/ads/MAAppOpenAd.h"
#include "platform/foundation/NSObject.h"

namespace nimbrel {

// The app-open ad of a return from the background: fetched afresh each time, shown once loaded.
class AppLovinAppOpenAd : public NSObject, public MAAdDelegate {
 public:
  static std::shared_ptr<AppLovinAppOpenAd> shared();

  std::shared_ptr<MAAppOpenAd> appOpenAd;
  std::function<void()> completion;

  void load(std::function<void()> completion);

  void didLoadAd(const MAAd& ad) override;
  void didFailToLoadAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) override;
  void didDisplayAd(const MAAd& ad) override;
  void didHideAd(const MAAd& ad) override;
  void didClickAd(const MAAd& ad) override;
  void didFailToDisplayAd(const MAAd& ad, const MAError& error) override;

 private:
  void callCompletion(int line);
};

}  // namespace nimbrel
