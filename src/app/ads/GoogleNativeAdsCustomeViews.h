#pragma once

#include <memory>

#include "platform/ads/GADAdLoader.h"
#include "platform/ads/GADNativeAdView.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// Four nib-backed layouts for a Google native ad; each nib is named after its class.
class GoogleNativeAdsCustomeView1 : public UIView {
 public:
  static inline constexpr const char* kTypeName = "GoogleNativeAdsCustomeView1";
  using UIView::UIView;
  const char* className() const override { return kTypeName; }
  std::shared_ptr<GADNativeAdView> adUIView;
  std::shared_ptr<NSLayoutConstraint> imgIconWidthConstant;
  GADNativeAd nativeAd;
};

class GoogleNativeAdsCustomeView2 : public UIView {
 public:
  static inline constexpr const char* kTypeName = "GoogleNativeAdsCustomeView2";
  using UIView::UIView;
  const char* className() const override { return kTypeName; }
  std::shared_ptr<GADNativeAdView> adUIView;
  GADNativeAd nativeAd;
};

class GoogleNativeAdsCustomeView3 : public UIView {
 public:
  static inline constexpr const char* kTypeName = "GoogleNativeAdsCustomeView3";
  using UIView::UIView;
  const char* className() const override { return kTypeName; }
  std::shared_ptr<GADNativeAdView> adUIView;
  std::shared_ptr<NSLayoutConstraint> nativeAdsWidth;
  GADNativeAd nativeAd;
};

class GoogleNativeAdsCustomeView4 : public UIView {
 public:
  static inline constexpr const char* kTypeName = "GoogleNativeAdsCustomeView4";
  using UIView::UIView;
  const char* className() const override { return kTypeName; }
  std::shared_ptr<GADNativeAdView> adUIView;
  std::shared_ptr<NSLayoutConstraint> imgIconWidthConstant;
  GADNativeAd nativeAd;
};

}  // namespace nimbrel
