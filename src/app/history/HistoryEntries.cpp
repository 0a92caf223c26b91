#include "app/history/HistoryEntries.h"

#include "app/audio/SongRecords.h"
#include "app/media/AssetReaders.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/mediaplayer/MPMediaQuery.h"
#include "platform/photos/PHAssetResource.h"

namespace nimbrel {

namespace {
[[noreturn]] void outOfRange() { fatalError("Index out of range", "Swift/ContiguousArrayBuffer.swift", 600); }
}  // namespace

std::shared_ptr<PHAsset> historyAsset(const URL& url) {
  auto options = std::make_shared<PHFetchOptions>();
  return PHAsset::fetchAssetsWithALAssetURLs({url}, options.get())[0];
}

std::shared_ptr<MPMediaItem> historySong(const URL& url) {
  const std::string& address = url.absoluteString();
  auto query = MPMediaQuery::songsQuery();
  query->addFilterPredicate(MPMediaPropertyPredicate::predicateWithValue(
      address.size() > 32 ? address.substr(32) : std::string(), MPMediaItemPropertyPersistentID,
      MPMediaPredicateComparison::contains));
  auto items = query->items();
  if (!items) fatalError("Unexpectedly found nil while unwrapping an Optional value", "Nimbrel/RecentFilesVC", 0);
  if (items->empty()) outOfRange();
  return items->front();
}

std::int64_t historyFileSize(const URL& url) {
  auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(url.path(), nullptr);
  return attributes ? attributes->size : 0;
}

std::int64_t historyAssetSize(const PHAsset& asset) { return static_cast<std::int64_t>(assetFileSize(asset)); }

PhotoModel historyModel(const File& record, bool withName) {
  PhotoModel model;
  model.identifier = record.url.absoluteString();
  model.size = Units(historyFileSize(record.url));
  model.creationDate = record.openingDate;
  model.fileType = record.filetype;
  if (!withName) return model;
  switch (record.filetype) {
    case FileType::docs:
      model.name = record.url.lastPathComponent();
      break;
    case FileType::photo:
    case FileType::video: {
      auto resources = PHAssetResource::assetResourcesForAsset(*historyAsset(record.url));
      if (resources.empty()) outOfRange();
      model.name = resources.front()->originalFilename();
      break;
    }
    case FileType::music:
      model.name = historySong(record.url)->title().value_or(std::string());
      break;
  }
  return model;
}

std::int64_t historyInfoSize(const URL& url, FileType kind) {
  switch (kind) {
    case FileType::docs: return historyFileSize(url);
    case FileType::photo:
    case FileType::video: return historyAssetSize(*historyAsset(url));
    case FileType::music: return songFileSize(*historySong(url));
  }
  return 0;
}

}  // namespace nimbrel
