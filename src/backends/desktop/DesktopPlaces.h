#pragma once

#include <optional>
#include <string>

#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"

namespace nimbrel::desktop {

// Reverse geocoding without a network: the nearest of a built-in list of large cities, when one
// lies within `kReachKm` of the place.
class DesktopGeocoder : public GeocoderSource {
 public:
  static constexpr double kReachKm = 60;
  std::variant<std::vector<CLPlacemark>, NSError> reverseGeocode(const CLLocation& location) const override;
  static std::optional<std::string> nearestLocality(double latitude, double longitude);
};

// Durations read from the files themselves (libavformat).
class DesktopMediaDurations : public MediaDurations {
 public:
  double durationOfFile(const std::string& path) const override;
};

}  // namespace nimbrel::desktop
