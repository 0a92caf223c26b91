#include "shell/ScreenObject.h"

#include "automation/TreeWriter.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel::shell {

ScreenObject::ScreenObject(std::shared_ptr<UIViewController> controller, QObject* parent)
    : QObject(parent), controller_(std::move(controller)),
      id_(QString::fromStdString(TreeWriter::screenId(*controller_))) {}

bool ScreenObject::loaded() const {
  return controller_->isViewLoaded();
}

QStringList ScreenObject::outletNames() const {
  QStringList names;
  if (!controller_->isViewLoaded()) return names;
  for (const auto& [name, object] : controller_->outlets()) names.push_back(QString::fromStdString(name));
  return names;
}

ViewObject* ScreenObject::outlet(const QString& name) {
  // Outlets exist once the scene is loaded; asking never loads it.
  std::shared_ptr<NSObject> object =
      controller_->isViewLoaded() ? controller_->outlet(name.toStdString()) : nullptr;
  if (!object) {
    if (!missing_) missing_ = new ViewObject(nullptr, this);
    return missing_;
  }
  auto it = outlets_.find(name);
  if (it != outlets_.end() && it.value() && it.value()->object() == object) return it.value();
  if (it != outlets_.end() && it.value()) it.value()->deleteLater();
  auto* view = new ViewObject(object, this);
  outlets_.insert(name, view);
  return view;
}

bool ScreenObject::responds(const QString& selector) const {
  return controller_->respondsToSelector(selector.toStdString());
}

bool ScreenObject::send(const QString& selector, const QString& sender) {
  std::string s = selector.toStdString();
  if (!controller_->respondsToSelector(s)) return false;
  std::shared_ptr<NSObject> from = sender.isEmpty() ? nullptr : controller_->outlet(sender.toStdString());
  return controller_->performAction(s, from);
}

void ScreenObject::setPlace(const QString& presentation, int style, bool leaving) {
  if (presentation == presentation_ && style == style_ && leaving == leaving_) return;
  presentation_ = presentation;
  style_ = style;
  leaving_ = leaving;
  Q_EMIT placeChanged();
}

}  // namespace nimbrel::shell
