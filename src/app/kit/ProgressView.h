#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// A round progress meter: a thin full ring, a thick arc over it up to the progress, and the
// percentage in the middle.
class ProgressView : public UIView {
 public:
  // One stroked arc from -π/2 (twelve o'clock) clockwise round to 3π/2, drawn up to `strokeEnd`
  // (0...1 of its length).
  struct Arc {
    CGPoint center;
    double radius = 0;
    double startAngle = 0;
    double endAngle = 0;
    double lineWidth = 0;
    double strokeEnd = 0;
    UIColor strokeColor;
  };
  // The last change of the progress arc a shell animates.
  struct StrokeAnimation {
    std::string keyPath;
    double fromValue = 0;
    double toValue = 0;
    double duration = 0;
  };

  ProgressView();
  explicit ProgressView(CGRect frame);
  const char* className() const override { return "ProgressView"; }

  const UIColor& color() const { return color_; }
  void setColor(UIColor color);
  double progress() const { return progress_; }
  const std::shared_ptr<UILabel>& labelPercentage() const { return labelPercentage_; }

  // Moves the arc to `progress` over `duration` seconds and shows the whole percent below it
  // ("75%" for 0.756). A percentage that is no 64-bit integer ends the process.
  void set(double progress, double duration);

  // The drawing pass: rebuilds both arcs for the current size. The progress arc starts empty
  // again, so a redrawn view shows a bare ring until the next `set`.
  void redraw();

  // The label joins the subviews at the first `set` or `redraw` after the view is owned by a
  // shared pointer, since a view under construction cannot be anyone's superview yet.

  const Arc& circleArc() const { return circle_; }
  const Arc& progressArc() const { return progressArc_; }
  const std::optional<StrokeAnimation>& lastAnimation() const { return animation_; }

 private:
  void adoptLabel();

  // systemBackground in the light appearance.
  UIColor color_ = UIColor::whiteColor();
  double progress_ = 0;
  std::shared_ptr<UILabel> labelPercentage_;
  Arc circle_;
  Arc progressArc_;
  std::optional<StrokeAnimation> animation_;
  bool labelAdopted_ = false;
};

}  // namespace nimbrel
