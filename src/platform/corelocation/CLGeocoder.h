#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/NSError.h"

struct CLPlacemark {
  std::optional<std::string> locality;
};

// Where reverse geocoding gets its answers: the simulated places of a fixture, or nothing.
class GeocoderSource {
 public:
  virtual ~GeocoderSource() = default;
  // Placemarks for the location, or an error.
  virtual std::variant<std::vector<CLPlacemark>, NSError> reverseGeocode(const CLLocation& location) const = 0;
  static std::shared_ptr<GeocoderSource> current();
  static void install(std::shared_ptr<GeocoderSource> source);
};

class CLGeocoder {
 public:
  using Completion = std::function<void(std::vector<CLPlacemark>, std::optional<NSError>)>;
  // Answers later, on the main queue.
  void reverseGeocodeLocation(const CLLocation& location, Completion completion);
};
