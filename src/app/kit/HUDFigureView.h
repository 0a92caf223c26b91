#pragma once

#include <string>

#include "platform/uikit/UIView.h"

namespace nimbrel {

// The host of one of the overlay's drawn figures: an animation that repeats for ever, or an icon
// whose stroke is drawn once. What the figure looks like is the shell's to draw from its name.
class HUDFigureView : public UIView {
 public:
  using UIView::UIView;
  const char* className() const override { return "HUDFigureView"; }

  // An `AnimationType` or `AnimatedIcon` case name; empty while cleared.
  const std::string& figure() const { return figure_; }
  const UIColor& color() const { return color_; }
  double duration() const { return duration_; }
  bool repeats() const { return repeats_; }
  void show(std::string figure, UIColor color, double duration, bool repeats);
  void clear();

 private:
  std::string figure_;
  UIColor color_ = UIColor::lightGrayColor();
  double duration_ = 0;
  bool repeats_ = false;
};

}  // namespace nimbrel
