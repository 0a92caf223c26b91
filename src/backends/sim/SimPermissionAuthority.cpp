#include "backends/sim/SimPermissionAuthority.h"

#include "platform/foundation/DispatchQueue.h"

namespace nimbrel::sim {

namespace {
const char* name(PermissionAuthority::Kind kind) {
  switch (kind) {
    case PermissionAuthority::Kind::photos: return "photos";
    case PermissionAuthority::Kind::music: return "music";
    case PermissionAuthority::Kind::tracking: return "tracking";
  }
  return "?";
}
}  // namespace

SimPermissionAuthority::SimPermissionAuthority(const Fixture& fixture, std::shared_ptr<SimCallLog> log)
    : permissions_{{Kind::photos, fixture.photos}, {Kind::music, fixture.music}, {Kind::tracking, fixture.tracking}},
      log_(std::move(log)) {}

int SimPermissionAuthority::status(Kind kind) const {
  std::lock_guard lock(mutex_);
  return permissions_.at(kind).status;
}

void SimPermissionAuthority::request(Kind kind, std::function<void(int)> answer) {
  int result;
  {
    std::lock_guard lock(mutex_);
    auto& p = permissions_.at(kind);
    if (p.status == 0) p.status = p.answer;
    result = p.status;
  }
  log_->record(std::string("permission.request ") + name(kind) + " -> " + std::to_string(result));
  DispatchQueue::global().async([answer = std::move(answer), result] { answer(result); });
}

}  // namespace nimbrel::sim
