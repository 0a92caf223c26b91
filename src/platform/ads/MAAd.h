#pragma once

#include <string>

enum class MAAdFormat { interstitial, appOpen, native };

const char* maAdFormatName(MAAdFormat format);

// One ad the network delivered.
struct MAAd {
  MAAdFormat format = MAAdFormat::interstitial;
  std::string adUnitIdentifier;
  std::string networkName;
  // Creative of a native ad.
  std::string title;
  std::string body;
  std::string callToAction;
};

struct MAError {
  int code = 204;
  std::string message = "No Fill";
};
