#include "backends/desktop/DesktopPhotoLibrary.h"
#include "backends/desktop/media/FileMediaReader.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "backends/desktop/DesktopPlaces.h"
#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/MediaProbe.h"
#include "backends/desktop/index/SystemPrompt.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/RunLoop.h"

namespace nimbrel::desktop {

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kLongestWaitSeconds = 1.0;  // a folder that keeps changing is still rescanned this often

NSError photosError(long code) {
  return NSError{"PHPhotosErrorDomain", code,
                 "The operation couldn\u2019t be completed. (PHPhotosErrorDomain error " + std::to_string(code) + ".)",
                 {}, nullptr};
}

std::string baseName(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string folderOf(const std::string& path) {
  auto slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

std::string stemKey(const std::string& path) {
  std::string name = baseName(path);
  auto dot = name.rfind('.');
  std::string stem = dot == std::string::npos ? name : name.substr(0, dot);
  for (auto& c : stem) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return folderOf(path) + "/" + stem;
}

bool exists(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0;
}

std::string uniquePath(const std::string& dir, const std::string& stem, const std::string& ext) {
  std::string path = dir + "/" + stem + ext;
  for (int n = 2; exists(path); ++n) path = dir + "/" + stem + " " + std::to_string(n) + ext;
  return path;
}

// A folder name from an album title: no separators, not hidden, not empty.
std::string folderNameFor(const std::string& title) {
  std::string name = title;
  std::replace(name.begin(), name.end(), '/', '-');
  while (!name.empty() && (name.front() == '.' || name.front() == ' ')) name.erase(name.begin());
  while (!name.empty() && name.back() == ' ') name.pop_back();
  return name.empty() ? "Untitled Album" : name;
}

std::string timestampName() {
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  ::localtime_r(&now, &tm);
  char text[32];
  std::strftime(text, sizeof text, "IMG_%Y%m%d_%H%M%S", &tm);
  return text;
}

std::string deletionTitle(const std::string& app, int photos, int videos, const std::vector<std::string>& albumTitles) {
  std::string who = "Allow \u201C" + app + "\u201D to delete ";
  int n = photos + videos;
  if (n == 1) return who + (photos ? "this photo?" : "this video?");
  if (n > 1) {
    const char* what = videos == 0 ? " photos?" : photos == 0 ? " videos?" : " items?";
    return who + std::to_string(n) + what;
  }
  if (albumTitles.size() == 1) return who + "the album \u201C" + albumTitles.front() + "\u201D?";
  return who + std::to_string(albumTitles.size()) + " albums?";
}

}  // namespace

DesktopPhotoLibrary::DesktopPhotoLibrary(Options options)
    : options_(std::move(options)),
      thumbnails_(std::make_unique<ThumbnailCache>(options_.thumbnails)),
      trash_(options_.trash) {
  if (options_.indexPath != ":memory:") {
    std::error_code ec;
    fs::create_directories(fs::path(options_.indexPath).parent_path(), ec);
  }
  index_ = std::make_unique<LibraryIndex>(options_.indexPath, FileMediaReader::shared());
  if (!index_->ok()) {
    Diagnostics::report("The library index at " + options_.indexPath + " cannot be used (" + index_->error() +
          "); indexing in memory for this run");
    index_ = std::make_unique<LibraryIndex>(":memory:", FileMediaReader::shared());
  }
  // What the index already knows is there at once; the scan then brings it up to date.
  shared_->snapshot = buildSnapshot();
  wakeFd_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (options_.watch) {
    inotifyFd_ = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (inotifyFd_ < 0) Diagnostics::report("inotify is not available: the library will not notice new files until a rescan");
  }
  busy_ = true;  // until the worker has made its first pass
  worker_ = std::thread([this] { workerLoop(); });
}

DesktopPhotoLibrary::~DesktopPhotoLibrary() {
  {
    std::lock_guard lock(workMutex_);
    stopping_ = true;
  }
  std::uint64_t one = 1;
  if (::write(wakeFd_, &one, sizeof one) < 0) {
  }
  if (worker_.joinable()) worker_.join();
  if (inotifyFd_ >= 0) ::close(inotifyFd_);
  if (wakeFd_ >= 0) ::close(wakeFd_);
}

std::shared_ptr<const DesktopPhotoLibrary::Snapshot> DesktopPhotoLibrary::current() const {
  std::lock_guard lock(shared_->mutex);
  return shared_->snapshot;
}

std::vector<std::shared_ptr<const PHAssetCollectionRecord>> DesktopPhotoLibrary::collections() const {
  return current()->collections;
}

std::vector<std::shared_ptr<const PHAssetRecord>> DesktopPhotoLibrary::assets() const {
  return current()->assets;
}

std::shared_ptr<const PHAssetRecord> DesktopPhotoLibrary::asset(const std::string& id) const {
  auto snap = current();
  auto it = snap->byId.find(id);
  return it == snap->byId.end() ? nullptr : it->second;
}

std::shared_ptr<const DesktopPhotoLibrary::Snapshot> DesktopPhotoLibrary::buildSnapshot() {
  auto snap = std::make_shared<Snapshot>();
  auto rows = index_->assets();
  // Live photos: a still and a QuickTime movie of one name in one folder.
  std::map<std::string, size_t> stills;
  for (size_t i = 0; i < rows.size(); ++i) {
    std::string ext = lowercaseExtension(rows[i].path);
    if (ext == "jpg" || ext == "jpeg" || ext == "heic" || ext == "heif") stills.emplace(stemKey(rows[i].path), i);
  }
  std::vector<std::string> livePath(rows.size());
  std::vector<bool> hidden(rows.size(), false);
  for (size_t i = 0; i < rows.size(); ++i) {
    if (lowercaseExtension(rows[i].path) != "mov") continue;
    auto it = stills.find(stemKey(rows[i].path));
    if (it == stills.end()) continue;
    livePath[it->second] = rows[i].path;
    hidden[i] = true;
  }

  auto user = std::make_shared<PHAssetCollectionRecord>();
  auto favourites = std::make_shared<PHAssetCollectionRecord>();
  auto selfies = std::make_shared<PHAssetCollectionRecord>();
  auto panoramas = std::make_shared<PHAssetCollectionRecord>();
  auto videos = std::make_shared<PHAssetCollectionRecord>();
  std::map<std::string, std::vector<std::string>> byFolder;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (hidden[i]) continue;
    const auto& row = rows[i];
    auto record = std::make_shared<PHAssetRecord>();
    record->localIdentifier = row.id;
    record->mediaType = static_cast<PHAssetMediaType>(row.kind);
    record->mediaSubtypes = row.subtypes;
    if (!livePath[i].empty()) record->mediaSubtypes |= PHAssetMediaSubtypePhotoLive;
    if (row.created) record->creationDate = Date::fromUnix(*row.created);
    record->pixelWidth = row.width;
    record->pixelHeight = row.height;
    record->duration = row.duration;
    if (row.latitude && row.longitude) {
      record->location = CLLocation{{*row.latitude, *row.longitude}};
      record->locality = DesktopGeocoder::nearestLocality(*row.latitude, *row.longitude);
    }
    record->favorite = row.favourite;
    record->filename = baseName(row.path);
    record->fileSize = row.size;
    record->resourceCount = livePath[i].empty() ? 1 : 2;
    record->backingPath = row.path;
    std::string ext = lowercaseExtension(row.path);
    AssetExtra extra;
    extra.livePath = livePath[i];
    extra.orientation = row.orientation;
    extra.drawableOriginal = record->mediaType == PHAssetMediaType::image && ext != "heic" && ext != "heif" &&
                             ext != "dng" && ext != "tif" && ext != "tiff";
    snap->extra.emplace(row.id, std::move(extra));
    user->assetIdentifiers.push_back(row.id);
    if (row.favourite) favourites->assetIdentifiers.push_back(row.id);
    if (row.selfie) selfies->assetIdentifiers.push_back(row.id);
    if (record->mediaType == PHAssetMediaType::image && (row.subtypes & PHAssetMediaSubtypePhotoPanorama)) {
      panoramas->assetIdentifiers.push_back(row.id);
    }
    if (record->mediaType == PHAssetMediaType::video) videos->assetIdentifiers.push_back(row.id);
    if (!row.folder.empty()) byFolder[row.folder].push_back(row.id);
    snap->byId.emplace(row.id, record);
    snap->assets.push_back(std::move(record));
  }
  auto smart = [&](std::shared_ptr<PHAssetCollectionRecord>& album, std::int64_t subtype, const char* title) {
    album->localIdentifier = index_->smartAlbumId(subtype);
    album->title = title;
    album->type = PHAssetCollectionType::smartAlbum;
    album->subtype = subtype;
    snap->collections.push_back(album);
  };
  smart(user, PHAssetCollectionSubtypeSmartAlbumUserLibrary, "Recents");
  smart(favourites, PHAssetCollectionSubtypeSmartAlbumFavorites, "Favorites");
  for (const auto& a : index_->albums()) {
    auto album = std::make_shared<PHAssetCollectionRecord>();
    album->localIdentifier = a.id;
    album->title = baseName(a.folder);
    album->type = PHAssetCollectionType::album;
    album->subtype = PHAssetCollectionSubtypeAlbumRegular;
    if (auto it = byFolder.find(a.folder); it != byFolder.end()) album->assetIdentifiers = it->second;
    snap->albumFolders.emplace(a.id, a.folder);
    snap->collections.push_back(std::move(album));
  }
  smart(selfies, PHAssetCollectionSubtypeSmartAlbumSelfPortraits, "Selfies");
  smart(panoramas, PHAssetCollectionSubtypeSmartAlbumPanoramas, "Panoramas");
  smart(videos, PHAssetCollectionSubtypeSmartAlbumVideos, "Videos");
  return snap;
}

void DesktopPhotoLibrary::publish() {
  auto snap = buildSnapshot();
  if (RunLoop::hasCurrent()) {
    std::weak_ptr<Shared> weak = shared_;
    DispatchQueue::main().async([weak, snap] {
      auto shared = weak.lock();
      if (!shared) return;
      {
        std::lock_guard lock(shared->mutex);
        shared->snapshot = snap;
      }
      shared->changed.emit();
    });
  } else {
    std::lock_guard lock(shared_->mutex);
    shared_->snapshot = snap;
  }
  std::lock_guard lock(workMutex_);
  ++posted_;
  workChanged_.notify_all();
}

void DesktopPhotoLibrary::enqueue(std::function<void()> job) {
  {
    std::lock_guard lock(workMutex_);
    jobs_.push_back(std::move(job));
  }
  std::uint64_t one = 1;
  if (::write(wakeFd_, &one, sizeof one) < 0) {
  }
}

void DesktopPhotoLibrary::rescan() {
  enqueue([this] { scanNow(); });
}

void DesktopPhotoLibrary::setFavorite(const std::string& id, bool favorite) {
  enqueue([this, id, favorite] {
    index_->setFavourite(id, favorite);
    publish();
  });
}

std::uint64_t DesktopPhotoLibrary::postedSnapshots() const {
  std::lock_guard lock(workMutex_);
  return posted_;
}

bool DesktopPhotoLibrary::waitForPost(std::uint64_t seen, double timeoutSeconds) const {
  std::unique_lock lock(workMutex_);
  return workChanged_.wait_for(lock, std::chrono::duration<double>(timeoutSeconds), [&] { return posted_ > seen; });
}

bool DesktopPhotoLibrary::waitUntilIdle(double timeoutSeconds) const {
  std::unique_lock lock(workMutex_);
  return workChanged_.wait_for(lock, std::chrono::duration<double>(timeoutSeconds),
                               [&] { return jobs_.empty() && !busy_ && !dirty_; });
}

ScanReport DesktopPhotoLibrary::lastScan() const {
  std::lock_guard lock(workMutex_);
  return lastScan_;
}

void DesktopPhotoLibrary::scanNow(ScanDepth depth) {
  auto report = index_->scanPhotos({options_.pictures, options_.videos}, depth);
  watchFolders(report.folders);
  if (options_.prefillThumbnails > 0) {
    prefill_.clear();
    for (const auto& row : index_->assets()) prefill_.emplace_back(row.path, row.orientation);
    // Oldest first in the index; taken from the back, so the newest are made first.
  }
  {
    std::lock_guard lock(workMutex_);
    lastScan_ = report;
  }
  publish();
}

void DesktopPhotoLibrary::watchFolders(const std::vector<std::string>& folders) {
  if (inotifyFd_ < 0) return;
  // Adding a watch twice keeps one; watches of removed folders go away by themselves.
  constexpr std::uint32_t kMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ATTRIB |
                                  IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
  for (const auto& f : folders) ::inotify_add_watch(inotifyFd_, f.c_str(), kMask);
}

void DesktopPhotoLibrary::workerLoop() {
  if (options_.scanAtStart) {
    // The folders that did not move are taken as they were, so the library shows at once; the
    // check of every file (one rewritten in place while the program was closed) follows.
    scanNow(ScanDepth::quick);
    enqueue([this] { scanNow(ScanDepth::full); });
  } else if (options_.watch) {
    // Watching needs the folder list even when the first scan is skipped.
    std::vector<std::string> folders;
    for (const auto& root : {options_.pictures, options_.videos}) {
      std::error_code ec;
      if (root.empty() || !fs::is_directory(root, ec)) continue;
      folders.push_back(root);
      for (auto it = fs::recursive_directory_iterator(root, ec); it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (it->is_directory(ec)) folders.push_back(it->path().string());
      }
    }
    watchFolders(folders);
  }
  {
    std::lock_guard lock(workMutex_);
    busy_ = false;
    workChanged_.notify_all();
  }
  std::optional<Clock::time_point> firstEvent, lastEvent;
  const auto quiet = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(options_.quietSeconds));
  const auto longest = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(kLongestWaitSeconds));
  while (true) {
    int timeoutMs = prefill_.empty() ? -1 : 0;
    if (lastEvent) {
      auto due = std::min(*lastEvent + quiet, *firstEvent + longest);
      timeoutMs = static_cast<int>(std::max<std::int64_t>(
          0, std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now()).count() + 1));
    }
    pollfd fds[2] = {{wakeFd_, POLLIN, 0}, {inotifyFd_, POLLIN, 0}};
    ::poll(fds, inotifyFd_ >= 0 ? 2 : 1, timeoutMs);
    if (fds[0].revents & POLLIN) {
      std::uint64_t value;
      if (::read(wakeFd_, &value, sizeof value) < 0) {
      }
    }
    if (inotifyFd_ >= 0 && (fds[1].revents & POLLIN)) {
      alignas(inotify_event) char buffer[16384];
      while (::read(inotifyFd_, buffer, sizeof buffer) > 0) {
      }
      lastEvent = Clock::now();
      if (!firstEvent) firstEvent = lastEvent;
      std::lock_guard lock(workMutex_);
      dirty_ = true;
    }
    while (true) {
      std::function<void()> job;
      {
        std::lock_guard lock(workMutex_);
        if (stopping_) return;
        if (jobs_.empty()) break;
        job = std::move(jobs_.front());
        jobs_.pop_front();
        busy_ = true;
      }
      job();
      std::lock_guard lock(workMutex_);
      busy_ = false;
      workChanged_.notify_all();
    }
    if (!lastEvent && !prefill_.empty()) {
      // Thumbnails ahead of scrolling, a few at a time so that jobs and changes are not kept waiting.
      for (int n = 0; n < 8 && !prefill_.empty(); ++n) {
        auto [path, orientation] = prefill_.back();
        prefill_.pop_back();
        thumbnails_->thumbnail(path, options_.prefillThumbnails, orientation);
      }
    }
    if (lastEvent) {
      auto now = Clock::now();
      if (now >= *lastEvent + quiet || now >= *firstEvent + longest) {
        firstEvent.reset();
        lastEvent.reset();
        {
          std::lock_guard lock(workMutex_);
          busy_ = true;
        }
        scanNow();
        std::lock_guard lock(workMutex_);
        busy_ = false;
        dirty_ = false;
        workChanged_.notify_all();
      }
    }
  }
}

