#include "shell/ViewObject.h"

#include <cmath>

#include "app/viewers/PlayerView.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UIControl.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UISlider.h"
#include "shell/CollectionModel.h"
#include "shell/PlayerObject.h"
#include "shell/Snapshot.h"

namespace nimbrel::shell {

ViewObject::ViewObject(std::shared_ptr<NSObject> object, QObject* parent)
    : QObject(parent), object_(std::move(object)) {
  state_ = snapshotOf(object_);
  auto observe = [this](ChangeSignal& signal) {
    observed_.emplace_back(&signal, signal.observe([this] { refresh(); }));
  };
  if (auto view = std::dynamic_pointer_cast<UIView>(object_)) observe(view->changed());
  if (auto constraint = std::dynamic_pointer_cast<NSLayoutConstraint>(object_)) observe(constraint->changed());
}

ViewObject::~ViewObject() {
  for (auto& [signal, token] : observed_) signal->unobserve(token);
}

QColor ViewObject::titleColor() const {
  QVariant v = state_.value("titleColor");
  return v.isValid() ? v.value<QColor>() : QColor(0x1c, 0x1c, 0x1e);
}

void ViewObject::refresh() {
  QVariantMap next = snapshotOf(object_);
  if (next == state_) return;
  state_ = std::move(next);
  Q_EMIT changed();
}

CollectionModel* ViewObject::model() {
  auto collection = std::dynamic_pointer_cast<UICollectionView>(object_);
  if (!collection) return nullptr;
  if (!model_) model_ = new CollectionModel(collection, this);
  return model_;
}

PlayerObject* ViewObject::player() {
  auto view = std::dynamic_pointer_cast<nimbrel::PlayerView>(object_);
  std::shared_ptr<AVPlayer> current = view ? view->player() : nullptr;
  if (!current) return nullptr;
  if (player_ && player_->player() == current) return player_;
  if (player_) player_->deleteLater();
  player_ = new PlayerObject(current, this);
  return player_;
}

bool ViewObject::press() {
  if (auto item = std::dynamic_pointer_cast<UIBarButtonItem>(object_)) {
    item->press();
    return true;
  }
  auto control = std::dynamic_pointer_cast<UIControl>(object_);
  if (!control || !control->isEnabled() || control->isEffectivelyHidden()) return false;
  control->sendActionsForControlEvents(UIControlEvents::touchUpInside);
  return true;
}

bool ViewObject::slide(double value) {
  auto slider = std::dynamic_pointer_cast<UISlider>(object_);
  if (!slider || !slider->isEnabled() || slider->isEffectivelyHidden()) return false;
  slider->setValue(static_cast<float>(value));
  slider->sendActionsForControlEvents(UIControlEvents::valueChanged);
  return true;
}

void ViewObject::setContentY(double y) {
  auto scroll = std::dynamic_pointer_cast<UIScrollView>(object_);
  if (!scroll) return;
  // Sub-pixel moves are noise from the shell's own rounding.
  if (std::abs(scroll->contentOffset().y - y) < 0.25) return;
  scroll->setContentOffset({scroll->contentOffset().x, y}, false);
}

void ViewObject::setViewSize(double width, double height) {
  auto view = std::dynamic_pointer_cast<UIView>(object_);
  if (!view || width <= 0 || height <= 0) return;
  CGRect frame = view->frame();
  if (std::abs(frame.width() - width) < 0.01 && std::abs(frame.height() - height) < 0.01) return;
  view->setFrame(CGRect{frame.origin, {width, height}});
}

bool ViewObject::recognize(double x, double y) {
  auto recognizer = std::dynamic_pointer_cast<UIGestureRecognizer>(object_);
  return recognizer && recognizer->recognize(UIGestureRecognizerState::ended, {x, y});
}

void ViewObject::zoomAt(double scale, double anchorX, double anchorY) {
  auto scroll = std::dynamic_pointer_cast<UIScrollView>(object_);
  if (!scroll || !(scale > 0)) return;
  const double before = scroll->zoomScale();
  if (std::abs(scale - before) < 1e-6) return;
  const CGPoint shown = shownContentOffset(*scroll);
  // The content point under the anchor, at zoom 1.
  const double cx = (shown.x + anchorX) / before, cy = (shown.y + anchorY) / before;
  scroll->setZoomScale(scale, false);
  const double after = scroll->zoomScale();
  if (after == before) return;
  scroll->setContentOffset(clampContentOffset(*scroll, {cx * after - anchorX, cy * after - anchorY}), false);
}

void ViewObject::scrollTo(double x, double y) {
  auto scroll = std::dynamic_pointer_cast<UIScrollView>(object_);
  if (!scroll) return;
  const CGPoint target = clampContentOffset(*scroll, {x, y});
  if (std::abs(target.x - scroll->contentOffset().x) < 0.25 && std::abs(target.y - scroll->contentOffset().y) < 0.25) return;
  scroll->setContentOffset(target, false);
}

}  // namespace nimbrel::shell
