#pragma once

#include "backends/sim/Fixture.h"
#include "platform/foundation/VolumeInfoSource.h"

namespace nimbrel::sim {

// The volume figures the fixture gives, whatever the path.
class SimVolume : public VolumeInfoSource {
 public:
  explicit SimVolume(const Fixture& f)
      : figures_{f.volumeSize, f.volumeFree, f.volumeImportantAvailable} {}
  Figures figures(const std::string&) const override { return figures_; }

 private:
  Figures figures_;
};

}  // namespace nimbrel::sim
