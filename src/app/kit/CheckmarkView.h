#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "app/kit/AppThemeColor.h"
#include "platform/uikit/UIView.h"

namespace nimbrel {

// The round selection mark of a grid or list item.
class CheckmarkView : public UIView {
 public:
  // What one pass of drawing paints, in the view's coordinates: the disc with its shadow, its
  // outline and the check, both stroked in `strokeColor`.
  struct Drawing {
    CGRect oval;
    CGSize shadowOffset;
    double shadowBlur = 0;
    UIColor shadowColor;
    UIColor fillColor;
    UIColor strokeColor;
    double lineWidth = 0;
    std::vector<CGPoint> check;
  };

  CheckmarkView();
  explicit CheckmarkView(CGRect frame);
  const char* className() const override { return "CheckmarkView"; }

  bool isSelected() const { return selected_; }
  void setSelected(bool selected);
  bool ismultiSelect() const { return multiSelect_; }
  void setIsmultiSelect(bool multiSelect) { multiSelect_ = multiSelect; }

  // Toggles the mark; also reachable as the action "onCheckmarkWithSender:".
  void onCheckmarkWithSender(const std::shared_ptr<NSObject>& sender);
  bool performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) override;
  bool respondsToSelector(std::string_view selector) const override;

  Drawing drawing() const;

 private:
  bool selected_ = false;
  bool multiSelect_ = false;
  AppThemeColor colors_;
};

}  // namespace nimbrel
