#include "platform/uikit/ShareActivities.h"

#include <mutex>

namespace {
std::mutex mutex;
std::shared_ptr<ShareActivities> installed;
}  // namespace

std::shared_ptr<ShareActivities> ShareActivities::current() {
  std::lock_guard lock(mutex);
  return installed;
}

void ShareActivities::install(std::shared_ptr<ShareActivities> activities) {
  std::lock_guard lock(mutex);
  installed = std::move(activities);
}
