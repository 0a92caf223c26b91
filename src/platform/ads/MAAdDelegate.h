#pragma once

#include <string>

#include "platform/ads/MAAd.h"

// The delegate of the full-screen formats.
class MAAdDelegate {
 public:
  virtual ~MAAdDelegate() = default;
  virtual void didLoadAd(const MAAd& ad) = 0;
  virtual void didFailToLoadAdForAdUnitIdentifier(const std::string& adUnit, const MAError& error) = 0;
  virtual void didDisplayAd(const MAAd& ad) = 0;
  virtual void didHideAd(const MAAd& ad) = 0;
  virtual void didClickAd(const MAAd& ad) = 0;
  virtual void didFailToDisplayAd(const MAAd& ad, const MAError& error) = 0;
};
