#include "backends/desktop/index/LibraryIndex.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cerrno>
#include <cstring>
#include <random>
#include <tuple>
#include <thread>
#include <unordered_map>
#include <unordered_set>

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/FatalError.h"
#include "platform/photos/PHTypes.h"

namespace nimbrel::desktop {

namespace {

constexpr int kSchemaVersion = 2;

std::int64_t mtimeNs(const struct stat& st) {
  return static_cast<std::int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
}

// A media file met by a walk. Folder and root point into the walk's own tables, which outlive it:
// a library has many files and few folders.
struct Found {
  std::string path;
  const std::string* folder;
  const std::string* root;
  struct stat st;
};

const std::string kTopFolder;

bool isUnder(const std::string& path, const std::string& root) {
  return path.size() > root.size() && path.compare(0, root.size(), root) == 0 && path[root.size()] == '/';
}

std::int64_t ctimeNs(const struct stat& st) {
  return static_cast<std::int64_t>(st.st_ctim.tv_sec) * 1000000000 + st.st_ctim.tv_nsec;
}

// Well-formed UTF-8 (no overlongs, surrogates or values past U+10FFFF).
bool isUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    int extra = c >= 0xC2 && c <= 0xDF ? 1 : c >= 0xE0 && c <= 0xEF ? 2 : c >= 0xF0 && c <= 0xF4 ? 3 : -1;
    if (extra < 0 || i + static_cast<std::size_t>(extra) >= text.size()) return false;
    auto next = static_cast<unsigned char>(text[i + 1]);
    if ((c == 0xE0 && next < 0xA0) || (c == 0xED && next > 0x9F) || (c == 0xF0 && next < 0x90) || (c == 0xF4 && next > 0x8F)) {
      return false;
    }
    for (int k = 1; k <= extra; ++k) {
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
    }
    i += static_cast<std::size_t>(extra) + 1;
  }
  return true;
}

// A path fit for a log line whatever its bytes: those that are no UTF-8 are shown as \xNN.
std::string printable(std::string_view path) {
  if (isUtf8(path)) return std::string(path);
  std::string out;
  for (unsigned char c : path) {
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else {
      char hex[5];
      std::snprintf(hex, sizeof hex, "\\x%02X", c);
      out += hex;
    }
  }
  return out;
}

// A folder as the last walk left it: its times, its subfolders and how many media files it held.
struct FolderState {
  std::int64_t mtime = -1, ctime = -1;
  std::vector<std::string> subfolders;
  int files = 0;
};

std::string joinLines(const std::vector<std::string>& lines) {
  std::string out;
  for (const auto& l : lines) (out += l) += '\n';
  return out;
}

std::vector<std::string> splitLines(std::string_view text) {
  std::vector<std::string> out;
  for (std::size_t start = 0, nl; (nl = text.find('\n', start)) != std::string_view::npos; start = nl + 1) {
    out.emplace_back(text.substr(start, nl - start));
  }
  return out;
}

// Walks the library's folders. Hidden entries are skipped, and so is any folder that is a root of
// its own (a Videos folder inside Pictures is walked once, as itself).
//
// Given the folders' last states, a folder whose modification and change times are those of the
// last walk has the same entries, so it is not read and its files are not looked at (the way
// updatedb spares unchanged folders): an unchanged library costs a stat per folder, not per file.
// A file rewritten in place leaves its folder's times alone; a full walk (and, while the program
// runs, the folder's change notifications) catches those.
struct Walker {
  bool wantAudio = false;
  std::set<std::string> otherRoots;
  const std::unordered_map<std::string, FolderState>* last = nullptr;
  std::int64_t nowNs = 0;
  std::int64_t settleNs = 0;

  std::vector<Found> files;
  std::set<std::string> folders;  // relative to their root: the albums
  std::vector<std::string> absoluteFolders;
  std::vector<std::pair<std::string, FolderState>> read;  // folders read this time, with what to keep
  std::unordered_set<std::string> trusted;                // folders taken as they were
  int trustedFiles = 0;

