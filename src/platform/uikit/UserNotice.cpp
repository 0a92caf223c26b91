#include "platform/uikit/UserNotice.h"

namespace {

std::optional<std::string>& text() {
  static std::optional<std::string> t;
  return t;
}

}  // namespace

void UserNotice::post(std::string message) {
  text() = std::move(message);
  changed().emit();
}

const std::optional<std::string>& UserNotice::current() { return text(); }

bool UserNotice::dismiss() {
  if (!text()) return false;
  text().reset();
  changed().emit();
  return true;
}

ChangeSignal& UserNotice::changed() {
  static ChangeSignal signal;
  return signal;
}

void UserNotice::reset() { text().reset(); }
