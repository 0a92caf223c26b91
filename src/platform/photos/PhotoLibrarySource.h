#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/Data.h"
#include "platform/foundation/NSError.h"
#include "platform/photos/PHAssetRecord.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIImage.h"

// What a photo library must provide: the simulated library of a fixture, or the desktop's indexed
// folders. The platform classes (PHAsset, PHAssetCollection, PHImageManager, ...) sort, filter and
// schedule on top of it. Calls come from any thread; implementations lock what they share.
class PhotoLibrarySource {
 public:
  struct Changes {
    struct NewCollection {
      std::string identifier;
      std::string title;
    };
    struct NewAsset {
      std::string identifier;
      UIImage image;
    };
    std::vector<std::string> deleteAssets;
    std::vector<std::string> deleteCollections;
    std::vector<NewCollection> createCollections;
    std::vector<NewAsset> createAssets;
    // Album identifier, then the assets to add to it.
    std::vector<std::pair<std::string, std::vector<std::string>>> addAssets;
    bool empty() const {
      return deleteAssets.empty() && deleteCollections.empty() && createCollections.empty() &&
             createAssets.empty() && addAssets.empty();
    }
  };
  // How a video request is answered.
  struct VideoAnswer {
    enum class Kind { url, composition, none } kind = Kind::none;
    std::string path;  // for `url`
    double duration = 0;
  };

  virtual ~PhotoLibrarySource() = default;

  // Every album, in the library's order.
  virtual std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const = 0;
  // Every asset, in the library's order.
  virtual std::vector<std::shared_ptr<const PHAssetRecord>> assets() const = 0;
  virtual std::shared_ptr<const PHAssetRecord> asset(const std::string& localIdentifier) const = 0;
  // The first asset, in library order, whose identifier's part before "/" is `head`.
  virtual std::shared_ptr<const PHAssetRecord> assetWithIdentifierHead(const std::string& head) const;

  // Applies the changes whole, after the platform's confirmation of any deletion, or none of
  // them; answers on a background queue.
  virtual void performChanges(Changes changes,
                              std::function<void(bool success, std::optional<NSError> error)> answer) = 0;

  // A picture of the asset fitting `target` (aspect fit or fill); none when it cannot be made.
  virtual std::optional<UIImage> image(const PHAssetRecord& asset, CGSize target, bool aspectFill) const = 0;
  virtual std::optional<Data> imageData(const PHAssetRecord& asset) const = 0;
  virtual std::optional<std::string> fullSizeImagePath(const PHAssetRecord& asset) const = 0;
  virtual VideoAnswer video(const PHAssetRecord& asset) const = 0;
  // The still and the movie of a live photo, when the asset is one and both are there.
  virtual bool hasLivePhoto(const PHAssetRecord& asset) const { return false; }

  static std::shared_ptr<PhotoLibrarySource> current();
  static void install(std::shared_ptr<PhotoLibrarySource> source);
};
