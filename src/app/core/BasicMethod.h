#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/core/File.h"
#include "platform/foundation/Data.h"

namespace nimbrel {

inline constexpr const char* kRecentFilesKey = "recentFiles";
inline constexpr const char* kFavFilesKey = "favFiles";

// The two remembered lists and their persisted form: a binary property list of the whole array,
// written through at every change and trusted when read back.

// No value when the list cannot be encoded.
std::optional<Data> encodeFiles(const std::vector<File>& files);
std::variant<std::vector<File>, DecodingError> decodeFiles(const Data& bytes);

// Encodes and stores the whole list, then synchronises. An encoding failure writes nothing.
void saveRecentFiles(const std::vector<File>& files);
void saveFavouriteFiles(const std::vector<File>& files);

// No value when nothing was ever stored. Stored bytes that do not decode end the process.
std::optional<std::vector<File>> loadRecentFiles();
std::optional<std::vector<File>> loadFavouriteFiles();

// Keeps the first record of each address (by absolute string), in order.
std::vector<File> foldFiles(std::vector<File> files);

// Reads a stored list into AppData and folds it there; nothing changes when nothing was stored.
// True when a list was read.
bool refreshRecentFiles();
bool refreshFavouriteFiles();

// A user opened an item: a new record goes to the front of the recents, which are then saved.
void addRecentFile(const URL& url, FileType kind);

// The selected items become favourites, in order, each with the current time; strings that are no
// URL are skipped. The list is saved once and "Mark as Favourite...." shown once.
void addFavouriteFiles(const std::vector<std::string>& addresses, FileType kind);
// Same, with the kind decided per item.
void addFavouriteFiles(const std::vector<std::pair<std::string, FileType>>& items);

// The records whose address equals none of `urls`, in order.
std::vector<File> filesExcluding(const std::vector<File>& files, const std::vector<URL>& urls);

}  // namespace nimbrel