  void walk(const std::string& root, const std::string& dir, const std::string& rel, int depth) {
    if (depth > 64) return;
    int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    struct stat ds;
    if (::fstat(fd, &ds) != 0) {
      ::close(fd);
      return;
    }
    absoluteFolders.push_back(dir);
    const std::int64_t m = mtimeNs(ds), c = ctimeNs(ds);
    std::vector<std::string> subfolders;
    auto known = last ? last->find(dir) : decltype(last->end()){};
    if (last && known != last->end() && known->second.mtime == m && known->second.ctime == c) {
      ::close(fd);
      trusted.insert(dir);
      trustedFiles += known->second.files;
      subfolders = known->second.subfolders;
    } else {
      DIR* d = ::fdopendir(fd);
      if (!d) {
        ::close(fd);
        return;
      }
      int count = 0;
      while (dirent* e = ::readdir(d)) {
        if (e->d_name[0] == '.') continue;
        // The kind from readdir spares a stat for folders; files are stat'ed only when their name
        // says they are media (size and time decide whether they are read again).
        const unsigned char type = e->d_type;
        if (type != DT_DIR) {
          auto kind = mediaFileKind(e->d_name);
          bool wanted = wantAudio ? kind == MediaFileKind::audio
                                  : (kind == MediaFileKind::image || kind == MediaFileKind::video);
          if (wanted) {
            // Names travel as text everywhere past the index (addresses, lists, the screens).
            if (!isUtf8(e->d_name)) {
              Diagnostics::report("Skipped " + printable(dir + "/" + e->d_name) + ": its name is not UTF-8");
              continue;
            }
            struct stat st;
            if (::fstatat(::dirfd(d), e->d_name, &st, 0) != 0) {
              Diagnostics::report("Skipped " + printable(dir + "/" + e->d_name) + ": " + std::strerror(errno));
              continue;
            }
            if (S_ISREG(st.st_mode)) {
              files.push_back({dir + "/" + e->d_name, &rel, &root, st});
              ++count;
              continue;
            }
          }
        }
        if (type != DT_DIR && type != DT_UNKNOWN) continue;
        struct stat lst;
        // A link to a folder could loop; only real folders are walked.
        if (type == DT_UNKNOWN &&
            (::fstatat(::dirfd(d), e->d_name, &lst, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISDIR(lst.st_mode))) {
          continue;
        }
        subfolders.emplace_back(e->d_name);
      }
      ::closedir(d);
      std::sort(subfolders.begin(), subfolders.end());
      // A folder changed in the last moments may change again within the clock's resolution
      // without its times moving: it is read again next time.
      bool settled = nowNs - std::max(m, c) >= settleNs;
      read.emplace_back(dir, FolderState{settled ? m : -1, settled ? c : -1, subfolders, count});
    }
    for (const auto& name : subfolders) {
      std::string path = dir + "/" + name;
      if (otherRoots.count(path)) continue;
      auto child = folders.insert(rel.empty() ? name : rel + "/" + name).first;
      walk(root, path, *child, depth + 1);
    }
  }
};

std::optional<AssetRow> readAsset(const MediaReader& reader, const std::string& path, const std::string& folder,
                                  const struct stat& st) {
  auto kind = mediaFileKind(path);
  std::optional<MediaFacts> facts = kind == MediaFileKind::image   ? reader.image(path)
                                    : kind == MediaFileKind::video ? reader.video(path)
                                                                   : std::nullopt;
  if (!facts) return std::nullopt;
  AssetRow r;
  r.path = path;
  r.folder = folder;
  r.size = st.st_size;
  r.mtimeNs = mtimeNs(st);
  r.device = static_cast<std::int64_t>(st.st_dev);
  r.inode = static_cast<std::int64_t>(st.st_ino);
  r.kind = static_cast<int>(facts->kind);
  if (facts->panorama) r.subtypes |= PHAssetMediaSubtypePhotoPanorama;
  if (facts->screenshot) r.subtypes |= PHAssetMediaSubtypePhotoScreenshot;
  r.created = facts->created ? facts->created : std::optional<double>(static_cast<double>(r.mtimeNs) / 1e9);
  r.width = facts->width;
  r.height = facts->height;
  r.orientation = facts->orientation;
  r.duration = facts->duration;
  r.latitude = facts->latitude;
  r.longitude = facts->longitude;
  r.selfie = facts->selfie;
  return r;
}

// Reads the files on every core and hands each row to `consume`, on the calling thread and in the
// files' order, as soon as it is read: the index writes while the files are still being read.
template <typename Consume>
void readAssets(const MediaReader& reader, const std::vector<const Found*>& files, Consume consume) {
  auto readOne = [&](std::size_t i) { return readAsset(reader, files[i]->path, *files[i]->folder, files[i]->st); };
  // A few files are not worth a thread.
  if (files.size() < 64) {
    for (std::size_t i = 0; i < files.size(); ++i) consume(i, readOne(i));
    return;
  }
  std::vector<std::optional<AssetRow>> rows(files.size());
  std::vector<std::atomic<bool>> ready(files.size());
  std::atomic<std::size_t> next{0};
  // Taken in order, so that the writer rarely waits for a row.
  auto readMany = [&] {
    for (std::size_t i; (i = next.fetch_add(1, std::memory_order_relaxed)) < files.size();) {
      rows[i] = readOne(i);
      ready[i].store(true, std::memory_order_release);
      ready[i].notify_one();
    }
  };
  std::size_t threads = std::min<std::size_t>(std::max(1u, std::thread::hardware_concurrency()), 8);
  std::vector<std::jthread> readers;
  for (std::size_t t = 0; t < threads; ++t) readers.emplace_back(readMany);
  for (std::size_t i = 0; i < files.size(); ++i) {
    ready[i].wait(false, std::memory_order_acquire);
    consume(i, std::move(rows[i]));
  }
}

bool isDirectory(const std::string& path) {
  struct stat st;
  return !path.empty() && ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

constexpr const char* kAssetColumns =
    "a.id, a.path, a.folder, a.size, a.mtime, a.dev, a.ino, a.kind, a.subtypes, a.created, a.width, a.height, "
    "a.orientation, a.duration, a.latitude, a.longitude, a.selfie, (f.id IS NOT NULL)";

// The first seven columns of every asset query: what tells a file again (id, path, folder, size,
// time, device, inode).
void readFileColumns(SqliteStatement& s, AssetRow& r) {
  r.id = s.text(0);
  r.path = s.text(1);
  r.folder = s.text(2);
  r.size = s.int64(3);
  r.mtimeNs = s.int64(4);
  r.device = s.int64(5);
  r.inode = s.int64(6);
}

AssetRow assetFrom(SqliteStatement& s) {
  AssetRow r;
  readFileColumns(s, r);
  r.kind = static_cast<int>(s.int64(7));
  r.subtypes = static_cast<unsigned>(s.int64(8));
  r.created = s.optionalReal(9);
  r.width = static_cast<int>(s.int64(10));
  r.height = static_cast<int>(s.int64(11));
  r.orientation = static_cast<int>(s.int64(12));
  r.duration = s.real(13);
  r.latitude = s.optionalReal(14);
  r.longitude = s.optionalReal(15);
  r.selfie = s.int64(16) != 0;
  r.favourite = s.int64(17) != 0;
  return r;
}

const MediaReader& readerOf(const std::shared_ptr<const MediaReader>& reader) {
  if (!reader) fatalError("a scan of the library index needs a media reader", __FILE__, __LINE__);
  return *reader;
}

}  // namespace

LibraryIndex::LibraryIndex(const std::string& path, std::shared_ptr<const MediaReader> reader)
    : db_(path), reader_(std::move(reader)) {
  if (!db_.ok()) return;
  createSchema();
}

void LibraryIndex::createSchema() {
  auto version = db_.prepare("PRAGMA user_version");
  int current = version.step() ? static_cast<int>(version.int64(0)) : 0;
  if (current == kSchemaVersion) {
    ok_ = true;
    return;
  }
  ok_ = db_.exec(R"sql(
    CREATE TABLE IF NOT EXISTS meta(key TEXT PRIMARY KEY, value TEXT NOT NULL);
    CREATE TABLE IF NOT EXISTS assets(
      id TEXT PRIMARY KEY, path TEXT NOT NULL UNIQUE, folder TEXT NOT NULL,
      size INTEGER NOT NULL, mtime INTEGER NOT NULL, dev INTEGER NOT NULL, ino INTEGER NOT NULL,
      kind INTEGER NOT NULL, subtypes INTEGER NOT NULL, created REAL,
      width INTEGER NOT NULL, height INTEGER NOT NULL, orientation INTEGER NOT NULL, duration REAL NOT NULL,
      latitude REAL, longitude REAL, selfie INTEGER NOT NULL);
    CREATE TABLE IF NOT EXISTS albums(id TEXT PRIMARY KEY, folder TEXT NOT NULL UNIQUE, seq INTEGER NOT NULL);
    CREATE TABLE IF NOT EXISTS favourites(id TEXT PRIMARY KEY);
    CREATE TABLE IF NOT EXISTS songs(
      pid INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE, size INTEGER NOT NULL, mtime INTEGER NOT NULL,
      title TEXT, artist TEXT, album TEXT, duration REAL NOT NULL, artwork INTEGER NOT NULL,
      readable INTEGER NOT NULL, added REAL NOT NULL);
    CREATE TABLE IF NOT EXISTS dirs(
      path TEXT PRIMARY KEY, mtime INTEGER NOT NULL, ctime INTEGER NOT NULL, subs TEXT NOT NULL,
      files INTEGER NOT NULL);
    PRAGMA user_version = 2;
  )sql");
}

std::string LibraryIndex::newIdentifier(const char* suffix) {
  // A version 4 UUID. libuuid asks the kernel for randomness on every call, which a first index
  // of many thousand files felt; a generator per thread, seeded from the kernel once, does not.
  thread_local std::mt19937_64 generator = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  std::uint64_t high = generator(), low = generator();
  high = (high & 0xFFFFFFFFFFFF0FFFull) | 0x0000000000004000ull;  // version 4
  low = (low & 0x3FFFFFFFFFFFFFFFull) | 0x8000000000000000ull;    // RFC 4122 variant
  char text[37];
  std::snprintf(text, sizeof text, "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32),
                static_cast<unsigned>((high >> 16) & 0xFFFF), static_cast<unsigned>(high & 0xFFFF),
                static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFull));
  return std::string(text) + "/" + suffix;
}

