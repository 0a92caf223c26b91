#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "backends/desktop/index/MediaReader.h"
#include "backends/desktop/index/Sqlite.h"

namespace nimbrel::desktop {

// One indexed picture or movie file.
struct AssetRow {
  std::string id;    // "<UUID>/L0/001", kept for the file's life
  std::string path;  // absolute
  std::string folder;  // relative to its root: "" for the root itself, "Trips/Rome"
  std::int64_t size = 0, mtimeNs = 0, device = 0, inode = 0;
  int kind = 0;  // PHAssetMediaType
  unsigned subtypes = 0;
  std::optional<double> created;  // seconds since 1970
  int width = 0, height = 0, orientation = 1;
  double duration = 0;
  std::optional<double> latitude, longitude;
  bool selfie = false;
  bool favourite = false;
};

// A folder of a root: a regular album.
struct AlbumRow {
  std::string id;
  std::string folder;  // relative path, never ""
  std::int64_t seq = 0;
};

struct SongRow {
  std::uint64_t persistentId = 0;
  std::string path;
  std::int64_t size = 0, mtimeNs = 0;
  std::optional<std::string> title, artist, album;
  double duration = 0;
  bool artwork = false, readable = true;
  double added = 0;  // seconds since 1970
};

// What a scan did.
struct ScanReport {
  int parsed = 0;     // files whose metadata was read
  int unchanged = 0;  // files skipped: same size and modification time
  int added = 0, updated = 0, moved = 0, removed = 0;
  int images = 0, videos = 0, songs = 0, albums = 0;
  double seconds = 0;
  std::vector<std::string> folders;  // every folder seen, absolute, for watching
};

// How much a photo scan looks at: `quick` takes a folder whose times have not moved as it was
// (without reading it or its files); `full` looks at every file's size and time.
enum class ScanDepth { quick, full };

// The library's index: one SQLite file holding pictures, movies, albums, favourites and songs.
// A scan walks the folders, reads only files that are new or changed (size or modification time),
// keeps identifiers across renames within the library (same device, inode, size and time), and
// commits in one transaction. One thread at a time uses an index.
class LibraryIndex {
 public:
  // Without a reader the index can be looked at and changed, but not scanned.
  explicit LibraryIndex(const std::string& path, std::shared_ptr<const MediaReader> reader = nullptr);
  bool ok() const { return ok_; }
  const std::string& error() const { return db_.error(); }

  // `roots`: the Pictures and Videos folders (empty entries ignored). A quick scan is full when the
  // roots differ from the last full one's.
  ScanReport scanPhotos(const std::vector<std::string>& roots, ScanDepth depth = ScanDepth::full);
  ScanReport scanMusic(const std::string& root);
  // How long a folder must have been left alone before a quick scan may take it on trust: file
  // times move in coarse steps, so a change in the same step as the last walk would go unseen.
  void setSettleSeconds(double seconds) { settleSeconds_ = seconds; }

  std::vector<AssetRow> assets();
  std::vector<AlbumRow> albums();
  // How many pictures and movies each folder holds, by its relative path.
  std::map<std::string, int> assetCountsByFolder();
  std::vector<SongRow> songs();
  std::optional<AssetRow> assetWithId(const std::string& id);

  // The identifier of one of the smart albums, made once and kept.
  std::string smartAlbumId(std::int64_t subtype);

  // Records a file made by the library itself under an identifier chosen beforehand.
  bool addFile(const std::string& path, const std::string& root, const std::string& id);
  // Records an album folder under an identifier chosen beforehand.
  bool addAlbum(const std::string& folder, const std::string& id);
  bool forgetAssets(const std::vector<std::string>& ids);
  bool forgetAlbum(const std::string& id);
  bool setFavourite(const std::string& id, bool favourite);

  static std::string newIdentifier(const char* suffix = "L0/001");
  // A 63-bit id from the path, kept stable by the index once given.
  static std::uint64_t persistentIdForPath(const std::string& path);

 private:
  void createSchema();
  std::string meta(const std::string& key);
  void setMeta(const std::string& key, const std::string& value);

  SqliteDatabase db_;
  std::shared_ptr<const MediaReader> reader_;
  bool ok_ = false;
  double settleSeconds_ = 2.0;
};

}  // namespace nimbrel::desktop
