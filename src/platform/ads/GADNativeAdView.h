#pragma once

#include "platform/uikit/UIView.h"

// The view a Google native ad is drawn into, with its asset views as outlets of the nib.
class GADNativeAdView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "GADNativeAdView"; }
};