std::uint64_t LibraryIndex::persistentIdForPath(const std::string& path) {
  // FNV-1a: small, fixed across builds and machines, unlike std::hash.
  std::uint64_t h = 1469598103934665603ull;
  for (unsigned char c : path) {
    h ^= c;
    h *= 1099511628211ull;
  }
  h &= 0x7FFFFFFFFFFFFFFFull;
  return h == 0 ? 1 : h;
}



ScanReport LibraryIndex::scanPhotos(const std::vector<std::string>& givenRoots, ScanDepth depth) {
  auto start = std::chrono::steady_clock::now();
  ScanReport report;
  std::vector<std::string> roots;
  for (const auto& r : givenRoots) {
    if (!r.empty() && std::find(roots.begin(), roots.end(), r) == roots.end()) roots.push_back(r);
  }
  std::vector<std::string> present, missing;
  for (const auto& r : roots) (isDirectory(r) ? present : missing).push_back(r);

  // Other roots than last time: files outside the new ones must go, so every file is looked at.
  const std::string rootsText = joinLines(roots);
  bool quick = depth == ScanDepth::quick && meta("photoRoots") == rootsText;
  std::unordered_map<std::string, FolderState> lastStates;
  if (quick) {
    auto q = db_.prepare("SELECT path, mtime, ctime, subs, files FROM dirs");
    while (q.step()) {
      lastStates.emplace(q.text(0), FolderState{q.int64(1), q.int64(2), splitLines(q.text(3)), static_cast<int>(q.int64(4))});
    }
  }

  Walker walker;
  walker.last = quick ? &lastStates : nullptr;
  walker.settleNs = static_cast<std::int64_t>(settleSeconds_ * 1e9);
  walker.nowNs = std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch()).count();
  for (const auto& root : present) {
    walker.otherRoots = std::set<std::string>(roots.begin(), roots.end());
    walker.otherRoots.erase(root);
    walker.walk(root, root, kTopFolder, 0);
  }
  const std::vector<Found>& found = walker.files;
  const std::set<std::string>& folders = walker.folders;
  report.folders = walker.absoluteFolders;
  report.unchanged = walker.trustedFiles;

  // What the index knows of each file, enough to tell it unchanged, moved or gone: every file after
  // a full walk; after a quick one, the files under the folders that were read, less those whose
  // own folder was taken as it was.
  std::unordered_map<std::string, AssetRow> known;
  auto take = [&](SqliteStatement& q) {
    while (q.step()) {
      AssetRow row;
      readFileColumns(q, row);
      if (quick && walker.trusted.count(row.path.substr(0, row.path.rfind('/')))) continue;
      std::string path = row.path;
      known.emplace(std::move(path), std::move(row));
    }
  };
  if (!quick) {
    auto q = db_.prepare("SELECT id, path, folder, size, mtime, dev, ino FROM assets");
    take(q);
  } else {
    // Ranges of paths under each folder read whose parent was not read too ('0' follows '/').
    std::set<std::string> readFolders;
    for (const auto& [dir, state] : walker.read) readFolders.insert(dir);
    auto q = db_.prepare("SELECT id, path, folder, size, mtime, dev, ino FROM assets WHERE path > ? AND path < ?");
    for (const auto& dir : readFolders) {
      auto slash = dir.rfind('/');
      if (slash != std::string::npos && slash > 0 && readFolders.count(dir.substr(0, slash))) continue;
      q.reset();
      q.bind(1, dir + "/").bind(2, dir + "0");
      take(q);
    }
  }

  std::vector<const Found*> fresh, changed;
  std::unordered_set<std::string_view> seen;
  seen.reserve(found.size());
  for (const auto& f : found) {
    if (!seen.insert(f.path).second) continue;
    auto it = known.find(f.path);
    if (it == known.end()) {
      fresh.push_back(&f);
    } else if (it->second.size == f.st.st_size && it->second.mtimeNs == mtimeNs(f.st) &&
               it->second.folder == *f.folder) {
      ++report.unchanged;
    } else {
      changed.push_back(&f);
    }
  }
  // Gone from where they were: files whose root is missing (an unplugged disk) are kept.
  std::map<std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>, const AssetRow*> vanished;
  std::vector<const AssetRow*> gone;
  for (const auto& [path, row] : known) {
    if (seen.count(path)) continue;
    bool rootMissing = std::any_of(missing.begin(), missing.end(), [&](const auto& r) { return isUnder(path, r); });
    if (rootMissing) continue;
    gone.push_back(&row);
    vanished[{row.device, row.inode, row.size, row.mtimeNs}] = &row;
  }

  // Files that reappear elsewhere with the same device, inode, size and time have moved: they are
  // not read again.
  struct Move {
    const AssetRow* from;
    const Found* to;
  };
  std::vector<Move> moves;
  std::set<std::string> movedIds;
  std::vector<const Found*> toRead;
  for (const Found* f : fresh) {
    auto key = std::make_tuple(static_cast<std::int64_t>(f->st.st_dev), static_cast<std::int64_t>(f->st.st_ino),
                               static_cast<std::int64_t>(f->st.st_size), mtimeNs(f->st));
    auto it = vanished.find(key);
    if (it != vanished.end() && !movedIds.count(it->second->id)) {
      moves.push_back({it->second, f});
      movedIds.insert(it->second->id);
      continue;
    }
    toRead.push_back(f);
  }
  const std::size_t freshCount = toRead.size();
  toRead.insert(toRead.end(), changed.begin(), changed.end());
  report.parsed = static_cast<int>(toRead.size());
  // New identifiers are random: sorted and given in the files' order, each new row lands on the
  // identifier index's page next to the last one written.
  std::vector<std::string> newIds(freshCount);
  for (auto& id : newIds) id = newIdentifier();
  std::sort(newIds.begin(), newIds.end());

  SqliteTransaction tx(db_);
  auto insert = db_.prepare(
      "INSERT OR REPLACE INTO assets(id, path, folder, size, mtime, dev, ino, kind, subtypes, created, width, height, "
      "orientation, duration, latitude, longitude, selfie) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
  auto write = [&](const AssetRow& r) {
    insert.bind(1, r.id).bind(2, r.path).bind(3, r.folder).bind(4, r.size).bind(5, r.mtimeNs).bind(6, r.device)
        .bind(7, r.inode).bind(8, r.kind).bind(9, static_cast<std::int64_t>(r.subtypes)).bind(10, r.created)
        .bind(11, r.width).bind(12, r.height).bind(13, r.orientation).bind(14, r.duration).bind(15, r.latitude)
        .bind(16, r.longitude).bind(17, r.selfie ? 1 : 0);
    insert.run();
  };
  auto remove = db_.prepare("DELETE FROM assets WHERE id = ?");
  auto unfavour = db_.prepare("DELETE FROM favourites WHERE id = ?");
  auto forget = [&](const std::string& id) {
    remove.bind(1, id).run();
    unfavour.bind(1, id).run();
    ++report.removed;
  };
  for (const auto* g : gone) {
    if (!movedIds.count(g->id)) forget(g->id);
  }
  auto move = db_.prepare("UPDATE assets SET path = ?, folder = ? WHERE id = ?");
  for (const auto& m : moves) {
    move.bind(1, m.to->path).bind(2, *m.to->folder).bind(3, m.from->id).run();
    ++report.moved;
  }
  std::vector<std::string> unreadable;
  std::size_t given = 0;
  readAssets(readerOf(reader_), toRead, [&](std::size_t i, std::optional<AssetRow> row) {
    if (!row) Diagnostics::report("Skipped " + printable(toRead[i]->path) + ": it cannot be read as a picture or a movie");
    if (i < freshCount) {
      if (row) {
        row->id = newIds[given++];
        write(*row);
        ++report.added;
      }
      return;
    }
    const auto& old = known.at(toRead[i]->path);
    if (!row) {
      unreadable.push_back(old.id);
      return;
    }
    row->id = old.id;
    write(*row);
    ++report.updated;
  });
  for (const auto& id : unreadable) forget(id);

  // Albums follow the folders; a folder is forgotten only when every root could be looked at.
  auto albumRows = albums();
  std::set<std::string> knownFolders;
  std::int64_t seq = 0;
  for (const auto& a : albumRows) {
    knownFolders.insert(a.folder);
    seq = std::max(seq, a.seq);
  }
  auto addAlbumRow = db_.prepare("INSERT INTO albums(id, folder, seq) VALUES(?,?,?)");
  for (const auto& folder : folders) {
    if (!knownFolders.count(folder)) addAlbumRow.bind(1, newIdentifier("L0/040")).bind(2, folder).bind(3, ++seq).run();
  }
  if (missing.empty()) {
    auto dropAlbum = db_.prepare("DELETE FROM albums WHERE id = ?");
    for (const auto& a : albumRows) {
      if (!folders.count(a.folder)) dropAlbum.bind(1, a.id).run();
    }
  }
  // A full walk read every folder: what it saw replaces what was kept.
  if (!quick) db_.exec("DELETE FROM dirs");
  auto keepFolder = db_.prepare("INSERT OR REPLACE INTO dirs(path, mtime, ctime, subs, files) VALUES(?,?,?,?,?)");
  for (const auto& [dir, state] : walker.read) {
    keepFolder.bind(1, dir).bind(2, state.mtime).bind(3, state.ctime).bind(4, joinLines(state.subfolders))
        .bind(5, static_cast<std::int64_t>(state.files)).run();
  }
  if (!quick) setMeta("photoRoots", rootsText);
  tx.commit();

  auto counts = db_.prepare("SELECT kind, COUNT(*) FROM assets GROUP BY kind");
  while (counts.step()) {
    if (counts.int64(0) == static_cast<int>(PHAssetMediaType::image)) report.images = static_cast<int>(counts.int64(1));
    if (counts.int64(0) == static_cast<int>(PHAssetMediaType::video)) report.videos = static_cast<int>(counts.int64(1));
  }
  auto albumCount = db_.prepare("SELECT COUNT(*) FROM albums");
  if (albumCount.step()) report.albums = static_cast<int>(albumCount.int64(0));
  report.seconds = secondsSince(start);
  return report;
}

