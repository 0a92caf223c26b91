#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "backends/sim/Fixture.h"
#include "backends/sim/SimCallLog.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::sim {

// The fixture's photo library: assets with sparse backing files in the run's home, albums in the
// fixture's order, image and video requests answered as the fixture says, deletions applied once
// confirmed.
class SimPhotoLibrary : public PhotoLibrarySource {
 public:
  SimPhotoLibrary(const Fixture& fixture, const std::string& home, std::shared_ptr<SimCallLog> log);

  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const override;
  std::vector<std::shared_ptr<const PHAssetRecord>> assets() const override;
  std::shared_ptr<const PHAssetRecord> asset(const std::string& localIdentifier) const override;
  std::shared_ptr<const PHAssetRecord> assetWithIdentifierHead(const std::string& head) const override;
  void performChanges(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) override;
  std::optional<UIImage> image(const PHAssetRecord& asset, CGSize target, bool aspectFill) const override;
  std::optional<Data> imageData(const PHAssetRecord& asset) const override;
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord& asset) const override;
  VideoAnswer video(const PHAssetRecord& asset) const override;
  bool hasLivePhoto(const PHAssetRecord& asset) const override;

 private:
  struct Behaviour {
    std::string video;
    bool editingInput;
    bool imageData;
  };
  Behaviour behaviourOf(const std::string& id) const;

  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<const PHAssetRecord>> assets_;
  std::map<std::string, std::shared_ptr<const PHAssetRecord>> byId_;
  // The first asset of each identifier head, made when first asked after a change.
  mutable std::map<std::string, std::shared_ptr<const PHAssetRecord>> byHead_;
  mutable bool headsCurrent_ = false;
  std::map<std::string, Behaviour> behaviour_;
  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> albums_;
  bool confirmDeletes_;
  std::string folder_;
  std::shared_ptr<SimCallLog> log_;
};

}  // namespace nimbrel::sim
