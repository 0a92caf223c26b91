#pragma once

#include <cmath>
#include <memory>
#include <string>

// How long the timed media in a file lasts; NaN when it cannot be read as media. The simulated
// platform answers from its fixture, the desktop from the files themselves.
class MediaDurations {
 public:
  virtual ~MediaDurations() = default;
  virtual double durationOfFile(const std::string& path) const = 0;

  static std::shared_ptr<MediaDurations> current();
  static void install(std::shared_ptr<MediaDurations> source);
};
