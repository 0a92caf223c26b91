#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSObject.h"
#include "platform/foundation/PlistValue.h"
#include "platform/photos/PHAsset.h"

// One stored file of an asset.
class PHAssetResource : public NSObject {
 public:
  PHAssetResource(std::string originalFilename, std::optional<std::int64_t> fileSize)
      : originalFilename_(std::move(originalFilename)), fileSize_(fileSize) {}

  static std::vector<std::shared_ptr<PHAssetResource>> assetResourcesForAsset(const PHAsset& asset);
  const std::string& originalFilename() const { return originalFilename_; }
  // Key-value access: "fileSize" (an integer) when the library knows it; no value otherwise.
  std::optional<PlistValue> valueForKey(std::string_view key) const;

 private:
  std::string originalFilename_;
  std::optional<std::int64_t> fileSize_;
};
