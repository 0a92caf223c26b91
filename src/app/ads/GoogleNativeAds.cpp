#include "app/ads/GoogleNativeAds.h"

#include "app/ads/AdLog.h"
#include "platform/foundation/FatalError.h"
#include "platform/uikit/UINib.h"

namespace nimbrel {

namespace {

constexpr const char* kFile = "Nimbrel/GoogleNativeAds";

// Top-level object 0 of the nib named after the class; anything else ends the process.
template <class View>
std::shared_ptr<View> fromNib() {
  auto nib = UINib::nibWithNibName(View::kTypeName);
  if (!nib) fatalError(std::string("Could not load NIB in bundle: '") + View::kTypeName + "'", kFile, 0);
  auto objects = nib->instantiateWithOwner(nullptr);
  auto view = objects.empty() ? nullptr : std::dynamic_pointer_cast<View>(objects.front());
  if (!view) fatalError(std::string("Could not cast value to 'Nimbrel.") + View::kTypeName + "'", kFile, 0);
  return view;
}

}  // namespace

GoogleNativeAds::GoogleNativeAds()
    : googleNativeAdsCustomeView1(fromNib<GoogleNativeAdsCustomeView1>()),
      googleNativeAdsCustomeView2(fromNib<GoogleNativeAdsCustomeView2>()),
      googleNativeAdsCustomeView4(fromNib<GoogleNativeAdsCustomeView4>()),
      googleNativeAdsCustomeView3(fromNib<GoogleNativeAdsCustomeView3>()) {}

void GoogleNativeAds::adLoaderDidReceiveNativeAd(GADAdLoader&, const GADNativeAd& ad) {
  if (!completion) fatalError("Unexpectedly found nil while unwrapping an Optional value", kFile, 0);
  completion(ad);
}

void GoogleNativeAds::adLoaderDidFailToReceiveAdWithError(GADAdLoader&, const GADError& error) {
  debugPrintLine("Error: " + error.localizedDescription);
}

}  // namespace nimbrel
