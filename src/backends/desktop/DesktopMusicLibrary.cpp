#include "backends/desktop/DesktopMusicLibrary.h"
#include "backends/desktop/media/FileMediaReader.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace nimbrel::desktop {

DesktopMusicLibrary::DesktopMusicLibrary(std::string indexPath, std::string musicFolder, bool scan)
    : indexPath_(std::move(indexPath)), folder_(std::move(musicFolder)) {
  if (scan) {
    refresh();
  } else {
    LibraryIndex index(indexPath_, FileMediaReader::shared());
    if (index.ok()) load(index);
  }
}

std::vector<std::shared_ptr<const MPMediaItemRecord>> DesktopMusicLibrary::songs() const {
  std::lock_guard lock(mutex_);
  return songs_;
}

std::vector<MPMediaCollectionRecord> DesktopMusicLibrary::albums() const {
  std::lock_guard lock(mutex_);
  return albums_;
}

std::vector<MPMediaCollectionRecord> DesktopMusicLibrary::groupAlbums(
    const std::vector<std::shared_ptr<const MPMediaItemRecord>>& songs) {
  std::vector<MPMediaCollectionRecord> albums;
  std::map<std::optional<std::string>, size_t> where;
  for (const auto& s : songs) {
    auto [it, fresh] = where.emplace(s->albumTitle, albums.size());
    if (fresh) albums.push_back({s->albumTitle, {}});
    albums[it->second].songs.push_back(s->persistentID);
  }
  return albums;
}

ScanReport DesktopMusicLibrary::refresh() {
  // One scan at a time; readers keep the old lists until the new ones are in place.
  std::lock_guard scan(scanMutex_);
  if (indexPath_ != ":memory:") {
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(indexPath_).parent_path(), ec);
  }
  LibraryIndex index(indexPath_, FileMediaReader::shared());
  ScanReport report = folder_.empty() ? ScanReport{} : index.scanMusic(folder_);
  load(index);
  return report;
}

void DesktopMusicLibrary::load(LibraryIndex& index) {
  std::vector<std::shared_ptr<const MPMediaItemRecord>> songs;
  for (const auto& row : index.songs()) {
    if (!folder_.empty() && row.path.rfind(folder_ + "/", 0) != 0) continue;
    auto r = std::make_shared<MPMediaItemRecord>();
    r->persistentID = row.persistentId;
    r->title = row.title;
    r->artist = row.artist;
    r->albumTitle = row.album;
    r->playbackDuration = row.duration;
    r->fileSize = row.size;
    r->dateAdded = Date::fromUnix(row.added);
    r->hasAssetURL = true;
    r->hasArtwork = row.artwork;
    r->readable = row.readable;
    r->backingPath = row.path;
    songs.push_back(std::move(r));
  }
  auto albums = groupAlbums(songs);
  std::lock_guard lock(mutex_);
  songs_ = std::move(songs);
  albums_ = std::move(albums);
}

}  // namespace nimbrel::desktop
