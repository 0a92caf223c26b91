#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/NSError.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHTypes.h"
#include "platform/uikit/UIImage.h"

// A stand-in for an object a change will create, known before the change commits.
struct PHObjectPlaceholder {
  std::string localIdentifier;
};

// The library: access and changes. A change block names its changes through the request classes
// below; they take effect together, after the platform's confirmation.
class PHPhotoLibrary {
 public:
  static PHPhotoLibrary& sharedPhotoLibrary();
  static PHAuthorizationStatus authorizationStatus();
  // The handler runs on a background queue.
  static void requestAuthorization(std::function<void(PHAuthorizationStatus)> handler);

  // The block runs on a background queue; the completion too, once the changes are done or
  // refused.
  void performChanges(std::function<void()> changeBlock,
                      std::function<void(bool success, std::optional<NSError> error)> completion);
};

class PHAssetChangeRequest {
 public:
  // Only inside a change block.
  static void deleteAssets(const std::vector<std::shared_ptr<PHAsset>>& assets);
  static PHAssetChangeRequest creationRequestForAssetFromImage(const UIImage& image);
  PHObjectPlaceholder placeholderForCreatedAsset() const { return placeholder_; }

 private:
  PHObjectPlaceholder placeholder_;
};

class PHAssetCollectionChangeRequest {
 public:
  static void deleteAssetCollections(const PHFetchResult<PHAssetCollection>& collections);
  static void deleteAssetCollections(const std::vector<std::shared_ptr<PHAssetCollection>>& collections);
  static PHAssetCollectionChangeRequest creationRequestForAssetCollectionWithTitle(const std::string& title);
  static PHAssetCollectionChangeRequest changeRequestForAssetCollection(const PHAssetCollection& collection);
  void addAssets(const std::vector<PHObjectPlaceholder>& assets);
  PHObjectPlaceholder placeholderForCreatedAssetCollection() const { return placeholder_; }

 private:
  PHObjectPlaceholder placeholder_;
};

// A new identifier of the library's form "<UUID>/L0/001".
std::string makeLocalIdentifier(const char* suffix = "L0/001");
