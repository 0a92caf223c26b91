#pragma once

namespace nimbrel {

// The nib "AppLovinNativeAdView": three layouts; the one at index 2 is the manual native ad view
// whose subviews carry the binder's tags 101 to 105.
void registerNativeAdNib();
// The nibs of the four Google native layouts, each named after its class.
void registerGoogleNativeAdNibs();

}  // namespace nimbrel
