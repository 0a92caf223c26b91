#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/ads/MAAd.h"
#include "platform/ads/MAAdDelegate.h"
#include "platform/foundation/NSObject.h"

// What the interstitial and app-open formats share: load through the installed network, report to
// the delegate one turn later, show on the full-screen stage.
class MAFullscreenAd : public NSObject {
 public:
  MAFullscreenAd(MAAdFormat format, std::string adUnitIdentifier);
  void setDelegate(std::weak_ptr<MAAdDelegate> delegate) { delegate_ = std::move(delegate); }
  std::shared_ptr<MAAdDelegate> delegate() const { return delegate_.lock(); }
  const std::string& adUnitIdentifier() const { return adUnit_; }
  void loadAd();
  bool isReady() const { return loaded_.has_value(); }
  void showAd();

 protected:
  virtual const char* sdkClassName() const = 0;

 private:
  MAAdFormat format_;
  std::string adUnit_;
  std::weak_ptr<MAAdDelegate> delegate_;
  std::optional<MAAd> loaded_;
  bool loading_ = false;
};
