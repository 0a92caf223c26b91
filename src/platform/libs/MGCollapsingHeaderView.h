#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/libs/MGCollapsingHeaderDelegate.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIView.h"

// One property of a view that follows the header's collapse.
struct MGTransform {
  // The library's attribute numbers; only alpha has an effect here, the geometric ones need a
  // constraint solver and are kept for a shell.
  enum : int { x = 1, y = 2, width = 3, height = 4, alpha = 5, cornerRadius = 6, shadowRadius = 7,
               shadowOpacity = 8 };

  static MGTransform transformAttribute(int attribute, double value) { return {attribute, value}; }
  int attribute = 0;
  double value = 0;
};

// The collapsing-header library as state: the header's height is a constraint's constant that
// follows the content's scroll between the full height and `minimumHeaderHeight`.
//
// - The full height is the constraint's constant at the first `collapseWithScroll` after the
//   constraint was set.
// - Scrolled down by dy > 0 the height is max(minimum, full − dy); at dy ≤ 0 it is full.
// - A shrink sends `headerDidCollapseToOffset(dy)`, or `headerDidFinishCollapsing` when it reaches
//   the minimum; a growth sends `headerDidExpandToOffset(dy)`, or `headerDidFinishExpanding` when
//   it reaches full height. No change in height, no call: each finish is heard once per arrival.
// - Without `alwaysCollapse` the header only shrinks when the content is taller than the scroll
//   view by more than the collapse distance; growing back is always allowed so that a header never
//   stays collapsed over content that became short.
// - Alpha (attribute 5) is additive: a view's alpha is its alpha when added plus value × progress,
//   clamped to [0, 1]; with -0.9 a fully opaque view fades to 0.1 when collapsed.
class MGCollapsingHeaderView : public UIView {
 public:
  struct TransformingSubview {
    std::shared_ptr<UIView> view;
    std::vector<MGTransform> attributes;
    double startAlpha = 1;
  };

  using UIView::UIView;
  const char* className() const override { return "MGCollapsingHeaderView"; }

  void setDelegate(std::weak_ptr<MGCollapsingHeaderDelegate> delegate) { delegate_ = std::move(delegate); }
  std::shared_ptr<MGCollapsingHeaderDelegate> delegate() const { return delegate_.lock(); }
  bool alwaysCollapse() const { return alwaysCollapse_; }
  void setAlwaysCollapse(bool always) { alwaysCollapse_ = always; }
  double minimumHeaderHeight() const { return minimumHeaderHeight_; }
  void setMinimumHeaderHeight(double height) { minimumHeaderHeight_ = height; }
  const std::shared_ptr<NSLayoutConstraint>& collapsingConstraint() const { return constraint_; }
  void setCollapsingConstraint(std::shared_ptr<NSLayoutConstraint> constraint);

  void addTransformingSubview(std::shared_ptr<UIView> view, std::vector<MGTransform> attributes);
  const std::vector<TransformingSubview>& transformingSubviews() const { return transforming_; }

  // Follows the scroll view's content offset; `scrollViewDidScroll` is the place to call it.
  void collapseWithScroll(const UIScrollView& scrollView);

  // The full height once known.
  std::optional<double> headerHeight() const { return fullHeight_; }
  // 0 at full height, 1 at the minimum.
  double progress() const { return progress_; }

 private:
  void applyProgress();

  std::weak_ptr<MGCollapsingHeaderDelegate> delegate_;
  bool alwaysCollapse_ = true;
  double minimumHeaderHeight_ = 60;
  std::shared_ptr<NSLayoutConstraint> constraint_;
  std::optional<double> fullHeight_;
  std::vector<TransformingSubview> transforming_;
  double progress_ = 0;
};
