#include "backends/desktop/index/LazyMediaReader.h"

#include <dlfcn.h>

namespace nimbrel::desktop {

LazyMediaReader::LazyMediaReader(std::string modulePath, std::function<void(const std::string&)> failed)
    : modulePath_(std::move(modulePath)), failed_(std::move(failed)) {}

void LazyMediaReader::load() const {
  std::call_once(loaded_, [this] {
    // Never closed: the reader's code must outlive every call into it. Lazy binding: resolving
    // every symbol of the codec libraries at once costs more than the few a scan calls.
    void* module = ::dlopen(modulePath_.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* entry = module ? ::dlsym(module, kEntryPoint) : nullptr;
    if (entry) reader_ = reinterpret_cast<const MediaReader* (*)()>(entry)();
    if (!reader_) {
      const char* why = ::dlerror();
      error_ = "cannot load the media readers " + modulePath_ + ": " + (why ? why : "no reader in it");
    }
  });
}

const MediaReader* LazyMediaReader::reader() const {
  load();
  // Told only when a file needs reading: a load ahead of time may fail without anything lost.
  if (!reader_ && failed_) std::call_once(reported_, [this] { failed_(error_); });
  return reader_;
}

void LazyMediaReader::loadInBackground() {
  if (!loader_.joinable()) loader_ = std::jthread([this] { load(); });
}

std::optional<MediaFacts> LazyMediaReader::image(const std::string& path) const {
  auto* r = reader();
  return r ? r->image(path) : std::nullopt;
}

std::optional<MediaFacts> LazyMediaReader::video(const std::string& path) const {
  auto* r = reader();
  return r ? r->video(path) : std::nullopt;
}

std::optional<SongFacts> LazyMediaReader::song(const std::string& path) const {
  auto* r = reader();
  return r ? r->song(path) : std::nullopt;
}

}  // namespace nimbrel::desktop
