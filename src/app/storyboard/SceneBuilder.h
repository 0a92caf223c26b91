#pragma once

#include <memory>
#include <string>

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIControl.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// Helpers for scene code: make a view as a named outlet in a parent, wire a control's action.
class SceneBuilder {
 public:
  explicit SceneBuilder(UIViewController& controller) : controller_(controller) {}

  template <class T>
  std::shared_ptr<T> outlet(const std::string& name, const std::shared_ptr<UIView>& parent,
                            CGRect frame = {}) {
    auto view = std::make_shared<T>(frame);
    if (parent) parent->addSubview(view);
    controller_.registerOutlet(name, view);
    return view;
  }

  std::shared_ptr<NSLayoutConstraint> constraint(const std::string& name, double constant) {
    auto c = std::make_shared<NSLayoutConstraint>();
    c->setConstant(constant);
    controller_.registerOutlet(name, c);
    return c;
  }

  // The control sends `selector` to the controller when pressed.
  void wire(const std::shared_ptr<UIControl>& control, const std::string& selector,
            UIControlEvents event = UIControlEvents::touchUpInside) {
    control->addTarget(controller_.weakSelf<UIViewController>(), selector, event);
  }

  std::shared_ptr<UIView> root() { return controller_.view(); }

 private:
  UIViewController& controller_;
};

}  // namespace nimbrel
