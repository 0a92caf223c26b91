#pragma once

#include <memory>

#include "platform/foundation/ChangeSignal.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIView.h"

// What a screen shows in the navigation bar when it is on top.
class UINavigationItem {
 public:
  const std::shared_ptr<UIView>& titleView() const { return titleView_; }
  void setTitleView(std::shared_ptr<UIView> view) {
    titleView_ = std::move(view);
    changed_.emit();
  }
  const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const { return right_; }
  void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item, bool animated) {
    right_ = std::move(item);
    changed_.emit();
  }
  ChangeSignal& changed() { return changed_; }

 private:
  std::shared_ptr<UIView> titleView_;
  std::shared_ptr<UIBarButtonItem> right_;
  ChangeSignal changed_;
};
