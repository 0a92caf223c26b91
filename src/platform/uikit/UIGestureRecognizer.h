#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIResponder.h"

class UIView;

enum class UIGestureRecognizerState { possible = 0, began = 1, changed = 2, ended = 3, cancelled = 4, failed = 5 };

// A recogniser with its target-action pairs. Touches are delivered by a shell or a script through
// `recognize`, which sets the state and location and sends the actions.
class UIGestureRecognizer : public UIResponder {
 public:
  UIGestureRecognizer(std::weak_ptr<UIResponder> target, std::string action);
  virtual const char* className() const { return "UIGestureRecognizer"; }

  void addTarget(std::weak_ptr<UIResponder> target, std::string action);
  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled) { enabled_ = enabled; }
  UIGestureRecognizerState state() const { return state_; }
  std::shared_ptr<UIView> view() const { return view_.lock(); }
  // The touch point in `view`'s coordinates (only the attached view is supported).
  CGPoint locationInView(const UIView* view) const { return location_; }

  // Sends the actions with the given state at the point, if enabled and attached.
  // Returns whether anything was sent. A recogniser that waits for another to fail sends them
  // only once that one's wait has passed without it recognising.
  bool recognize(UIGestureRecognizerState state, CGPoint location);
  void requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other) { mustFail_ = other; }
  // How long a single tap waits to learn that no second tap follows.
  static constexpr double kDoubleTapWait = 0.35;

 private:
  friend class UIView;
  void setView(const std::shared_ptr<UIView>& view) { view_ = view; }
  std::vector<std::pair<std::weak_ptr<UIResponder>, std::string>> targets_;
  std::weak_ptr<UIView> view_;
  bool enabled_ = true;
  UIGestureRecognizerState state_ = UIGestureRecognizerState::possible;
  CGPoint location_;
  std::weak_ptr<UIGestureRecognizer> mustFail_;
  unsigned recognitions_ = 0;
  void send(UIGestureRecognizerState state, CGPoint location);
};

class UITapGestureRecognizer : public UIGestureRecognizer {
 public:
  using UIGestureRecognizer::UIGestureRecognizer;
  const char* className() const override { return "UITapGestureRecognizer"; }
  int numberOfTapsRequired = 1;
};

class UILongPressGestureRecognizer : public UIGestureRecognizer {
 public:
  using UIGestureRecognizer::UIGestureRecognizer;
  const char* className() const override { return "UILongPressGestureRecognizer"; }
  double minimumPressDuration = 0.5;
};

class UIPinchGestureRecognizer : public UIGestureRecognizer {
 public:
  using UIGestureRecognizer::UIGestureRecognizer;
  const char* className() const override { return "UIPinchGestureRecognizer"; }
  double scale = 1;
};
