#include "platform/corelocation/CLGeocoder.h"

#include <mutex>

#include "platform/foundation/DispatchQueue.h"

namespace {

// Without a source no place is known: every request fails as offline geocoding does.
class NoPlaces : public GeocoderSource {
 public:
  std::variant<std::vector<CLPlacemark>, NSError> reverseGeocode(const CLLocation&) const override {
    return NSError{"kCLErrorDomain", 2, "The operation couldn\u2019t be completed. (kCLErrorDomain error 2.)", {}, nullptr};
  }
};

std::mutex gMutex;
std::shared_ptr<GeocoderSource>& slot() {
  static std::shared_ptr<GeocoderSource> s;
  return s;
}

}  // namespace

std::shared_ptr<GeocoderSource> GeocoderSource::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<NoPlaces>();
  return slot();
}

void GeocoderSource::install(std::shared_ptr<GeocoderSource> source) {
  std::lock_guard lock(gMutex);
  slot() = std::move(source);
}

void CLGeocoder::reverseGeocodeLocation(const CLLocation& location, Completion completion) {
  auto answer = GeocoderSource::current()->reverseGeocode(location);
  DispatchQueue::main().async([answer = std::move(answer), completion = std::move(completion)] {
    if (auto places = std::get_if<std::vector<CLPlacemark>>(&answer)) {
      completion(*places, std::nullopt);
    } else {
      completion({}, std::get<NSError>(answer));
    }
  });
}
