#include "app/core/FileType.h"

namespace nimbrel {

std::string_view rawValue(FileType type) {
  switch (type) {
    case FileType::docs: return "docs";
    case FileType::photo: return "photo";
    case FileType::video: return "video";
    case FileType::music: return "music";
  }
  return "docs";
}

std::optional<FileType> fileTypeFromRawValue(std::string_view raw) {
  if (raw == "docs") return FileType::docs;
  if (raw == "photo") return FileType::photo;
  if (raw == "video") return FileType::video;
  if (raw == "music") return FileType::music;
  return std::nullopt;
}

}  // namespace nimbrel
