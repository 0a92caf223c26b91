#include "backends/desktop/index/DesktopPermissions.h"

#include "backends/desktop/index/PreferencesFile.h"
#include "backends/desktop/index/SystemPrompt.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Diagnostics.h"

namespace nimbrel::desktop {

namespace {

constexpr PermissionAuthority::Kind kKinds[] = {PermissionAuthority::Kind::photos, PermissionAuthority::Kind::music,
                                                PermissionAuthority::Kind::tracking};

std::map<PermissionAuthority::Kind, int> load(const std::string& path) {
  std::map<PermissionAuthority::Kind, int> out;
  PreferencesFile file(path);
  for (const auto& [key, value] : file.load()) {
    auto kind = DesktopPermissions::kindNamed(key);
    if (kind && value.isInteger()) out[*kind] = static_cast<int>(value.integer());
  }
  return out;
}

std::string promptTitle(PermissionAuthority::Kind kind, const std::string& app) {
  std::string who = "\u201C" + app + "\u201D";
  switch (kind) {
    case PermissionAuthority::Kind::photos: return who + " Would Like to Access Your Photos";
    case PermissionAuthority::Kind::music: return who + " Would Like to Access Your Music";
    case PermissionAuthority::Kind::tracking: break;
  }
  return who;
}

std::string promptMessage(PermissionAuthority::Kind kind) {
  switch (kind) {
    case PermissionAuthority::Kind::photos: return "Your Pictures and Videos folders are shown and can be changed.";
    case PermissionAuthority::Kind::music: return "Your Music folder is shown and can be played.";
    case PermissionAuthority::Kind::tracking: break;
  }
  return {};
}

}  // namespace

DesktopPermissions::DesktopPermissions(std::string path, std::string appName)
    : path_(std::move(path)), appName_(std::move(appName)), statuses_(load(path_)) {}

int DesktopPermissions::allowedStatus(Kind) {
  return 3;
}

int DesktopPermissions::refusedStatus(Kind kind) {
  // The media library numbers denial 1; photos and tracking number it 2.
  return kind == Kind::music ? 1 : 2;
}

const char* DesktopPermissions::name(Kind kind) {
  switch (kind) {
    case Kind::photos: return "photos";
    case Kind::music: return "music";
    case Kind::tracking: return "tracking";
  }
  return "?";
}

std::optional<PermissionAuthority::Kind> DesktopPermissions::kindNamed(const std::string& n) {
  for (auto k : kKinds) {
    if (n == name(k)) return k;
  }
  return std::nullopt;
}

int DesktopPermissions::status(Kind kind) const {
  if (kind == Kind::tracking) return kTrackingStatus;
  std::lock_guard lock(mutex_);
  auto it = statuses_.find(kind);
  return it == statuses_.end() ? 0 : it->second;
}

bool DesktopPermissions::setStatus(const std::string& path, Kind kind, std::optional<int> status) {
  PreferencesFile file(path);
  PlistValue::Dictionary values;
  for (auto& [key, value] : file.load()) {
    if (key != name(kind)) values.emplace_back(key, std::move(value));
  }
  if (status) values.emplace_back(name(kind), PlistValue(static_cast<std::int64_t>(*status)));
  return file.save(values);
}

void DesktopPermissions::finish(Kind kind, int status) {
  std::vector<std::function<void(int)>> answers;
  {
    std::lock_guard lock(mutex_);
    statuses_[kind] = status;
    answers = std::move(waiting_[kind]);
    waiting_.erase(kind);
  }
  if (!setStatus(path_, kind, status)) Diagnostics::report("The answer to the " + std::string(name(kind)) + " prompt could not be kept");
  for (auto& a : answers) DispatchQueue::global().async([a, status] { a(status); });
}

void DesktopPermissions::request(Kind kind, std::function<void(int)> answer) {
  if (kind == Kind::tracking) {
    DispatchQueue::global().async([answer = std::move(answer)] { answer(kTrackingStatus); });
    return;
  }
  {
    std::lock_guard lock(mutex_);
    auto it = statuses_.find(kind);
    if (it != statuses_.end() && it->second != 0) {
      int status = it->second;
      DispatchQueue::global().async([answer = std::move(answer), status] { answer(status); });
      return;
    }
    auto& waiting = waiting_[kind];
    waiting.push_back(std::move(answer));
    if (waiting.size() > 1) return;  // the prompt is already on its way
  }
  DispatchQueue::main().async([weak = weak_from_this(), kind] {
    auto self = weak.lock();
    if (!self) return;
    bool asked = presentSystemPrompt(promptTitle(kind, self->appName_), promptMessage(kind),
                                     {{"Don't Allow", UIAlertActionStyle::cancel}, {"Allow", UIAlertActionStyle::defaultStyle}},
                                     [weak, kind](const std::string& chosen) {
                                       auto self = weak.lock();
                                       if (!self) return;
                                       self->finish(kind, chosen == "Allow" ? allowedStatus(kind) : refusedStatus(kind));
                                     });
    if (!asked) {
      // No window to ask in: refused for now, and asked again next time.
      std::vector<std::function<void(int)>> answers;
      {
        std::lock_guard lock(self->mutex_);
        answers = std::move(self->waiting_[kind]);
        self->waiting_.erase(kind);
      }
      int status = refusedStatus(kind);
      for (auto& a : answers) DispatchQueue::global().async([a, status] { a(status); });
    }
  });
}

}  // namespace nimbrel::desktop
