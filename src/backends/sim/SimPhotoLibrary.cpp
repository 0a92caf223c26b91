#include "backends/sim/SimPhotoLibrary.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/uikit/ImageHeader.h"

namespace nimbrel::sim {

namespace {

void makeSparseFile(const std::string& path, std::int64_t size) {
  int fd = ::open(path.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
  if (fd < 0 || ::ftruncate(fd, size) != 0) fatalError("cannot make the backing file " + path);
  ::close(fd);
}

}  // namespace

SimPhotoLibrary::SimPhotoLibrary(const Fixture& fixture, const std::string& home, std::shared_ptr<SimCallLog> log)
    : confirmDeletes_(fixture.confirmPhotoDeletes), folder_(home + "/PhotoLibrary"), log_(std::move(log)) {
  std::error_code ec;
  std::filesystem::create_directories(folder_, ec);
  size_t index = 0;
  std::set<std::string> taken;
  for (const auto& a : fixture.photoAssets) {
    auto record = std::make_shared<PHAssetRecord>(a.record);
    ++index;
    // Files keep the asset's own name; a second asset of the same name gets a folder of its own.
    std::string name = record->filename.empty() ? "asset" : record->filename;
    std::string dir = folder_;
    if (!taken.insert(name).second) {
      dir = folder_ + "/" + std::to_string(index);
      std::filesystem::create_directories(dir, ec);
    }
    record->backingPath = dir + "/" + name;
    makeSparseFile(record->backingPath, record->fileSize.value_or(0));
    byId_[record->localIdentifier] = record;
    behaviour_[record->localIdentifier] = {a.video, a.editingInput, a.imageData};
    assets_.push_back(std::move(record));
  }
  for (const auto& album : fixture.photoAlbums) {
    albums_.push_back(std::make_shared<PHAssetCollectionRecord>(album));
  }
}

std::vector<std::shared_ptr<const PHAssetCollectionRecord>> SimPhotoLibrary::collections() const {
  std::lock_guard lock(mutex_);
  return albums_;
}

std::vector<std::shared_ptr<const PHAssetRecord>> SimPhotoLibrary::assets() const {
  std::lock_guard lock(mutex_);
  return assets_;
}

std::shared_ptr<const PHAssetRecord> SimPhotoLibrary::asset(const std::string& id) const {
  std::lock_guard lock(mutex_);
  auto it = byId_.find(id);
  return it == byId_.end() ? nullptr : it->second;
}

std::shared_ptr<const PHAssetRecord> SimPhotoLibrary::assetWithIdentifierHead(const std::string& head) const {
  std::lock_guard lock(mutex_);
  if (!headsCurrent_) {
    byHead_.clear();
    for (const auto& r : assets_) byHead_.emplace(r->localIdentifier.substr(0, r->localIdentifier.find('/')), r);
    headsCurrent_ = true;
  }
  auto it = byHead_.find(head);
  return it == byHead_.end() ? nullptr : it->second;
}

SimPhotoLibrary::Behaviour SimPhotoLibrary::behaviourOf(const std::string& id) const {
  std::lock_guard lock(mutex_);
  auto it = behaviour_.find(id);
  return it == behaviour_.end() ? Behaviour{"none", false, false} : it->second;
}

void SimPhotoLibrary::performChanges(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) {
  bool deletes = !changes.deleteAssets.empty() || !changes.deleteCollections.empty();
  log_->record("photos.performChanges deleteAssets=" + std::to_string(changes.deleteAssets.size()) +
               " deleteCollections=" + std::to_string(changes.deleteCollections.size()) +
               " createCollections=" + std::to_string(changes.createCollections.size()) +
               " createAssets=" + std::to_string(changes.createAssets.size()));
  if (deletes && !confirmDeletes_) {
    DispatchQueue::global().async([answer = std::move(answer)] {
      answer(false, NSError{"PHPhotosErrorDomain", 3072, "The operation couldn\u2019t be completed. (PHPhotosErrorDomain error 3072.)", {}, nullptr});
    });
    return;
  }
  {
    std::lock_guard lock(mutex_);
    std::set<std::string> goneAssets(changes.deleteAssets.begin(), changes.deleteAssets.end());
    std::set<std::string> goneAlbums(changes.deleteCollections.begin(), changes.deleteCollections.end());
    std::erase_if(assets_, [&](const auto& a) { return goneAssets.count(a->localIdentifier) > 0; });
    headsCurrent_ = false;
    for (const auto& id : goneAssets) byId_.erase(id);
    std::vector<std::shared_ptr<const PHAssetCollectionRecord>> albums;
    for (const auto& album : albums_) {
      if (goneAlbums.count(album->localIdentifier)) continue;
      auto copy = std::make_shared<PHAssetCollectionRecord>(*album);
      std::erase_if(copy->assetIdentifiers, [&](const std::string& id) { return goneAssets.count(id) > 0; });
      albums.push_back(std::move(copy));
    }
    for (const auto& created : changes.createAssets) {
      auto record = std::make_shared<PHAssetRecord>();
      record->localIdentifier = created.identifier;
      record->mediaType = PHAssetMediaType::image;
      record->creationDate = Date::now();
      record->pixelWidth = static_cast<int>(created.image.size().width);
      record->pixelHeight = static_cast<int>(created.image.size().height);
      record->filename = "IMG_" + std::to_string(assets_.size() + 1) + ".JPG";
      record->fileSize = 0;
      byId_[record->localIdentifier] = record;
      behaviour_[record->localIdentifier] = {"none", true, true};
      assets_.push_back(std::move(record));
      headsCurrent_ = false;
    }
    for (const auto& created : changes.createCollections) {
      auto album = std::make_shared<PHAssetCollectionRecord>();
      album->localIdentifier = created.identifier;
      album->title = created.title;
      albums.push_back(std::move(album));
    }
    for (const auto& [albumId, assetIds] : changes.addAssets) {
      for (auto& album : albums) {
        if (album->localIdentifier != albumId) continue;
        auto copy = std::make_shared<PHAssetCollectionRecord>(*album);
        copy->assetIdentifiers.insert(copy->assetIdentifiers.end(), assetIds.begin(), assetIds.end());
        album = copy;
      }
    }
    albums_ = std::move(albums);
  }
  DispatchQueue::global().async([answer = std::move(answer)] { answer(true, std::nullopt); });
}

std::optional<UIImage> SimPhotoLibrary::image(const PHAssetRecord& asset, CGSize target, bool aspectFill) const {
  if (asset.pixelWidth <= 0 || asset.pixelHeight <= 0) return std::nullopt;
  double w = asset.pixelWidth, h = asset.pixelHeight;
  if (target.width > 0 && target.height > 0) {
    double sx = target.width / w, sy = target.height / h;
    double scale = aspectFill ? std::max(sx, sy) : std::min(sx, sy);
    if (scale < 1) {
      w = std::max(1.0, std::round(w * scale));
      h = std::max(1.0, std::round(h * scale));
    }
  }
  UIImage::Pixels pixels;
  pixels.width = static_cast<int>(w);
  pixels.height = static_cast<int>(h);
  pixels.source = asset.backingPath;
  return UIImage::withPixels(std::move(pixels));
}

std::optional<Data> SimPhotoLibrary::imageData(const PHAssetRecord& asset) const {
  if (!behaviourOf(asset.localIdentifier).imageData) return std::nullopt;
  return ImageHeader::placeholderPNG(asset.pixelWidth, asset.pixelHeight);
}

std::optional<std::string> SimPhotoLibrary::fullSizeImagePath(const PHAssetRecord& asset) const {
  if (!behaviourOf(asset.localIdentifier).editingInput) return std::nullopt;
  return asset.backingPath;
}

PhotoLibrarySource::VideoAnswer SimPhotoLibrary::video(const PHAssetRecord& asset) const {
  auto kind = behaviourOf(asset.localIdentifier).video;
  VideoAnswer answer;
  answer.duration = asset.duration;
  if (kind == "url") {
    answer.kind = VideoAnswer::Kind::url;
    answer.path = asset.backingPath;
  } else if (kind == "composition") {
    answer.kind = VideoAnswer::Kind::composition;
  }
  return answer;
}

bool SimPhotoLibrary::hasLivePhoto(const PHAssetRecord& asset) const {
  return (asset.mediaSubtypes & PHAssetMediaSubtypePhotoLive) != 0;
}

}  // namespace nimbrel::sim