void DesktopPhotoLibrary::performChanges(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) {
  if (changes.deleteAssets.empty() && changes.deleteCollections.empty()) {
    auto shared = std::make_shared<Changes>(std::move(changes));
    enqueue([this, shared, answer = std::move(answer)] { apply(*shared, answer); });
    return;
  }
  askThenApply(std::move(changes), std::move(answer));
}

void DesktopPhotoLibrary::askThenApply(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) {
  auto snap = current();
  int photos = 0, videos = 0;
  for (const auto& id : changes.deleteAssets) {
    auto it = snap->byId.find(id);
    if (it == snap->byId.end()) continue;
    (it->second->mediaType == PHAssetMediaType::video ? videos : photos)++;
  }
  std::vector<std::string> albumTitles;
  for (const auto& id : changes.deleteCollections) {
    auto it = snap->albumFolders.find(id);
    if (it != snap->albumFolders.end()) albumTitles.push_back(baseName(it->second));
  }
  if (photos + videos == 0 && albumTitles.empty()) {
    DispatchQueue::global().async([answer] { answer(false, photosError(3201)); });
    return;
  }
  std::string title = deletionTitle(options_.appName, photos, videos, albumTitles);
  std::optional<std::string> message;
  if (photos + videos > 0) {
    message = std::string(photos + videos == 1 ? "It" : "They") + " will be moved to the Trash.";
  } else {
    message = "The photos in " + std::string(albumTitles.size() == 1 ? "it" : "them") + " stay in your library.";
  }
  auto shared = std::make_shared<Changes>(std::move(changes));
  std::weak_ptr<Shared> alive = shared_;
  DispatchQueue::main().async([this, alive, shared, answer, title, message] {
    if (!alive.lock()) return;
    auto refuse = [answer] { DispatchQueue::global().async([answer] { answer(false, photosError(3072)); }); };
    bool asked = presentSystemPrompt(
        title, message, {{"Don't Allow", UIAlertActionStyle::cancel}, {"Delete", UIAlertActionStyle::destructive}},
        [this, alive, shared, answer, refuse](const std::string& chosen) {
          if (chosen != "Delete" || !alive.lock()) {
            refuse();
            return;
          }
          enqueue([this, shared, answer] { apply(*shared, answer); });
        });
    if (!asked) {
      Diagnostics::report("A deletion was refused: there is no window to ask the user in");
      refuse();
    }
  });
}

