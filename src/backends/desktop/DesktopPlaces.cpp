#include "backends/desktop/DesktopPlaces.h"

#include <cmath>

#include "backends/desktop/media/MediaProbe.h"

namespace nimbrel::desktop {

namespace {

struct City {
  const char* name;
  double latitude, longitude;
};

constexpr City kCities[] = {
    {"London", 51.5072, -0.1276},      {"Paris", 48.8566, 2.3522},         {"Berlin", 52.5200, 13.4050},
    {"Madrid", 40.4168, -3.7038},      {"Barcelona", 41.3874, 2.1686},     {"Lisbon", 38.7223, -9.1393},
    {"Rome", 41.9028, 12.4964},        {"Milan", 45.4642, 9.1900},         {"Vienna", 48.2082, 16.3738},
    {"Prague", 50.0755, 14.4378},      {"Amsterdam", 52.3676, 4.9041},     {"Brussels", 50.8503, 4.3517},
    {"Zurich", 47.3769, 8.5417},       {"Munich", 48.1351, 11.5820},       {"Hamburg", 53.5511, 9.9937},
    {"Copenhagen", 55.6761, 12.5683},  {"Stockholm", 59.3293, 18.0686},    {"Oslo", 59.9139, 10.7522},
    {"Helsinki", 60.1699, 24.9384},    {"Dublin", 53.3498, -6.2603},       {"Edinburgh", 55.9533, -3.1883},
    {"Warsaw", 52.2297, 21.0122},      {"Budapest", 47.4979, 19.0402},     {"Athens", 37.9838, 23.7275},
    {"Istanbul", 41.0082, 28.9784},    {"Moscow", 55.7558, 37.6173},       {"Kyiv", 50.4501, 30.5234},
    {"Cairo", 30.0444, 31.2357},       {"Marrakesh", 31.6295, -7.9811},    {"Cape Town", -33.9249, 18.4241},
    {"Nairobi", -1.2921, 36.8219},     {"Lagos", 6.5244, 3.3792},          {"Dubai", 25.2048, 55.2708},
    {"Mumbai", 19.0760, 72.8777},      {"Delhi", 28.7041, 77.1025},        {"Bangkok", 13.7563, 100.5018},
    {"Singapore", 1.3521, 103.8198},   {"Hong Kong", 22.3193, 114.1694},   {"Shanghai", 31.2304, 121.4737},
    {"Beijing", 39.9042, 116.4074},    {"Seoul", 37.5665, 126.9780},       {"Tokyo", 35.6762, 139.6503},
    {"Kyoto", 35.0116, 135.7681},      {"Sydney", -33.8688, 151.2093},     {"Melbourne", -37.8136, 144.9631},
    {"Auckland", -36.8485, 174.7633},  {"Honolulu", 21.3069, -157.8583},   {"San Francisco", 37.7749, -122.4194},
    {"Los Angeles", 34.0522, -118.2437}, {"Seattle", 47.6062, -122.3321},  {"Vancouver", 49.2827, -123.1207},
    {"Las Vegas", 36.1699, -115.1398}, {"Denver", 39.7392, -104.9903},     {"Chicago", 41.8781, -87.6298},
    {"Toronto", 43.6532, -79.3832},    {"Montreal", 45.5017, -73.5673},    {"New York", 40.7128, -74.0060},
    {"Boston", 42.3601, -71.0589},     {"Washington", 38.9072, -77.0369},  {"Miami", 25.7617, -80.1918},
    {"Mexico City", 19.4326, -99.1332}, {"Havana", 23.1136, -82.3666},     {"Bogotá", 4.7110, -74.0721},
    {"Lima", -12.0464, -77.0428},      {"Rio de Janeiro", -22.9068, -43.1729}, {"São Paulo", -23.5505, -46.6333},
    {"Buenos Aires", -34.6037, -58.3816}, {"Santiago", -33.4489, -70.6693}, {"Reykjavík", 64.1466, -21.9426},
};

double distanceKm(double lat1, double lon1, double lat2, double lon2) {
  constexpr double kRad = M_PI / 180, kEarthKm = 6371;
  double dlat = (lat2 - lat1) * kRad, dlon = (lon2 - lon1) * kRad;
  double a = std::sin(dlat / 2) * std::sin(dlat / 2) +
             std::cos(lat1 * kRad) * std::cos(lat2 * kRad) * std::sin(dlon / 2) * std::sin(dlon / 2);
  return 2 * kEarthKm * std::asin(std::min(1.0, std::sqrt(a)));
}

}  // namespace

std::optional<std::string> DesktopGeocoder::nearestLocality(double latitude, double longitude) {
  const City* best = nullptr;
  double bestKm = kReachKm;
  for (const auto& c : kCities) {
    double d = distanceKm(latitude, longitude, c.latitude, c.longitude);
    if (d <= bestKm) {
      bestKm = d;
      best = &c;
    }
  }
  if (!best) return std::nullopt;
  return std::string(best->name);
}

std::variant<std::vector<CLPlacemark>, NSError> DesktopGeocoder::reverseGeocode(const CLLocation& location) const {
  auto locality = nearestLocality(location.coordinate.latitude, location.coordinate.longitude);
  if (!locality) {
    return NSError{"kCLErrorDomain", 8, "The operation couldn\u2019t be completed. (kCLErrorDomain error 8.)", {}, nullptr};
  }
  return std::vector<CLPlacemark>{CLPlacemark{locality}};
}

double DesktopMediaDurations::durationOfFile(const std::string& path) const {
  if (auto music = music_.lock(); music && !path.empty()) {
    for (const auto& song : music->songs()) {
      if (song->backingPath != path) continue;
      if (song->readable && song->playbackDuration > 0) return song->playbackDuration;
      break;
    }
  }
  auto d = probeDuration(path);
  return d ? *d : std::nan("");
}

}  // namespace nimbrel::desktop
