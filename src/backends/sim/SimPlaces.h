#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/av/MediaDurations.h"
#include "platform/corelocation/CLGeocoder.h"
#include "platform/mediaplayer/MediaLibrarySource.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::sim {

// Reverse geocoding from the fixture's assets: a location of an asset answers its locality (or a
// placemark without one); any other place is unknown.
class SimGeocoder : public GeocoderSource {
 public:
  explicit SimGeocoder(const PhotoLibrarySource& library);
  std::variant<std::vector<CLPlacemark>, NSError> reverseGeocode(const CLLocation& location) const override;

 private:
  std::map<std::pair<double, double>, std::optional<std::string>> places_;
};

// Durations of the simulated media files: videos as their assets say, songs as theirs unless the
// fixture marks them unreadable.
class SimMediaDurations : public MediaDurations {
 public:
  SimMediaDurations(const PhotoLibrarySource& photos, const MediaLibrarySource& music);
  double durationOfFile(const std::string& path) const override;

 private:
  std::map<std::string, double> durations_;
};

}  // namespace nimbrel::sim
