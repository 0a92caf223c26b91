#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/mediaplayer/MediaLibrarySource.h"

namespace nimbrel::desktop {

// Reverse geocoding without a network: the nearest of a built-in list of large cities, when one
// lies within `kReachKm` of the place.
class DesktopGeocoder : public GeocoderSource {
 public:
  static constexpr double kReachKm = 60;
  std::variant<std::vector<CLPlacemark>, NSError> reverseGeocode(const CLLocation& location) const override;
  static std::optional<std::string> nearestLocality(double latitude, double longitude);
};

// Durations read from the files themselves (libavformat); a song of the music library answers
// with the length its index already holds, which a player's load then need not probe twice.
class DesktopMediaDurations : public MediaDurations {
 public:
  explicit DesktopMediaDurations(std::weak_ptr<const MediaLibrarySource> music = {}) : music_(std::move(music)) {}
  double durationOfFile(const std::string& path) const override;

 private:
  std::weak_ptr<const MediaLibrarySource> music_;
};

}  // namespace nimbrel::desktop
