#include "platform/uikit/DocumentPickerSource.h"

#include <mutex>

namespace {
std::mutex mutex;
std::shared_ptr<DocumentPickerSource> installed;
}  // namespace

std::shared_ptr<DocumentPickerSource> DocumentPickerSource::current() {
  std::lock_guard lock(mutex);
  return installed;
}

void DocumentPickerSource::install(std::shared_ptr<DocumentPickerSource> source) {
  std::lock_guard lock(mutex);
  installed = std::move(source);
}
