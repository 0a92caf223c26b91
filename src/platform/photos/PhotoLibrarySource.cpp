#include "platform/photos/PhotoLibrarySource.h"

#include <mutex>

#include "platform/foundation/DispatchQueue.h"

namespace {

// Without a backend the library is empty and refuses changes.
class EmptyLibrary : public PhotoLibrarySource {
 public:
  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const override { return {}; }
  std::vector<std::shared_ptr<const PHAssetRecord>> assets() const override { return {}; }
  std::shared_ptr<const PHAssetRecord> asset(const std::string&) const override { return nullptr; }
  void performChanges(Changes, std::function<void(bool, std::optional<NSError>)> answer) override {
    DispatchQueue::global().async([answer = std::move(answer)] {
      answer(false, NSError{"PHPhotosErrorDomain", 3311, "The operation couldn\u2019t be completed.", {}, nullptr});
    });
  }
  std::optional<UIImage> image(const PHAssetRecord&, CGSize, bool) const override { return std::nullopt; }
  std::optional<Data> imageData(const PHAssetRecord&) const override { return std::nullopt; }
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord&) const override { return std::nullopt; }
  VideoAnswer video(const PHAssetRecord&) const override { return {}; }
};

std::mutex gMutex;
std::shared_ptr<PhotoLibrarySource>& slot() {
  static std::shared_ptr<PhotoLibrarySource> s;
  return s;
}

}  // namespace

std::shared_ptr<PhotoLibrarySource> PhotoLibrarySource::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<EmptyLibrary>();
  return slot();
}

void PhotoLibrarySource::install(std::shared_ptr<PhotoLibrarySource> source) {
  std::lock_guard lock(gMutex);
  slot() = std::move(source);
}

std::shared_ptr<const PHAssetRecord> PhotoLibrarySource::assetWithIdentifierHead(const std::string& head) const {
  for (const auto& r : assets()) {
    const std::string& id = r->localIdentifier;
    if (id.compare(0, id.find('/'), head) == 0) return r;
  }
  return nullptr;
}
