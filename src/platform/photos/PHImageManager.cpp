#include "platform/photos/PHImageManager.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/SharedInstance.h"
#include "platform/photos/PhotoLibrarySource.h"

std::shared_ptr<PHImageManager> PHImageManager::defaultManager() {
  return SharedInstance<PHImageManager>::get();
}

PHImageRequestID PHImageManager::nextRequest() {
  std::lock_guard lock(mutex_);
  PHImageRequestID id = ++last_;
  live_.insert(id);
  return id;
}

bool PHImageManager::takeIfLive(PHImageRequestID request) {
  std::lock_guard lock(mutex_);
  return live_.erase(request) > 0;
}

void PHImageManager::cancelImageRequest(PHImageRequestID request) {
  std::lock_guard lock(mutex_);
  live_.erase(request);
}

size_t PHImageManager::imageRequestCount() const {
  std::lock_guard lock(mutex_);
  return imageRequests_;
}

PHImageRequestID PHImageManager::requestImageForAsset(const std::shared_ptr<PHAsset>& asset, CGSize targetSize,
                                                      PHImageContentMode contentMode,
                                                      const PHImageRequestOptions* options,
                                                      ImageHandler handler) {
  PHImageRequestID id = nextRequest();
  {
    std::lock_guard lock(mutex_);
    ++imageRequests_;
  }
  auto record = asset ? asset->record() : nullptr;
  bool fill = contentMode == PHImageContentMode::aspectFill;
  auto answer = [record, targetSize, fill] {
    return record ? PhotoLibrarySource::current()->image(*record, targetSize, fill) : std::nullopt;
  };
  if (options && options->synchronous) {
    auto image = answer();
    if (takeIfLive(id)) handler(std::move(image), PHImageRequestInfo{});
    return id;
  }
  auto self = strongSelf<PHImageManager>();
  DispatchQueue::main().async([self, id, answer, handler = std::move(handler)] {
    auto image = answer();
    if (self->takeIfLive(id)) handler(std::move(image), PHImageRequestInfo{});
  });
  return id;
}

PHImageRequestID PHImageManager::requestImageDataForAsset(const std::shared_ptr<PHAsset>& asset,
                                                          const PHImageRequestOptions* options,
                                                          DataHandler handler) {
  PHImageRequestID id = nextRequest();
  auto record = asset ? asset->record() : nullptr;
  auto self = strongSelf<PHImageManager>();
  auto deliver = [self, id, record, handler = std::move(handler)] {
    auto data = record ? PhotoLibrarySource::current()->imageData(*record) : std::nullopt;
    PHImageRequestInfo info;
    if (data && !record->backingPath.empty()) info.fileURL = URL::fileURLWithPath(record->backingPath);
    if (self->takeIfLive(id)) handler(std::move(data), "public.jpeg", 0, info);
  };
  if (options && options->synchronous) {
    deliver();
  } else {
    DispatchQueue::main().async(std::move(deliver));
  }
  return id;
}

PHImageRequestID PHImageManager::requestAVAssetForVideo(const std::shared_ptr<PHAsset>& asset,
                                                        const PHVideoRequestOptions*, VideoHandler handler) {
  PHImageRequestID id = nextRequest();
  auto record = asset ? asset->record() : nullptr;
  auto self = strongSelf<PHImageManager>();
  DispatchQueue::global(QualityOfService::userInitiated).async([self, id, record, handler = std::move(handler)] {
    std::shared_ptr<AVAsset> result;
    if (record) {
      auto video = PhotoLibrarySource::current()->video(*record);
      switch (video.kind) {
        case PhotoLibrarySource::VideoAnswer::Kind::url:
          result = std::make_shared<AVURLAsset>(URL::fileURLWithPath(video.path, false), video.duration);
          break;
        case PhotoLibrarySource::VideoAnswer::Kind::composition:
          result = std::make_shared<AVComposition>(video.duration);
          break;
        case PhotoLibrarySource::VideoAnswer::Kind::none:
          break;
      }
    }
    if (self->takeIfLive(id)) handler(std::move(result), PHImageRequestInfo{});
  });
  return id;
}

PHImageRequestID PHImageManager::requestLivePhotoForAsset(const std::shared_ptr<PHAsset>& asset, CGSize,
                                                          PHImageContentMode, const PHLivePhotoRequestOptions*,
                                                          LivePhotoHandler handler) {
  PHImageRequestID id = nextRequest();
  auto record = asset ? asset->record() : nullptr;
  auto self = strongSelf<PHImageManager>();
  DispatchQueue::main().async([self, id, record, handler = std::move(handler)] {
    std::shared_ptr<PHLivePhoto> photo;
    if (record && PhotoLibrarySource::current()->hasLivePhoto(*record)) {
      photo = std::make_shared<PHLivePhoto>(
          CGSize{static_cast<double>(record->pixelWidth), static_cast<double>(record->pixelHeight)},
          record->backingPath);
    }
    if (self->takeIfLive(id)) handler(std::move(photo), PHImageRequestInfo{});
  });
  return id;
}
