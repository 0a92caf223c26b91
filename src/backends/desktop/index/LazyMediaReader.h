#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "backends/desktop/index/MediaReader.h"

namespace nimbrel::desktop {

// A reader that loads the codec libraries (a module holding the file reader) the first time a
// file is actually read. A rescan that finds nothing new never pays for loading them, which costs
// more than the rescan itself.
class LazyMediaReader : public MediaReader {
 public:
  // The symbol the module exports: returns its reader, which lives as long as the process.
  static constexpr const char* kEntryPoint = "nimbrel_media_reader";

  // `failed` is called once, with a sentence, when a file must be read and the module cannot be
  // loaded; the reads then answer nothing. A caller that would record those answers ends instead.
  LazyMediaReader(std::string modulePath, std::function<void(const std::string&)> failed);

  std::optional<MediaFacts> image(const std::string& path) const override;
  std::optional<MediaFacts> video(const std::string& path) const override;
  std::optional<SongFacts> song(const std::string& path) const override;

  // Starts loading the module on a thread of its own, for a caller that expects files to be read:
  // the load (tens of milliseconds) then overlaps the walk of the folders.
  void loadInBackground();

 private:
  void load() const;
  const MediaReader* reader() const;

  std::string modulePath_;
  std::function<void(const std::string&)> failed_;
  mutable std::once_flag loaded_, reported_;
  mutable const MediaReader* reader_ = nullptr;
  mutable std::string error_;
  std::jthread loader_;  // last: joined before the rest goes
};

}  // namespace nimbrel::desktop
