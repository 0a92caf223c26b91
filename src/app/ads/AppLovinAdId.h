#pragma once

namespace nimbrel {

// AppLovin ad units, one per role. A deployment puts its own in place of the placeholder.
struct AppLovinAdId {
  static inline constexpr const char* appOpenAdUnit = "YOUR_AD_UNIT_ID";
  static inline constexpr const char* interstitialAdUnit = "YOUR_AD_UNIT_ID";
  static inline constexpr const char* nativeAdUnit = "YOUR_AD_UNIT_ID";
};

// Google's interstitial unit (Google's published test unit until a deployment sets its own).
inline constexpr const char* kGoogleInterstitialAdUnit = "ca-app-pub-3940256099942544/4411468910";

}  // namespace nimbrel