ScanReport LibraryIndex::scanMusic(const std::string& root) {
  auto start = std::chrono::steady_clock::now();
  ScanReport report;
  if (!isDirectory(root)) {
    report.seconds = secondsSince(start);
    return report;  // an unplugged or absent folder keeps what was known
  }
  Walker walker;
  walker.wantAudio = true;
  walker.walk(root, root, kTopFolder, 0);
  const std::vector<Found>& found = walker.files;
  report.folders = walker.absoluteFolders;

  std::unordered_map<std::string, SongRow> known;
  std::set<std::uint64_t> ids;
  for (auto& s : songs()) {
    ids.insert(s.persistentId);
    known.emplace(s.path, std::move(s));
  }
  std::vector<SongRow> writes;
  std::set<std::string> seen;
  double now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
  for (const auto& f : found) {
    seen.insert(f.path);
    auto it = known.find(f.path);
    if (it != known.end() && it->second.size == f.st.st_size && it->second.mtimeNs == mtimeNs(f.st)) {
      ++report.unchanged;
      continue;
    }
    ++report.parsed;
    auto tags = readerOf(reader_).song(f.path);
    SongRow row;
    if (it != known.end()) {
      row.persistentId = it->second.persistentId;
      row.added = it->second.added;
    } else {
      row.persistentId = persistentIdForPath(f.path);
      while (ids.count(row.persistentId)) row.persistentId = (row.persistentId + 1) & 0x7FFFFFFFFFFFFFFFull;
      ids.insert(row.persistentId);
      row.added = now;
    }
    row.path = f.path;
    row.size = f.st.st_size;
    row.mtimeNs = mtimeNs(f.st);
    if (tags) {
      row.title = tags->title;
      row.artist = tags->artist;
      row.album = tags->album;
      row.duration = tags->duration;
      row.artwork = tags->artwork;
      row.readable = tags->readable;
    } else {
      row.readable = false;
    }
    if (!row.title) {
      // A song without a title tag is known by its file name.
      std::string name = f.path.substr(f.path.rfind('/') + 1);
      row.title = name.substr(0, name.rfind('.'));
    }
    (it == known.end() ? report.added : report.updated)++;
    writes.push_back(std::move(row));
  }
  SqliteTransaction tx(db_);
  auto write = db_.prepare(
      "INSERT OR REPLACE INTO songs(pid, path, size, mtime, title, artist, album, duration, artwork, readable, added) "
      "VALUES(?,?,?,?,?,?,?,?,?,?,?)");
  for (const auto& s : writes) {
    write.bind(1, static_cast<std::int64_t>(s.persistentId)).bind(2, s.path).bind(3, s.size).bind(4, s.mtimeNs)
        .bind(5, s.title).bind(6, s.artist).bind(7, s.album).bind(8, s.duration).bind(9, s.artwork ? 1 : 0)
        .bind(10, s.readable ? 1 : 0).bind(11, s.added);
    write.run();
  }
  auto remove = db_.prepare("DELETE FROM songs WHERE path = ?");
  for (const auto& [path, row] : known) {
    if (!seen.count(path) && isUnder(path, root)) {
      remove.bind(1, path).run();
      ++report.removed;
    }
  }
  tx.commit();
  auto count = db_.prepare("SELECT COUNT(*) FROM songs");
  if (count.step()) report.songs = static_cast<int>(count.int64(0));
  report.seconds = secondsSince(start);
  return report;
}

