#include "platform/services/PermissionAuthority.h"

#include <map>
#include <mutex>

#include "platform/foundation/DispatchQueue.h"

namespace {

// With nothing installed every prompt is refused (status 2 is "denied" for photos and tracking,
// "restricted" for music; either way no access).
class RefusingAuthority : public PermissionAuthority {
 public:
  int status(Kind) const override { return 0; }
  void request(Kind, std::function<void(int)> answer) override {
    DispatchQueue::global().async([answer = std::move(answer)] { answer(2); });
  }
};

std::mutex gMutex;
std::shared_ptr<PermissionAuthority>& slot() {
  static std::shared_ptr<PermissionAuthority> a;
  return a;
}

}  // namespace

std::shared_ptr<PermissionAuthority> PermissionAuthority::current() {
  std::lock_guard lock(gMutex);
  if (!slot()) slot() = std::make_shared<RefusingAuthority>();
  return slot();
}

void PermissionAuthority::install(std::shared_ptr<PermissionAuthority> authority) {
  std::lock_guard lock(gMutex);
  slot() = std::move(authority);
}
