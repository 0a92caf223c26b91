#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "platform/av/AVAsset.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/NSObject.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHImageRequestOptions.h"
#include "platform/photos/PHLivePhoto.h"
#include "platform/photos/PHTypes.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIImage.h"

// What a request's handler is told besides the result.
struct PHImageRequestInfo {
  bool cancelled = false;
  bool degraded = false;
  // The file a data request read (the platform's PHImageFileURLKey), where there is one.
  std::optional<URL> fileURL;
};

// Pictures, data and playable media of assets. A synchronous image request answers before it
// returns, on the caller's thread; other image and data requests answer one main-queue turn later;
// video requests answer on a background queue. A cancelled request never answers.
class PHImageManager : public NSObject {
 public:
  using ImageHandler = std::function<void(std::optional<UIImage>, const PHImageRequestInfo&)>;
  using DataHandler = std::function<void(std::optional<Data>, std::string dataUTI, int orientation,
                                         const PHImageRequestInfo&)>;
  using VideoHandler = std::function<void(std::shared_ptr<AVAsset>, const PHImageRequestInfo&)>;
  using LivePhotoHandler = std::function<void(std::shared_ptr<PHLivePhoto>, const PHImageRequestInfo&)>;

  static std::shared_ptr<PHImageManager> defaultManager();

  PHImageRequestID requestImageForAsset(const std::shared_ptr<PHAsset>& asset, CGSize targetSize,
                                        PHImageContentMode contentMode, const PHImageRequestOptions* options,
                                        ImageHandler handler);
  PHImageRequestID requestImageDataForAsset(const std::shared_ptr<PHAsset>& asset,
                                            const PHImageRequestOptions* options, DataHandler handler);
  PHImageRequestID requestAVAssetForVideo(const std::shared_ptr<PHAsset>& asset,
                                          const PHVideoRequestOptions* options, VideoHandler handler);
  // Answers one main-queue turn later; no live photo for an asset that is none.
  PHImageRequestID requestLivePhotoForAsset(const std::shared_ptr<PHAsset>& asset, CGSize targetSize,
                                            PHImageContentMode contentMode, const PHLivePhotoRequestOptions* options,
                                            LivePhotoHandler handler);
  void cancelImageRequest(PHImageRequestID request);

  // How many image requests have been made (a measure for scrolling cost).
  size_t imageRequestCount() const;

 protected:
  PHImageRequestID nextRequest();
  bool takeIfLive(PHImageRequestID request);

 private:
  mutable std::mutex mutex_;
  PHImageRequestID last_ = 0;
  std::set<PHImageRequestID> live_;
  size_t imageRequests_ = 0;
};

// The caching manager's shared instance is the default manager.
class PHCachingImageManager : public PHImageManager {
 public:
  static std::shared_ptr<PHImageManager> defaultManager() { return PHImageManager::defaultManager(); }
};
