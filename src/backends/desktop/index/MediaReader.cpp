#include "backends/desktop/index/MediaReader.h"

#include <cctype>

namespace nimbrel::desktop {

std::string lowercaseExtension(std::string_view path) {
  auto slash = path.rfind('/');
  auto dot = path.rfind('.');
  if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) return {};
  std::string ext(path.substr(dot + 1));
  for (auto& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return ext;
}

MediaFileKind mediaFileKind(std::string_view path) {
  static const char* images[] = {"jpg", "jpeg", "png", "heic", "heif", "gif", "webp", "tif", "tiff", "bmp", "dng"};
  static const char* videos[] = {"mov", "mp4", "m4v", "avi", "mkv", "webm", "3gp"};
  static const char* audio[] = {"mp3", "m4a", "flac", "ogg", "opus", "wav", "aac", "oga"};
  std::string ext = lowercaseExtension(path);
  if (ext.empty()) return MediaFileKind::none;
  for (auto e : images) if (ext == e) return MediaFileKind::image;
  for (auto e : videos) if (ext == e) return MediaFileKind::video;
  for (auto e : audio) if (ext == e) return MediaFileKind::audio;
  return MediaFileKind::none;
}

}  // namespace nimbrel::desktop
