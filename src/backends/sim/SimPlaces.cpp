#include "backends/sim/SimPlaces.h"

#include <cmath>

namespace nimbrel::sim {

SimGeocoder::SimGeocoder(const PhotoLibrarySource& library) {
  for (const auto& asset : library.assets()) {
    if (!asset->location) continue;
    places_[{asset->location->coordinate.latitude, asset->location->coordinate.longitude}] = asset->locality;
  }
}

std::variant<std::vector<CLPlacemark>, NSError> SimGeocoder::reverseGeocode(const CLLocation& location) const {
  auto it = places_.find({location.coordinate.latitude, location.coordinate.longitude});
  if (it == places_.end()) {
    return NSError{"kCLErrorDomain", 8, "The operation couldn\u2019t be completed. (kCLErrorDomain error 8.)", {}, nullptr};
  }
  return std::vector<CLPlacemark>{CLPlacemark{it->second}};
}

SimMediaDurations::SimMediaDurations(const PhotoLibrarySource& photos, const MediaLibrarySource& music) {
  for (const auto& asset : photos.assets()) {
    if (asset->mediaType == PHAssetMediaType::video) durations_[asset->backingPath] = asset->duration;
  }
  for (const auto& song : music.songs()) {
    durations_[song->backingPath] = song->readable ? song->playbackDuration : std::nan("");
  }
}

double SimMediaDurations::durationOfFile(const std::string& path) const {
  auto it = durations_.find(path);
  return it == durations_.end() ? std::nan("") : it->second;
}

}  // namespace nimbrel::sim
