#pragma once

// A place on the globe.
struct CLLocationCoordinate2D {
  double latitude = 0;
  double longitude = 0;
  bool operator==(const CLLocationCoordinate2D&) const = default;
};

struct CLLocation {
  CLLocationCoordinate2D coordinate;
  bool operator==(const CLLocation&) const = default;
};
