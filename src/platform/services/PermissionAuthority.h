#pragma once

#include <functional>
#include <memory>

// Answers the platform's permission prompts: the fixture's answers in the simulator, the user's
// remembered choice on the desktop. Statuses are the platform's numbers for each kind.
class PermissionAuthority {
 public:
  enum class Kind { photos, music, tracking };
  virtual ~PermissionAuthority() = default;
  virtual int status(Kind kind) const = 0;
  // Prompts when undetermined; answers later, on a background queue, with the resulting status.
  virtual void request(Kind kind, std::function<void(int status)> answer) = 0;

  static std::shared_ptr<PermissionAuthority> current();
  static void install(std::shared_ptr<PermissionAuthority> authority);
};
