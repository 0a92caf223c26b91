#include "platform/uikit/UIView.h"

#include <algorithm>

#include "platform/foundation/DispatchQueue.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UIScrollView.h"

void UIView::setFrame(CGRect frame) {
  if (frame == frame_) return;
  bool resized = !(frame.size == frame_.size);
  frame_ = frame;
  if (resized) frameDidChange();
  didChange();
}

void UIView::setBoundsSize(CGSize size) {
  setFrame(CGRect{frame_.origin, size});
}

void UIView::setHidden(bool hidden) {
  if (hidden == hidden_) return;
  hidden_ = hidden;
  didChange();
}

void UIView::setAlpha(double alpha) {
  if (alpha == alpha_) return;
  alpha_ = alpha;
  didChange();
}

void UIView::setBackgroundColor(std::optional<UIColor> color) {
  backgroundColor_ = color;
  didChange();
}

void UIView::setTintColor(std::optional<UIColor> color) {
  tintColor_ = color;
  didChange();
}

void UIView::setTag(long tag) {
  tag_ = tag;
}

void UIView::setUserInteractionEnabled(bool enabled) {
  userInteractionEnabled_ = enabled;
}

void UIView::setClipsToBounds(bool clips) {
  layer_.masksToBounds = clips;
  didChange();
}

void UIView::setContentMode(UIViewContentMode mode) {
  contentMode_ = mode;
  didChange();
}

void UIView::setTransformScale(double scale) {
  transformScale_ = scale;
  didChange();
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
  insertSubviewAtIndex(view, subviews_.size());
}

void UIView::insertSubviewAtIndex(const std::shared_ptr<UIView>& view, size_t index) {
  // A view inside itself would make the hierarchy a cycle.
  if (!view || isDescendantOfView(view.get())) return;
  auto keep = view;  // removing it from its old parent may drop the last reference
  view->removeFromSuperview();
  index = std::min(index, subviews_.size());
  subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(index), keep);
  keep->superview_ = strongSelf<UIView>();
  didChange();
}

void UIView::removeFromSuperview() {
  auto parent = superview_.lock();
  if (!parent) return;
  superview_.reset();
  std::erase_if(parent->subviews_, [this](const auto& v) { return v.get() == this; });
  parent->didChange();
}

bool UIView::isDescendantOfView(const UIView* view) const {
  for (const UIView* v = this; v; ) {
    if (v == view) return true;
    auto parent = v->superview_.lock();
    v = parent.get();
  }
  return false;
}

std::shared_ptr<UIView> UIView::viewWithTag(long tag) {
  if (tag_ == tag) return strongSelf<UIView>();
  for (const auto& sub : subviews_) {
    if (auto found = sub->viewWithTag(tag)) return found;
  }
  return nullptr;
}

bool UIView::isEffectivelyHidden() const {
  if (hidden_) return true;
  auto parent = superview_.lock();
  return parent && parent->isEffectivelyHidden();
}

namespace {
// Where a view's own origin lies in the space its topmost ancestor's frame is given in.
CGPoint originInRootSpace(const UIView* view) {
  CGPoint p;
  for (const UIView* v = view; v;) {
    p.x += v->frame().origin.x;
    p.y += v->frame().origin.y;
    auto parent = v->superview();
    if (auto scroll = dynamic_cast<const UIScrollView*>(parent.get())) {
      p.x -= scroll->contentOffset().x;
      p.y -= scroll->contentOffset().y;
    }
    v = parent.get();
  }
  return p;
}

const UIView* topmost(const UIView* view) {
  const UIView* top = view;
  for (auto parent = view->superview(); parent; parent = parent->superview()) top = parent.get();
  return top;
}
}  // namespace

CGRect UIView::convertRectToView(CGRect rect, const UIView* target) const {
  CGPoint from = originInRootSpace(this);
  CGPoint to = target ? originInRootSpace(target) : topmost(this)->frame().origin;
  return CGRect{{rect.origin.x + from.x - to.x, rect.origin.y + from.y - to.y}, rect.size};
}

void UIView::addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
  if (!recognizer) return;
  if (auto old = recognizer->view(); old && old.get() != this) old->removeGestureRecognizer(recognizer);
  if (std::find(gestures_.begin(), gestures_.end(), recognizer) == gestures_.end()) {
    gestures_.push_back(recognizer);
  }
  recognizer->setView(strongSelf<UIView>());
  didChange();
}

void UIView::removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
  auto it = std::find(gestures_.begin(), gestures_.end(), recognizer);
  if (it == gestures_.end()) return;
  gestures_.erase(it);
  recognizer->setView(nullptr);
  didChange();
}

void UIView::addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint) {
  constraints_.push_back(constraint);
}

void UIView::layoutIfNeeded() {
  ++layoutCount_;
  didChange();
}

void UIView::setNeedsLayout() {
  didChange();
}

void UIView::setNeedsDisplay() {
  changed_.emit();
}

void UIView::animateWithDuration(double duration, const std::function<void()>& animations,
                                 std::function<void(bool)> completion) {
  if (animations) animations();
  if (!completion) return;
  DispatchQueue::main().asyncAfter(duration, [completion = std::move(completion)] { completion(true); });
}

void UIView::addLayerAnimation(LayerAnimation animation) {
  std::erase_if(layerAnimations_, [&](const LayerAnimation& a) { return a.key == animation.key; });
  layerAnimations_.push_back(std::move(animation));
  didChange();
}
