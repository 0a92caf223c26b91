#pragma once

namespace nimbrel {

// The nib "AppLovinNativeAdView": three layouts; the one at index 2 is the manual native ad view
// whose subviews carry the binder's tags 101 to 105.
void registerNativeAdNib();

}  // namespace nimbrel
