#include "platform/ads/MAAd.h"

const char* maAdFormatName(MAAdFormat format) {
  switch (format) {
    case MAAdFormat::interstitial: return "interstitial";
    case MAAdFormat::appOpen: return "appOpen";
    case MAAdFormat::native: return "native";
  }
  return "unknown";
}
