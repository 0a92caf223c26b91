#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/NSObject.h"
#include "platform/photos/PHAssetRecord.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"

// An album of the library. A bare one (no record) is empty.
class PHAssetCollection : public NSObject {
 public:
  PHAssetCollection() = default;
  explicit PHAssetCollection(std::shared_ptr<const PHAssetCollectionRecord> record) : record_(std::move(record)) {}

  std::string localIdentifier() const { return record_ ? record_->localIdentifier : std::string(); }
  std::optional<std::string> localizedTitle() const { return record_ ? record_->title : std::nullopt; }
  PHAssetCollectionType assetCollectionType() const {
    return record_ ? record_->type : PHAssetCollectionType::album;
  }
  PHAssetCollectionSubtype assetCollectionSubtype() const { return record_ ? record_->subtype : 0; }
  size_t estimatedAssetCount() const { return record_ ? record_->assetIdentifiers.size() : 0; }
  const std::shared_ptr<const PHAssetCollectionRecord>& record() const { return record_; }

  // The albums of a type and subtype (or any subtype), in the library's order, filtered and sorted
  // by the options.
  static PHFetchResult<PHAssetCollection> fetchAssetCollectionsWithType(PHAssetCollectionType type,
                                                                        PHAssetCollectionSubtype subtype,
                                                                        const PHFetchOptions* options);
  static PHFetchResult<PHAssetCollection> fetchAssetCollectionsWithLocalIdentifiers(
      const std::vector<std::string>& identifiers, const PHFetchOptions* options);

 private:
  std::shared_ptr<const PHAssetCollectionRecord> record_;
};
