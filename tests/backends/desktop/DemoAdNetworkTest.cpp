#include "backends/desktop/DemoAdNetwork.h"

#include <gtest/gtest.h>

#include "platform/foundation/ManualRunLoop.h"

namespace nimbrel::desktop {
namespace {

struct Answers {
  bool interstitial = false, google = false, native = false, appOpen = false;
};

Answers ask(DemoAdNetwork::Fill fill) {
  ManualRunLoop loop(0);
  DemoAdNetwork network(fill);
  Answers got;
  network.requestAd(MAAdFormat::interstitial, "i", [&](std::optional<MAAd> ad) { got.interstitial = ad.has_value(); });
  network.requestAd(MAAdFormat::native, "n", [&](std::optional<MAAd> ad) { got.native = ad.has_value(); });
  network.requestAd(MAAdFormat::appOpen, "o", [&](std::optional<MAAd> ad) { got.appOpen = ad.has_value(); });
  network.requestInterstitial("g", [&](bool fill) { got.google = fill; });
  // Answers come on a later turn, as a network's would.
  EXPECT_FALSE(got.interstitial || got.native || got.appOpen || got.google);
  loop.runUntilIdle();
  return got;
}

TEST(DemoAdNetworkTest, TheSwitchDecidesWhichPlacementsAreFilled) {
  for (const char* on : {"demo", "all"}) {
    auto all = ask(DemoAdNetwork::fillFromText(on));
    EXPECT_TRUE(all.interstitial && all.native && all.appOpen && all.google) << on;
  }

  auto native = ask(DemoAdNetwork::fillFromText("native"));
  EXPECT_TRUE(native.native);
  EXPECT_FALSE(native.interstitial || native.appOpen || native.google);

  EXPECT_EQ(DemoAdNetwork::fillFromText(nullptr), DemoAdNetwork::Fill::none) << "ads are opted into";
  for (const char* off : {"", "none", "off", "Demo"}) {
    auto none = ask(DemoAdNetwork::fillFromText(off));
    EXPECT_FALSE(none.interstitial || none.native || none.appOpen || none.google) << off;
  }
}

}  // namespace
}  // namespace nimbrel::desktop