std::vector<AssetRow> LibraryIndex::assets() {
  std::vector<AssetRow> out;
  auto s = db_.prepare(std::string("SELECT ") + kAssetColumns +
                       " FROM assets a LEFT JOIN favourites f ON f.id = a.id ORDER BY a.created, a.path");
  while (s.step()) out.push_back(assetFrom(s));
  return out;
}

std::optional<AssetRow> LibraryIndex::assetWithId(const std::string& id) {
  auto s = db_.prepare(std::string("SELECT ") + kAssetColumns +
                       " FROM assets a LEFT JOIN favourites f ON f.id = a.id WHERE a.id = ?");
  s.bind(1, id);
  if (!s.step()) return std::nullopt;
  return assetFrom(s);
}

std::vector<AlbumRow> LibraryIndex::albums() {
  std::vector<AlbumRow> out;
  auto s = db_.prepare("SELECT id, folder, seq FROM albums ORDER BY seq");
  while (s.step()) out.push_back({s.text(0), s.text(1), s.int64(2)});
  return out;
}

std::map<std::string, int> LibraryIndex::assetCountsByFolder() {
  std::map<std::string, int> out;
  auto s = db_.prepare("SELECT folder, COUNT(*) FROM assets GROUP BY folder");
  while (s.step()) out[s.text(0)] = static_cast<int>(s.int64(1));
  return out;
}

