#include "backends/sim/SimMusicLibrary.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "platform/foundation/FatalError.h"

namespace nimbrel::sim {

SimMusicLibrary::SimMusicLibrary(const Fixture& fixture, const std::string& home) : albums_(fixture.musicAlbums) {
  std::string folder = home + "/MusicLibrary";
  std::error_code ec;
  if (!fixture.songs.empty()) std::filesystem::create_directories(folder, ec);
  for (const auto& song : fixture.songs) {
    auto record = std::make_shared<MPMediaItemRecord>(song);
    record->backingPath = folder + "/" + std::to_string(song.persistentID) + ".m4a";
    int fd = ::open(record->backingPath.c_str(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
    if (fd < 0 || ::ftruncate(fd, song.fileSize.value_or(0)) != 0) {
      fatalError("cannot make the song file " + record->backingPath);
    }
    ::close(fd);
    songs_.push_back(std::move(record));
  }
}

}  // namespace nimbrel::sim
