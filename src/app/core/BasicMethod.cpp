#include "app/core/BasicMethod.h"

#include <unordered_set>

#include "app/core/AppData.h"
#include "app/core/Constant.h"
#include "app/core/FileListCodec.h"
#include "platform/foundation/FatalError.h"
#include "platform/libs/SVProgressHUD.h"

namespace nimbrel {

namespace {

constexpr int kRecentDecodeFailureLine = 225;
constexpr int kFavouriteDecodeFailureLine = 257;

void save(const std::vector<File>& files, const char* key) {
  auto bytes = encodeFiles(files);
  if (!bytes) return;
  auto& defaults = Constant::userDefaults();
  defaults.setObject(PlistValue(std::move(*bytes)), key);
  defaults.synchronize();
}

std::optional<std::vector<File>> load(const char* key, int failureLine) {
  auto bytes = Constant::userDefaults().dataForKey(key);
  if (!bytes) return std::nullopt;
  auto decoded = decodeFiles(*bytes);
  if (auto* error = std::get_if<DecodingError>(&decoded)) {
    fatalError(error->localizedDescription(), "Nimbrel/BasicMethod", failureLine);
  }
  return std::get<std::vector<File>>(std::move(decoded));
}

}  // namespace

std::optional<Data> encodeFiles(const std::vector<File>& files) { return FileListCodec::encode(files); }

std::variant<std::vector<File>, DecodingError> decodeFiles(const Data& bytes) {
  return FileListCodec::decode(bytes);
}

void saveRecentFiles(const std::vector<File>& files) { save(files, kRecentFilesKey); }
void saveFavouriteFiles(const std::vector<File>& files) { save(files, kFavFilesKey); }

std::optional<std::vector<File>> loadRecentFiles() {
  return load(kRecentFilesKey, kRecentDecodeFailureLine);
}

std::optional<std::vector<File>> loadFavouriteFiles() {
  return load(kFavFilesKey, kFavouriteDecodeFailureLine);
}

std::vector<File> foldFiles(std::vector<File> files) {
  // Compacts in place: records move forward over the duplicates, so the views into the kept
  // addresses stay valid while the set holds them.
  std::unordered_set<std::string_view> seen;
  seen.reserve(files.size());
  size_t kept = 0;
  for (size_t i = 0; i < files.size(); ++i) {
    if (!seen.insert(files[i].url.absoluteString()).second) continue;
    if (kept != i) {
      seen.erase(files[i].url.absoluteString());
      files[kept] = std::move(files[i]);
      seen.insert(files[kept].url.absoluteString());
    }
    ++kept;
  }
  files.erase(files.begin() + static_cast<std::ptrdiff_t>(kept), files.end());
  return files;
}

bool refreshRecentFiles() {
  auto read = loadRecentFiles();
  if (!read) return false;
  auto data = AppData::shared();
  data->recentFiles = foldFiles(std::move(*read));
  return true;
}

bool refreshFavouriteFiles() {
  auto read = loadFavouriteFiles();
  if (!read) return false;
  auto data = AppData::shared();
  data->FavouriteFiles = foldFiles(std::move(*read));
  return true;
}

void addRecentFile(const URL& url, FileType kind) {
  auto data = AppData::shared();
  data->recentFiles.insert(data->recentFiles.begin(), File{url, Date::now(), kind});
  saveRecentFiles(data->recentFiles);
}

void addFavouriteFiles(const std::vector<std::pair<std::string, FileType>>& items) {
  // The write and the message follow the last selected item; with none there is neither.
  if (items.empty()) return;
  auto data = AppData::shared();
  for (const auto& [address, kind] : items) {
    auto url = URL::withString(address);
    if (!url) continue;
    data->FavouriteFiles.push_back(File{*url, Date::now(), kind});
  }
  saveFavouriteFiles(data->FavouriteFiles);
  SVProgressHUD::showSuccessWithStatus("Mark as Favourite....");
}

void addFavouriteFiles(const std::vector<std::string>& addresses, FileType kind) {
  std::vector<std::pair<std::string, FileType>> items;
  items.reserve(addresses.size());
  for (const auto& a : addresses) items.emplace_back(a, kind);
  addFavouriteFiles(items);
}

std::vector<File> filesExcluding(const std::vector<File>& files, const std::vector<URL>& urls) {
  std::unordered_set<std::string_view> gone;
  for (const auto& u : urls) gone.insert(u.absoluteString());
  std::vector<File> kept;
  for (const auto& f : files) {
    if (!gone.count(f.url.absoluteString())) kept.push_back(f);
  }
  return kept;
}

}  // namespace nimbrel