std::vector<SongRow> LibraryIndex::songs() {
  std::vector<SongRow> out;
  auto s = db_.prepare(
      "SELECT pid, path, size, mtime, title, artist, album, duration, artwork, readable, added FROM songs ORDER BY path COLLATE NOCASE, path");
  while (s.step()) {
    SongRow r;
    r.persistentId = static_cast<std::uint64_t>(s.int64(0));
    r.path = s.text(1);
    r.size = s.int64(2);
    r.mtimeNs = s.int64(3);
    r.title = s.optionalText(4);
    r.artist = s.optionalText(5);
    r.album = s.optionalText(6);
    r.duration = s.real(7);
    r.artwork = s.int64(8) != 0;
    r.readable = s.int64(9) != 0;
    r.added = s.real(10);
    out.push_back(std::move(r));
  }
  return out;
}

std::string LibraryIndex::meta(const std::string& key) {
  auto get = db_.prepare("SELECT value FROM meta WHERE key = ?");
  get.bind(1, key);
  return get.step() ? get.text(0) : std::string();
}

void LibraryIndex::setMeta(const std::string& key, const std::string& value) {
  db_.prepare("INSERT OR REPLACE INTO meta(key, value) VALUES(?, ?)").bind(1, key).bind(2, value).run();
}

std::string LibraryIndex::smartAlbumId(std::int64_t subtype) {
  std::string key = "smart." + std::to_string(subtype);
  auto get = db_.prepare("SELECT value FROM meta WHERE key = ?");
  get.bind(1, key);
  if (get.step()) return get.text(0);
  std::string id = newIdentifier("L0/040");
  db_.prepare("INSERT OR IGNORE INTO meta(key, value) VALUES(?, ?)").bind(1, key).bind(2, id).run();
  get.reset();
  get.bind(1, key);
  return get.step() ? get.text(0) : id;
}

