#pragma once

#include <memory>
#include <string>

#include "platform/ads/MAAdDelegate.h"
#include "platform/uikit/UIView.h"

// Banner and leader callbacks beside the full-screen ones.
class MAAdViewAdDelegate : public MAAdDelegate {
 public:
  virtual void didExpandAd(const MAAd& ad) = 0;
  virtual void didCollapseAd(const MAAd& ad) = 0;
};

// An AppLovin banner: a view that loads its own creative.
class MAAdView : public UIView {
 public:
  explicit MAAdView(std::string adUnitIdentifier) : adUnitIdentifier_(std::move(adUnitIdentifier)) {}
  const char* className() const override { return "MAAdView"; }
  const std::string& adUnitIdentifier() const { return adUnitIdentifier_; }
  std::weak_ptr<MAAdViewAdDelegate> delegate;

 private:
  std::string adUnitIdentifier_;
};
