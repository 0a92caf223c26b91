#pragma once

#include <QColor>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>

#include "platform/foundation/ChangeSignal.h"
#include "shell/PlayerObject.h"
#include "shell/ViewObject.h"

class AVPlayer;
class UIViewController;
class UINavigationController;

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
  // The chrome around the screen: the navigation bar (shown only in a stack whose bar is not
  // hidden), what the screen puts in it, the status bar, and the screen's own view.
  Q_PROPERTY(bool navigationBarHidden READ navigationBarHidden NOTIFY chromeChanged)
  Q_PROPERTY(bool statusBarHidden READ statusBarHidden NOTIFY chromeChanged)
  Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY chromeChanged)
  Q_PROPERTY(nimbrel::shell::ViewObject* titleView READ titleView NOTIFY chromeChanged)
  Q_PROPERTY(nimbrel::shell::ViewObject* rightBarButton READ rightBarButton NOTIFY chromeChanged)
  Q_PROPERTY(nimbrel::shell::ViewObject* rootView READ rootView NOTIFY chromeChanged)
  // The player of the system player or the music player (null for other screens).
  Q_PROPERTY(nimbrel::shell::PlayerObject* player READ player NOTIFY chromeChanged)

 public:
  explicit ScreenObject(std::shared_ptr<UIViewController> controller, QObject* parent = nullptr);
  ~ScreenObject() override;

  QString screenId() const { return id_; }
  QString presentation() const { return presentation_; }
  int modalStyle() const { return style_; }
  bool leaving() const { return leaving_; }
  bool loaded() const;
  QStringList outletNames() const;
  bool navigationBarHidden() const { return navigationBarHidden_; }
  bool statusBarHidden() const { return statusBarHidden_; }
  bool canGoBack() const { return canGoBack_; }
  ViewObject* titleView() const { return titleView_; }
  ViewObject* rightBarButton() const { return rightBarButton_; }
  ViewObject* rootView() const { return rootView_; }
  PlayerObject* player() const { return player_; }

  // The outlet with that name; an invalid (hidden) one when the screen has none.
  Q_INVOKABLE nimbrel::shell::ViewObject* outlet(const QString& name);
  // Performs the action as a press of the control `sender` (an outlet name, optional).
  Q_INVOKABLE bool send(const QString& selector, const QString& sender = QString());
  Q_INVOKABLE bool responds(const QString& selector) const;
  // The navigation bar's back button: the stack pops this screen.
  Q_INVOKABLE bool goBack();
  // The system player's close button: the presenter dismisses it.
  Q_INVOKABLE bool dismiss();
  // The scene gave the screen's views their sizes: the controller hears it as the platform's
  // layout pass (views it placed before they had a size follow there).
  Q_INVOKABLE void didLayOut();

  const std::shared_ptr<UIViewController>& controller() const { return controller_; }
  void setPlace(const QString& presentation, int style, bool leaving);
  // Reads the chrome again; emits `chromeChanged` when it differs.
  void refreshChrome();

 Q_SIGNALS:
  void placeChanged();
  void chromeChanged();

 private:
  std::shared_ptr<UIViewController> controller_;
  QString id_;
  QString presentation_;
  int style_ = 0;
  bool leaving_ = false;
  QHash<QString, QPointer<ViewObject>> outlets_;
  QPointer<ViewObject> missing_;

  void watch();
  void unwatch();
  std::shared_ptr<AVPlayer> screenPlayer() const;
  ViewObject* wrap(QPointer<ViewObject>& slot, const std::shared_ptr<NSObject>& object);
  std::vector<std::pair<ChangeSignal*, ChangeSignal::Token>> tokens_;
  std::weak_ptr<UINavigationController> watchedNav_;
  bool navigationBarHidden_ = true;
  bool statusBarHidden_ = false;
  bool canGoBack_ = false;
  QPointer<ViewObject> titleView_, rightBarButton_, rootView_;
  QPointer<PlayerObject> player_;
};

}  // namespace nimbrel::shell
