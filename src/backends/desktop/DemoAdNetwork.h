#pragma once

#include <memory>
#include <string>

#include "platform/ads/AppLovinNetwork.h"
#include "platform/ads/GoogleAdsNetwork.h"

namespace nimbrel::desktop {

// The desktop's stand-in for the ad networks: no traffic leaves the machine; each placement is
// filled with a placeholder that says what it is, or left empty, as `NIMBREL_ADS` chooses
// ("all", the default; "native" for the in-list slots only; "none").
class DemoAdNetwork final : public AppLovinNetwork, public GoogleAdsNetwork {
 public:
  enum class Fill { all, native, none };
  explicit DemoAdNetwork(Fill fill) : fill_(fill) {}
  // An unknown value is taken as "none": a misspelt switch should not bring ads back.
  static Fill fillFromText(const char* text);

  void initialize(std::function<void()> done) override;
  void requestAd(MAAdFormat format, const std::string& adUnit,
                 std::function<void(std::optional<MAAd>)> answer) override;
  void start(std::function<void()> done) override;
  void requestInterstitial(const std::string& adUnit, std::function<void(bool)> answer) override;

  // Installs one network for both SDKs.
  static void install(Fill fill);

 private:
  bool fills(MAAdFormat format) const;
  Fill fill_;
  int served_ = 0;
};

}  // namespace nimbrel::desktop
