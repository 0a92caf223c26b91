#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

#include "shell/ViewObject.h"

class UIViewController;

namespace nimbrel::shell {

// One screen of the stack or a presented one: its identity, how it came on screen, its outlets by
// name and its actions by selector.
class ScreenObject : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the bridge")
  Q_PROPERTY(QString screenId READ screenId CONSTANT)
  Q_PROPERTY(QString presentation READ presentation NOTIFY placeChanged)
  Q_PROPERTY(int modalStyle READ modalStyle NOTIFY placeChanged)
  Q_PROPERTY(bool leaving READ leaving NOTIFY placeChanged)
  Q_PROPERTY(bool loaded READ loaded NOTIFY placeChanged)
  Q_PROPERTY(QStringList outletNames READ outletNames NOTIFY placeChanged)

 public:
  explicit ScreenObject(std::shared_ptr<UIViewController> controller, QObject* parent = nullptr);

  QString screenId() const { return id_; }
  QString presentation() const { return presentation_; }
  int modalStyle() const { return style_; }
  bool leaving() const { return leaving_; }
  bool loaded() const;
  QStringList outletNames() const;

  // The outlet with that name; an invalid (hidden) one when the screen has none.
  Q_INVOKABLE nimbrel::shell::ViewObject* outlet(const QString& name);
  // Performs the action as a press of the control `sender` (an outlet name, optional).
  Q_INVOKABLE bool send(const QString& selector, const QString& sender = QString());
  Q_INVOKABLE bool responds(const QString& selector) const;

  const std::shared_ptr<UIViewController>& controller() const { return controller_; }
  void setPlace(const QString& presentation, int style, bool leaving);

 Q_SIGNALS:
  void placeChanged();

 private:
  std::shared_ptr<UIViewController> controller_;
  QString id_;
  QString presentation_;
  int style_ = 0;
  bool leaving_ = false;
  QHash<QString, QPointer<ViewObject>> outlets_;
  QPointer<ViewObject> missing_;
};

}  // namespace nimbrel::shell
