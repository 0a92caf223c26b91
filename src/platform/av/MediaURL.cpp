#include "platform/av/MediaURL.h"

#include <charconv>

#include "platform/mediaplayer/MediaLibrarySource.h"

std::string mediaFilePath(const URL& url) {
  if (url.scheme() != "ipod-library") return url.path();
  std::string query = url.query().value_or(std::string());
  std::uint64_t id = 0;
  for (size_t start = 0; start < query.size();) {
    size_t end = query.find('&', start);
    if (end == std::string::npos) end = query.size();
    std::string_view pair(query.data() + start, end - start);
    if (pair.substr(0, 3) == "id=") {
      auto digits = pair.substr(3);
      auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
      if (ec != std::errc() || ptr != digits.data() + digits.size()) return {};
      for (const auto& song : MediaLibrarySource::current()->songs()) {
        if (song->persistentID == id) return song->backingPath;
      }
      return {};
    }
    start = end + 1;
  }
  return {};
}
