#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/URL.h"
#include "platform/photos/PHAssetRecord.h"
#include "platform/photos/PHFetchResult.h"
#include "platform/photos/PHTypes.h"

class PHAssetCollection;
class PHFetchOptions;
class PHContentEditingInput;

struct PHContentEditingInputRequestOptions {
  bool networkAccessAllowed = false;
};

// One item of the photo library. A bare asset (made without a record) has no identifier and
// describes nothing; it stands in records that are not assets.
class PHAsset : public NSObject {
 public:
  PHAsset() = default;
  explicit PHAsset(std::shared_ptr<const PHAssetRecord> record) : record_(std::move(record)) {}

  PHAssetMediaType mediaType() const { return record_ ? record_->mediaType : PHAssetMediaType::unknown; }
  unsigned mediaSubtypes() const { return record_ ? record_->mediaSubtypes : 0; }
  std::optional<Date> creationDate() const { return record_ ? record_->creationDate : std::nullopt; }
  std::string localIdentifier() const { return record_ ? record_->localIdentifier : std::string(); }
  int pixelWidth() const { return record_ ? record_->pixelWidth : 0; }
  int pixelHeight() const { return record_ ? record_->pixelHeight : 0; }
  double duration() const { return record_ ? record_->duration : 0; }
  std::optional<CLLocation> location() const { return record_ ? record_->location : std::nullopt; }
  bool isFavorite() const { return record_ && record_->favorite; }
  // Key-value access for the keys the library answers ("filename"); no value otherwise.
  std::optional<PlistValue> valueForKey(std::string_view key) const;
  const std::shared_ptr<const PHAssetRecord>& record() const { return record_; }

  static PHFetchResult<PHAsset> fetchAssetsInAssetCollection(const PHAssetCollection& collection,
                                                             const PHFetchOptions* options);
  // Assets by their "assets-library" addresses: the id query value names the identifier's head.
  static PHFetchResult<PHAsset> fetchAssetsWithALAssetURLs(const std::vector<URL>& urls,
                                                           const PHFetchOptions* options);
  static PHFetchResult<PHAsset> fetchAssetsWithLocalIdentifiers(const std::vector<std::string>& ids,
                                                                const PHFetchOptions* options);
  static PHFetchResult<PHAsset> fetchAssetsWithOptions(const PHFetchOptions* options);
  static PHFetchResult<PHAsset> fetchAssetsWithMediaType(PHAssetMediaType type, const PHFetchOptions* options);

  using EditingInputHandler = std::function<void(std::shared_ptr<PHContentEditingInput>)>;
  PHImageRequestID requestContentEditingInputWithOptions(const PHContentEditingInputRequestOptions& options,
                                                         EditingInputHandler handler) const;

 private:
  std::shared_ptr<const PHAssetRecord> record_;
};

// The sort and filter of fetch options applied to a list of assets.
std::vector<std::shared_ptr<PHAsset>> applyFetchOptions(std::vector<std::shared_ptr<PHAsset>> assets,
                                                        const PHFetchOptions* options);

class PHContentEditingInput : public NSObject {
 public:
  explicit PHContentEditingInput(std::optional<URL> fullSizeImageURL) : url_(std::move(fullSizeImageURL)) {}
  const std::optional<URL>& fullSizeImageURL() const { return url_; }

 private:
  std::optional<URL> url_;
};
