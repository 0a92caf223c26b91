#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/foundation/ChangeSignal.h"

// The one full-screen ad on show, whichever SDK put it there. A shell draws it; the user (or a
// script) closes it.
class FullScreenAdStage {
 public:
  struct Showing {
    std::string network;  // "applovin" or "google"
    std::string format;   // "interstitial", "appOpen"
    std::string adUnit;
  };

  static FullScreenAdStage& shared();
  // False when another ad is already on show.
  bool present(Showing ad, std::function<void()> onClose);
  const std::optional<Showing>& showing() const { return showing_; }
  // The user closes the ad; false when none is on show.
  bool close();
  ChangeSignal& changed() { return changed_; }
  void reset();

 private:
  std::optional<Showing> showing_;
  std::function<void()> onClose_;
  ChangeSignal changed_;
};