void DesktopPhotoLibrary::apply(const Changes& changes, std::function<void(bool, std::optional<NSError>)> answer) {
  auto fail = [&](long code) {
    scanNow();
    DispatchQueue::global().async([answer, code] { answer(false, photosError(code)); });
  };
  // Worker thread: the index and the worker's latest view.
  auto snap = buildSnapshot();
  std::map<std::string, std::string> albumFolder(snap->albumFolders.begin(), snap->albumFolders.end());
  const std::string& pictures = !options_.pictures.empty() ? options_.pictures : options_.videos;
  if (pictures.empty() && (!changes.createCollections.empty() || !changes.createAssets.empty())) return fail(3300);

  // New albums: new folders under Pictures.
  for (const auto& created : changes.createCollections) {
    std::string name = folderNameFor(created.title);
    std::string path = uniquePath(pictures, name, "");
    std::error_code ec;
    if (!fs::create_directories(path, ec)) return fail(-1);
    std::string rel = baseName(path);
    index_->addAlbum(rel, created.identifier);
    albumFolder[created.identifier] = rel;
  }
  // Where each new picture goes: the album it is added to, else Pictures itself.
  std::map<std::string, std::string> placeIn;
  std::vector<std::pair<std::string, std::string>> copies;  // existing asset → album folder
  for (const auto& [albumId, ids] : changes.addAssets) {
    auto folder = albumFolder.find(albumId);
    if (folder == albumFolder.end()) return fail(3201);
    for (const auto& id : ids) {
      bool isNew = std::any_of(changes.createAssets.begin(), changes.createAssets.end(),
                               [&](const auto& a) { return a.identifier == id; });
      if (isNew) {
        placeIn[id] = folder->second;
      } else {
        copies.emplace_back(id, folder->second);
      }
    }
  }
  for (const auto& created : changes.createAssets) {
    const UIImage::Pixels* pixels = created.image.pixels();
    std::optional<RgbaImage> picture;
    if (pixels && !pixels->rgba.empty() && pixels->width > 0 &&
        pixels->rgba.size() == static_cast<size_t>(pixels->width) * pixels->height * 4) {
      RgbaImage image(pixels->width, pixels->height);
      image.pixels = pixels->rgba;
      picture = std::move(image);
    } else if (pixels && !pixels->source.empty()) {
      picture = decodeAny(pixels->source, 0);
      if (picture && mediaFileKind(pixels->source) == MediaFileKind::image) {
        if (auto facts = probeImage(pixels->source)) picture = oriented(*picture, facts->orientation);
      }
    }
    if (!picture) return fail(3302);
    auto rel = placeIn.find(created.identifier);
    std::string dir = rel == placeIn.end() ? pictures : pictures + "/" + rel->second;
    std::error_code ec;
    fs::create_directories(dir, ec);
    std::string path = uniquePath(dir, timestampName(), ".png");
    if (!writePng(path, *picture)) return fail(-1);
    index_->addFile(path, pictures, created.identifier);
  }
  // Adding an existing picture to an album puts a copy of its file in the album's folder.
  for (const auto& [id, rel] : copies) {
    auto it = snap->byId.find(id);
    if (it == snap->byId.end()) continue;
    std::string from = it->second->backingPath;
    std::string name = baseName(from);
    auto dot = name.rfind('.');
    std::string to = uniquePath(pictures + "/" + rel, dot == std::string::npos ? name : name.substr(0, dot),
                                dot == std::string::npos ? "" : name.substr(dot));
    std::error_code ec;
    fs::create_hard_link(from, to, ec);
    if (ec) fs::copy_file(from, to, ec);
  }

  // Deletions: whole or not at all.
  std::vector<std::pair<Trash::Moved, std::string>> done;
  auto undo = [&] {
    for (auto it = done.rbegin(); it != done.rend(); ++it) trash_.restore(it->first, it->second);
  };
  for (const auto& id : changes.deleteAssets) {
    auto it = snap->byId.find(id);
    if (it == snap->byId.end()) continue;
    std::vector<std::string> files{it->second->backingPath};
    auto extra = snap->extra.find(id);
    if (extra != snap->extra.end() && !extra->second.livePath.empty()) files.push_back(extra->second.livePath);
    for (const auto& file : files) {
      auto moved = trash_.moveToTrash(file);
      if (!moved) {
        Diagnostics::report("Could not move " + file + " to the trash; nothing was deleted");
        undo();
        return fail(-1);
      }
      done.emplace_back(*moved, file);
    }
  }
  // Deleting an album keeps its pictures: they move up into the root, then the folder goes to the trash.
  std::vector<std::pair<std::string, std::string>> liftedFiles;
  for (const auto& id : changes.deleteCollections) {
    auto folder = albumFolder.find(id);
    if (folder == albumFolder.end()) continue;
    for (const auto& root : {options_.pictures, options_.videos}) {
      if (root.empty()) continue;
      std::string dir = root + "/" + folder->second;
      std::error_code ec;
      if (!fs::is_directory(dir, ec)) continue;
      for (const auto& entry : fs::recursive_directory_iterator(dir, ec)) {
        if (!entry.is_regular_file() || mediaFileKind(entry.path().string()) == MediaFileKind::none) continue;
        std::string name = entry.path().filename().string();
        auto dot = name.rfind('.');
        std::string to = uniquePath(root, dot == std::string::npos ? name : name.substr(0, dot),
                                    dot == std::string::npos ? "" : name.substr(dot));
        if (::rename(entry.path().c_str(), to.c_str()) == 0) liftedFiles.emplace_back(to, entry.path().string());
      }
      auto moved = trash_.moveToTrash(dir);
      if (!moved) {
        for (auto& [now, was] : liftedFiles) ::rename(now.c_str(), was.c_str());
        undo();
        return fail(-1);
      }
      done.emplace_back(*moved, dir);
    }
    index_->forgetAlbum(id);
  }
  scanNow();
  DispatchQueue::global().async([answer] { answer(true, std::nullopt); });
}

