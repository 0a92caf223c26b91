#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::testing {

// The installed library seen through a window: counts how often albums and assets are listed, and
// lets a test replace the answer to image-data requests or to changes. Everything else goes
// through to the library underneath.
class ObservedPhotoLibrary : public PhotoLibrarySource {
 public:
  using ImageDataAnswer = std::function<std::optional<std::optional<Data>>(const PHAssetRecord&)>;
  using ChangesAnswer = std::function<bool(Changes&, std::function<void(bool, std::optional<NSError>)>&)>;

  explicit ObservedPhotoLibrary(std::shared_ptr<PhotoLibrarySource> inner) : inner_(std::move(inner)) {}

  // Wraps the library installed now and installs the wrapper.
  static std::shared_ptr<ObservedPhotoLibrary> install() {
    auto observed = std::make_shared<ObservedPhotoLibrary>(PhotoLibrarySource::current());
    PhotoLibrarySource::install(observed);
    return observed;
  }

  size_t collectionReads() const { return collectionReads_; }
  size_t assetReads() const { return assetReads_; }
  // Return a value to answer in place of the library, none to let it answer.
  ImageDataAnswer imageDataAnswer;
  // Return true when the change was answered here.
  ChangesAnswer changesAnswer;

  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const override {
    ++collectionReads_;
    return inner_->collections();
  }
  std::vector<std::shared_ptr<const PHAssetRecord>> assets() const override {
    ++assetReads_;
    return inner_->assets();
  }
  std::shared_ptr<const PHAssetRecord> asset(const std::string& id) const override { return inner_->asset(id); }
  void performChanges(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) override {
    if (changesAnswer && changesAnswer(changes, answer)) return;
    inner_->performChanges(std::move(changes), std::move(answer));
  }
  std::optional<UIImage> image(const PHAssetRecord& a, CGSize target, bool fill) const override {
    return inner_->image(a, target, fill);
  }
  std::optional<Data> imageData(const PHAssetRecord& a) const override {
    if (imageDataAnswer) {
      if (auto replaced = imageDataAnswer(a)) return *replaced;
    }
    return inner_->imageData(a);
  }
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord& a) const override {
    return inner_->fullSizeImagePath(a);
  }
  VideoAnswer video(const PHAssetRecord& a) const override { return inner_->video(a); }
  bool hasLivePhoto(const PHAssetRecord& a) const override { return inner_->hasLivePhoto(a); }

 private:
  std::shared_ptr<PhotoLibrarySource> inner_;
  mutable std::atomic<size_t> collectionReads_{0};
  mutable std::atomic<size_t> assetReads_{0};
};

}  // namespace nimbrel::testing
