#pragma once

#include <memory>
#include <string>

#include "platform/ads/AppLovinNetwork.h"
#include "platform/ads/GoogleAdsNetwork.h"

namespace nimbrel::desktop {

// The desktop's stand-in for the ad networks, for demonstrations only: no traffic leaves the
// machine; each placement is filled with a placeholder that says what it is. `NIMBREL_ADS` chooses
// ("demo" or "all": every placement; "native": the in-list slots only); unset, or anything else,
// means no network at all, so every placement goes without fill.
class DemoAdNetwork final : public AppLovinNetwork, public GoogleAdsNetwork {
 public:
  enum class Fill { all, native, none };
  explicit DemoAdNetwork(Fill fill) : fill_(fill) {}
  // Ads are opted into: no value, and an unknown one, is "none".
  static Fill fillFromText(const char* text);

  void initialize(std::function<void()> done) override;
  void requestAd(MAAdFormat format, const std::string& adUnit,
                 std::function<void(std::optional<MAAd>)> answer) override;
  void start(std::function<void()> done) override;
  void requestInterstitial(const std::string& adUnit, std::function<void(bool)> answer) override;

  // Installs one network for both SDKs; with `none`, none at all.
  static void install(Fill fill);

 private:
  bool fills(MAAdFormat format) const;
  Fill fill_;
  int served_ = 0;
};

}  // namespace nimbrel::desktop
