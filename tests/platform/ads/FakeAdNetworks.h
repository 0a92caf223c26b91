#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/ads/AppLovinNetwork.h"
#include "platform/ads/GoogleAdsNetwork.h"
#include "platform/foundation/DispatchQueue.h"

namespace ads_test {

// Answers on the next main-queue turn, as a network does; fills the formats it is told to.
class FakeAppLovinNetwork : public AppLovinNetwork {
 public:
  std::set<MAAdFormat> filled;
  bool preloadedInterstitial = false;
  int requests = 0;

  void initialize(std::function<void()> done) override { DispatchQueue::main().async(std::move(done)); }
  void requestAd(MAAdFormat format, const std::string& adUnit,
                 std::function<void(std::optional<MAAd>)> answer) override {
    ++requests;
    std::optional<MAAd> ad;
    if (filled.count(format)) {
      ad = MAAd{format, adUnit, "Fake", "Title " + std::to_string(requests), "Body", "Install"};
    }
    DispatchQueue::main().async([answer = std::move(answer), ad] { answer(ad); });
  }
  bool hasPreloadedAd(MAAdFormat format) const override {
    return preloadedInterstitial && format == MAAdFormat::interstitial;
  }
  void record(const std::string&) override {}
};

class FakeGoogleAdsNetwork : public GoogleAdsNetwork {
 public:
  bool fill = true;

  void start(std::function<void()> done) override { DispatchQueue::main().async(std::move(done)); }
  void requestInterstitial(const std::string&, std::function<void(bool)> answer) override {
    DispatchQueue::main().async([answer = std::move(answer), fill = fill] { answer(fill); });
  }
  void record(const std::string&) override {}
};

}  // namespace ads_test