bool LibraryIndex::addFile(const std::string& path, const std::string& root, const std::string& id) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return false;
  std::string folder;
  if (isUnder(path, root)) {
    std::string rel = path.substr(root.size() + 1);
    auto slash = rel.rfind('/');
    folder = slash == std::string::npos ? "" : rel.substr(0, slash);
  }
  auto row = readAsset(readerOf(reader_), path, folder, st);
  if (!row) return false;
  row->id = id;
  return db_.prepare(
                "INSERT OR REPLACE INTO assets(id, path, folder, size, mtime, dev, ino, kind, subtypes, created, width, "
                "height, orientation, duration, latitude, longitude, selfie) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)")
      .bind(1, row->id).bind(2, row->path).bind(3, row->folder).bind(4, row->size).bind(5, row->mtimeNs)
      .bind(6, row->device).bind(7, row->inode).bind(8, row->kind).bind(9, static_cast<std::int64_t>(row->subtypes))
      .bind(10, row->created).bind(11, row->width).bind(12, row->height).bind(13, row->orientation)
      .bind(14, row->duration).bind(15, row->latitude).bind(16, row->longitude).bind(17, row->selfie ? 1 : 0)
      .run();
}

bool LibraryIndex::addAlbum(const std::string& folder, const std::string& id) {
  auto seq = db_.prepare("SELECT COALESCE(MAX(seq), 0) + 1 FROM albums");
  std::int64_t next = seq.step() ? seq.int64(0) : 1;
  return db_.prepare("INSERT OR REPLACE INTO albums(id, folder, seq) VALUES(?,?,?)")
      .bind(1, id).bind(2, folder).bind(3, next).run();
}

bool LibraryIndex::forgetAssets(const std::vector<std::string>& ids) {
  SqliteTransaction tx(db_);
  auto remove = db_.prepare("DELETE FROM assets WHERE id = ?");
  auto unfavour = db_.prepare("DELETE FROM favourites WHERE id = ?");
  for (const auto& id : ids) {
    remove.bind(1, id).run();
    unfavour.bind(1, id).run();
  }
  return tx.commit();
}

bool LibraryIndex::forgetAlbum(const std::string& id) {
  return db_.prepare("DELETE FROM albums WHERE id = ?").bind(1, id).run();
}

bool LibraryIndex::setFavourite(const std::string& id, bool favourite) {
  if (favourite) return db_.prepare("INSERT OR IGNORE INTO favourites(id) VALUES(?)").bind(1, id).run();
  return db_.prepare("DELETE FROM favourites WHERE id = ?").bind(1, id).run();
}

}  // namespace nimbrel::desktop
