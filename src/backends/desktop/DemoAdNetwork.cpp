#include "backends/desktop/DemoAdNetwork.h"

#include <cstring>

#include "platform/foundation/DispatchQueue.h"

namespace nimbrel::desktop {

DemoAdNetwork::Fill DemoAdNetwork::fillFromText(const char* text) {
  if (!text) return Fill::none;
  if (std::strcmp(text, "demo") == 0 || std::strcmp(text, "all") == 0) return Fill::all;
  if (std::strcmp(text, "native") == 0) return Fill::native;
  return Fill::none;
}

bool DemoAdNetwork::fills(MAAdFormat format) const {
  switch (fill_) {
    case Fill::all: return true;
    case Fill::native: return format == MAAdFormat::native;
    case Fill::none: return false;
  }
  return false;
}

void DemoAdNetwork::initialize(std::function<void()> done) {
  DispatchQueue::main().async(std::move(done));
}

void DemoAdNetwork::start(std::function<void()> done) {
  DispatchQueue::main().async(std::move(done));
}

void DemoAdNetwork::requestAd(MAAdFormat format, const std::string& adUnit,
                              std::function<void(std::optional<MAAd>)> answer) {
  std::optional<MAAd> ad;
  if (fills(format)) {
    ++served_;
    ad = MAAd{format, adUnit, "Nimbrel demo network", "Placeholder ad " + std::to_string(served_),
              "This space shows an advertisement in the phone edition. Nothing was fetched.", "Close"};
  }
  DispatchQueue::main().async([answer = std::move(answer), ad] { answer(ad); });
}

void DemoAdNetwork::requestInterstitial(const std::string&, std::function<void(bool)> answer) {
  bool fill = fills(MAAdFormat::interstitial);
  DispatchQueue::main().async([answer = std::move(answer), fill] { answer(fill); });
}

void DemoAdNetwork::install(Fill fill) {
  if (fill == Fill::none) {
    // The SDKs' own stand-ins answer every request without fill.
    AppLovinNetwork::install(nullptr);
    GoogleAdsNetwork::install(nullptr);
    return;
  }
  auto network = std::make_shared<DemoAdNetwork>(fill);
  AppLovinNetwork::install(network);
  GoogleAdsNetwork::install(network);
}

}  // namespace nimbrel::desktop