std::optional<UIImage> DesktopPhotoLibrary::image(const PHAssetRecord& asset, CGSize target, bool aspectFill) const {
  if (asset.pixelWidth <= 0 || asset.pixelHeight <= 0 || asset.backingPath.empty()) return std::nullopt;
  auto snap = current();
  AssetExtra extra;
  if (auto it = snap->extra.find(asset.localIdentifier); it != snap->extra.end()) extra = it->second;
  double w = asset.pixelWidth, h = asset.pixelHeight;
  double scale = 1;
  if (target.width > 0 && target.height > 0) {
    double sx = target.width / w, sy = target.height / h;
    scale = std::min(1.0, aspectFill ? std::max(sx, sy) : std::min(sx, sy));
  }
  int needed = static_cast<int>(std::ceil(std::max(w, h) * scale));
  int longSide = static_cast<int>(std::max(w, h));
  auto box = ThumbnailCache::flavourFor(needed);
  // A thumbnail when it is smaller than the original, or when a shell could not draw the original.
  if (box && (*box < longSide || !extra.drawableOriginal)) {
    if (auto thumb = thumbnails_->thumbnail(asset.backingPath, *box, extra.orientation)) {
      UIImage::Pixels pixels;
      pixels.width = thumb->width;
      pixels.height = thumb->height;
      pixels.source = thumb->path;
      return UIImage::withPixels(std::move(pixels));
    }
  }
  if (!extra.drawableOriginal) {
    // Still a picture for a viewer: the largest thumbnail there is.
    if (auto thumb = thumbnails_->thumbnail(asset.backingPath, 1024, extra.orientation)) {
      UIImage::Pixels pixels;
      pixels.width = thumb->width;
      pixels.height = thumb->height;
      pixels.source = thumb->path;
      return UIImage::withPixels(std::move(pixels));
    }
    return std::nullopt;
  }
  UIImage::Pixels pixels;
  pixels.width = std::max(1, static_cast<int>(std::lround(w * scale)));
  pixels.height = std::max(1, static_cast<int>(std::lround(h * scale)));
  pixels.source = asset.backingPath;
  return UIImage::withPixels(std::move(pixels));
}

