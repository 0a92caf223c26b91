#pragma once

#include <memory>

#include "platform/foundation/ChangeSignal.h"
#include "platform/foundation/NSObject.h"

class UIView;

enum class NSLayoutAttribute { notAnAttribute = 0, left = 1, right = 2, top = 3, bottom = 4,
  leading = 5, trailing = 6, width = 7, height = 8, centerX = 9, centerY = 10 };

// A layout constraint as the rules touch it: mostly its constant.
class NSLayoutConstraint : public NSObject {
 public:
  NSLayoutConstraint() = default;
  NSLayoutConstraint(std::weak_ptr<UIView> first, NSLayoutAttribute firstAttribute,
                     std::weak_ptr<UIView> second, NSLayoutAttribute secondAttribute,
                     double multiplier, double constant)
      : first_(std::move(first)), second_(std::move(second)), firstAttribute_(firstAttribute),
        secondAttribute_(secondAttribute), multiplier_(multiplier), constant_(constant) {}

  double constant() const { return constant_; }
  void setConstant(double c) {
    constant_ = c;
    changed_.emit();
  }
  double multiplier() const { return multiplier_; }
  bool isActive() const { return active_; }
  void setActive(bool active) {
    active_ = active;
    changed_.emit();
  }
  std::shared_ptr<UIView> firstItem() const { return first_.lock(); }
  std::shared_ptr<UIView> secondItem() const { return second_.lock(); }
  NSLayoutAttribute firstAttribute() const { return firstAttribute_; }
  NSLayoutAttribute secondAttribute() const { return secondAttribute_; }
  ChangeSignal& changed() { return changed_; }

 private:
  std::weak_ptr<UIView> first_, second_;
  NSLayoutAttribute firstAttribute_ = NSLayoutAttribute::notAnAttribute;
  NSLayoutAttribute secondAttribute_ = NSLayoutAttribute::notAnAttribute;
  double multiplier_ = 1;
  double constant_ = 0;
  bool active_ = true;
  ChangeSignal changed_;
};
