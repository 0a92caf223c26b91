#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/uikit/UIGestureRecognizer.h"

namespace nimbrel {

// What the automation protocol needs of the program that runs it: the headless runner over the
// simulated platform, or the Qt application.
class AutomationHost {
 public:
  virtual ~AutomationHost() = default;
  // Seconds since the program started (virtual in the headless runner).
  virtual double elapsed() const = 0;
  // Runs every task that is due now, background work included, without moving time.
  virtual void settle() = 0;
  // Runs due tasks while time moves on by `seconds`.
  virtual void advance(double seconds) = 0;
  // home, documents, importedFiles, preferences.
  virtual nlohmann::json paths() const = 0;
  virtual std::vector<std::string> sdkCalls() const = 0;
  // Writes the window's picture; the reason when it cannot.
  virtual std::optional<std::string> screenshot(const std::string& path) = 0;
  // A person's touch that the recogniser answers, at `point` in its view's coordinates. A program
  // with a window delivers it as a person would (clicks on the window); the default hands it to
  // the recogniser.
  virtual std::optional<std::string> gesture(UIGestureRecognizer& recognizer, CGPoint point) {
    recognizer.recognize(UIGestureRecognizerState::ended, point);
    return std::nullopt;
  }
};

}  // namespace nimbrel