std::optional<Data> DesktopPhotoLibrary::imageData(const PHAssetRecord& asset) const {
  if (asset.mediaType != PHAssetMediaType::image) return std::nullopt;
  std::ifstream in(asset.backingPath, std::ios::binary);
  if (!in) return std::nullopt;
  return Data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::optional<std::string> DesktopPhotoLibrary::fullSizeImagePath(const PHAssetRecord& asset) const {
  if (asset.mediaType != PHAssetMediaType::image || !exists(asset.backingPath)) return std::nullopt;
  return asset.backingPath;
}

PhotoLibrarySource::VideoAnswer DesktopPhotoLibrary::video(const PHAssetRecord& asset) const {
  VideoAnswer answer;
  answer.duration = asset.duration;
  if (asset.mediaType == PHAssetMediaType::video && exists(asset.backingPath)) {
    answer.kind = VideoAnswer::Kind::url;
    answer.path = asset.backingPath;
  }
  return answer;
}

bool DesktopPhotoLibrary::hasLivePhoto(const PHAssetRecord& asset) const {
  auto snap = current();
  auto it = snap->extra.find(asset.localIdentifier);
  return it != snap->extra.end() && !it->second.livePath.empty() && exists(it->second.livePath) &&
         exists(asset.backingPath);
}

}  // namespace nimbrel::desktop
