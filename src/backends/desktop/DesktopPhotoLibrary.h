#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "backends/desktop/index/LibraryIndex.h"
#include "backends/desktop/media/ThumbnailCache.h"
#include "backends/desktop/Trash.h"
#include "platform/foundation/ChangeSignal.h"
#include "platform/photos/PhotoLibrarySource.h"

namespace nimbrel::desktop {

// The photo library over the user's Pictures and Videos folders. A worker thread owns the index:
// it scans at start, rescans when inotify reports a change (after a short quiet moment), and
// applies changes; each result is a new immutable snapshot handed to the main thread through the
// main queue, where it replaces the old one between two turns. Reads take the current snapshot
// under a lock, from any thread.
//
// Albums: user library (everything), favourites, one regular album per subfolder (title = folder
// name; the same relative folder under Pictures and Videos is one album), selfies, panoramas,
// videos. Selfies are pictures whose EXIF lens model names a front camera or whose file name
// holds "selfie"; panoramas are at least twice as long as high (or high as long), carry an XMP
// GPano projection, or are named "PANO...". A still (JPEG or HEIC) and a MOV of the same name in
// one folder are one live photo.
class DesktopPhotoLibrary : public PhotoLibrarySource {
 public:
  struct Options {
    std::string indexPath;             // ":memory:" for none on disk
    std::string pictures, videos;      // new albums and saved pictures go to `pictures`
    std::string thumbnails;            // the shared cache folder
    std::string trash;                 // the home trash
    bool watch = true;                 // inotify and background rescans
    bool scanAtStart = true;
    double quietSeconds = 0.2;         // how long the folders must be still before a rescan
    int prefillThumbnails = 0;         // a box (128, 256, ...) to make missing thumbnails of, newest first, when idle
    std::string appName = "Nimbrel";
  };

  explicit DesktopPhotoLibrary(Options options);
  ~DesktopPhotoLibrary() override;

  std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections() const override;
  std::vector<std::shared_ptr<const PHAssetRecord>> assets() const override;
  std::shared_ptr<const PHAssetRecord> asset(const std::string& localIdentifier) const override;
  void performChanges(Changes changes, std::function<void(bool, std::optional<NSError>)> answer) override;
  std::optional<UIImage> image(const PHAssetRecord& asset, CGSize target, bool aspectFill) const override;
  std::optional<Data> imageData(const PHAssetRecord& asset) const override;
  std::optional<std::string> fullSizeImagePath(const PHAssetRecord& asset) const override;
  VideoAnswer video(const PHAssetRecord& asset) const override;
  bool hasLivePhoto(const PHAssetRecord& asset) const override;

  // Told on the main thread after each new snapshot is in place.
  ChangeSignal& changed() { return shared_->changed; }
  void rescan();
  void setFavorite(const std::string& localIdentifier, bool favorite);
  ThumbnailCache& thumbnails() const { return *thumbnails_; }

  // Snapshots the worker has posted to the main queue so far.
  std::uint64_t postedSnapshots() const;
  // Waits (bounded) until more than `seen` snapshots were posted. False on timeout.
  bool waitForPost(std::uint64_t seen, double timeoutSeconds) const;
  // Waits (bounded) until the worker has nothing queued and no rescan pending.
  bool waitUntilIdle(double timeoutSeconds) const;
  // The last scan's figures (worker's view).
  ScanReport lastScan() const;

  struct AssetExtra {
    std::string livePath;  // the movie of a live photo
    int orientation = 1;
    bool drawableOriginal = true;  // a format a shell draws itself
  };
  struct Snapshot {
    std::vector<std::shared_ptr<const PHAssetRecord>> assets;
    std::unordered_map<std::string, std::shared_ptr<const PHAssetRecord>> byId;
    std::unordered_map<std::string, AssetExtra> extra;
    std::vector<std::shared_ptr<const PHAssetCollectionRecord>> collections;
    std::unordered_map<std::string, std::string> albumFolders;  // album id → relative folder
  };

 private:
  struct Shared {
    mutable std::mutex mutex;
    std::shared_ptr<const Snapshot> snapshot;
    ChangeSignal changed;  // main thread only
  };

  std::shared_ptr<const Snapshot> current() const;
  std::shared_ptr<const Snapshot> buildSnapshot();
  void publish();
  void enqueue(std::function<void()> job);
  void workerLoop();
  void scanNow(ScanDepth depth = ScanDepth::full);
  void watchFolders(const std::vector<std::string>& folders);
  void apply(const Changes& changes, std::function<void(bool, std::optional<NSError>)> answer);
  void askThenApply(Changes changes, std::function<void(bool, std::optional<NSError>)> answer);

  Options options_;
  std::unique_ptr<LibraryIndex> index_;  // worker thread only, once it runs
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::unique_ptr<ThumbnailCache> thumbnails_;
  Trash trash_;

  mutable std::mutex workMutex_;
  mutable std::condition_variable workChanged_;
  std::deque<std::function<void()>> jobs_;
  bool stopping_ = false;
  bool busy_ = false;
  bool dirty_ = false;
  std::uint64_t posted_ = 0;
  std::vector<std::pair<std::string, int>> prefill_;  // worker only: (file, orientation) still to thumbnail
  ScanReport lastScan_;
  int wakeFd_ = -1;
  int inotifyFd_ = -1;
  std::thread worker_;
};

}  // namespace nimbrel::desktop
