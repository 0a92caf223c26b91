#pragma once

#include <QAbstractListModel>
#include <QObject>
#include <QRectF>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <memory>
#include <vector>

#include "platform/foundation/ChangeSignal.h"
#include "shell/ScreenObject.h"

class UIView;
class QQmlEngine;
class QJSEngine;
class UIViewController;
class UIActivityViewController;

namespace nimbrel {
class ProgressHUD;
}

namespace nimbrel::shell {

// The screens QML shows, bottom first: the navigation stack, then the presented screens, and for a
// short while those that just left (so that they can animate out).
class ScreenList : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the bridge")
  Q_PROPERTY(int count READ count NOTIFY countChanged)
 public:
  enum Role { ScreenRole = Qt::UserRole + 1 };
  using QAbstractListModel::QAbstractListModel;
  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : int(rows_.size()); }
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override { return {{ScreenRole, "screen"}}; }
  int count() const { return int(rows_.size()); }
  Q_INVOKABLE nimbrel::shell::ScreenObject* at(int row) const;
  // The topmost screen that is not leaving.
  Q_INVOKABLE nimbrel::shell::ScreenObject* top() const;

  void append(ScreenObject* screen);
  void remove(ScreenObject* screen);
  const std::vector<ScreenObject*>& rows() const { return rows_; }

 Q_SIGNALS:
  void countChanged();

 private:
  std::vector<ScreenObject*> rows_;
};

class DocumentPickerDialog;

// What QML binds to beyond the screens: the status overlay, the alert, the pop-up menu, the share
// sheet and the full-screen ad; and the touches that answer them.
class AppBridge : public QObject {
  Q_OBJECT
  Q_PROPERTY(nimbrel::shell::ScreenList* screens READ screens CONSTANT)
  Q_PROPERTY(bool hudVisible READ hudVisible NOTIFY hudChanged)
  Q_PROPERTY(QString hudKind READ hudKind NOTIFY hudChanged)
  Q_PROPERTY(QString hudStatus READ hudStatus NOTIFY hudChanged)
  Q_PROPERTY(double hudProgress READ hudProgress NOTIFY hudChanged)
  Q_PROPERTY(bool hudFading READ hudFading NOTIFY hudChanged)
  // The program's own overlay: shown, figure, figureKind, color, status, card and content geometry.
  Q_PROPERTY(QVariantMap overlay READ overlay NOTIFY overlayChanged)
  Q_PROPERTY(bool alertVisible READ alertVisible NOTIFY alertChanged)
  Q_PROPERTY(QString alertTitle READ alertTitle NOTIFY alertChanged)
  Q_PROPERTY(QString alertMessage READ alertMessage NOTIFY alertChanged)
  Q_PROPERTY(QVariantList alertActions READ alertActions NOTIFY alertChanged)
  Q_PROPERTY(QStringList menuEntries READ menuEntries NOTIFY menuChanged)
  Q_PROPERTY(QRectF menuRect READ menuRect NOTIFY menuChanged)
  Q_PROPERTY(bool sheetVisible READ sheetVisible NOTIFY sheetChanged)
  Q_PROPERTY(QStringList sheetItems READ sheetItems NOTIFY sheetChanged)
  // The platform's activities for the sheet's items (none on the sim).
  Q_PROPERTY(QStringList sheetActivities READ sheetActivities NOTIFY sheetChanged)
  Q_PROPERTY(bool adVisible READ adVisible NOTIFY adChanged)
  Q_PROPERTY(QString adNetwork READ adNetwork NOTIFY adChanged)
  Q_PROPERTY(QString adFormat READ adFormat NOTIFY adChanged)
  // The platform's own message to the person (where a damaged file was kept); empty when none.
  Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
  Q_PROPERTY(bool pad READ pad CONSTANT)
  Q_PROPERTY(QString windowTitle READ windowTitle CONSTANT)
  // Whether players' files are real media to decode and show (the desktop platform), or stand-ins.
  Q_PROPERTY(bool realPlayback READ realPlayback CONSTANT)
  // The status bar's clock: the platform's time of day, as the platform formats a short time.
  Q_PROPERTY(QString clock READ clock NOTIFY clockChanged)

 public:
  explicit AppBridge(QObject* parent = nullptr);
  ~AppBridge() override;

  // The one bridge of the process, made by main before the engine loads; QML gets it through
  // AppBridgeSingleton.
  static AppBridge* instance();
  void setPad(bool pad) { pad_ = pad; }
  void setWindowTitle(QString title) { windowTitle_ = std::move(title); }
  void setRealPlayback(bool real) { realPlayback_ = real; }
  // The desktop's own file chooser answers the document picker (not under a script).
  void setNativeDocumentPicker(bool native);
  bool realPlayback() const { return realPlayback_; }

  ScreenList* screens() { return &screens_; }
  bool hudVisible() const { return hudVisible_; }
  QString hudKind() const { return hudKind_; }
  QString hudStatus() const { return hudStatus_; }
  double hudProgress() const { return hudProgress_; }
  bool hudFading() const { return hudFading_; }
  QVariantMap overlay() const { return overlay_; }
  bool alertVisible() const { return alertVisible_; }
  QString alertTitle() const { return alertTitle_; }
  QString alertMessage() const { return alertMessage_; }
  QVariantList alertActions() const { return alertActions_; }
  QStringList menuEntries() const { return menuEntries_; }
  QRectF menuRect() const { return menuRect_; }
  bool sheetVisible() const { return sheetVisible_; }
  QStringList sheetItems() const { return sheetItems_; }
  QStringList sheetActivities() const { return sheetActivities_; }
  bool adVisible() const { return adVisible_; }
  QString adNetwork() const { return adNetwork_; }
  QString adFormat() const { return adFormat_; }
  QString notice() const { return notice_; }
  bool pad() const { return pad_; }
  QString windowTitle() const { return windowTitle_; }
  QString clock() const { return clock_; }

  Q_INVOKABLE bool pressAlertAction(const QString& title);
  Q_INVOKABLE bool pressMenuEntry(int index);
  Q_INVOKABLE bool dismissMenu();
  Q_INVOKABLE bool closeSheet();
  Q_INVOKABLE bool chooseActivity(const QString& name);
  Q_INVOKABLE bool closeAd();
  Q_INVOKABLE bool dismissNotice();
  // A person's "back" (Escape): closes what lies on top, else leaves the top screen the way its
  // own back button does, else pops or dismisses it.
  Q_INVOKABLE bool back();

  // Reads everything again now.
  void refreshNow();

 Q_SIGNALS:
  void hudChanged();
  void overlayChanged();
  void alertChanged();
  void menuChanged();
  void sheetChanged();
  void adChanged();
  void noticeChanged();
  void clockChanged();

 private:
  void scheduleRefresh();
  void refreshScreens();
  void refreshHud();
  void refreshOverlay();
  void refreshOverlays();
  void refreshClock();
  void observeControllers(const std::vector<std::shared_ptr<UIViewController>>& controllers);

  ScreenList screens_{this};
  std::map<const UIViewController*, ScreenObject*> objects_;
  std::vector<std::pair<std::shared_ptr<UIViewController>, ChangeSignal::Token>> controllerTokens_;
  std::vector<std::pair<ChangeSignal*, ChangeSignal::Token>> tokens_;
  std::shared_ptr<UIView> menuOverlay_;
  bool refreshScheduled_ = false;

  bool hudVisible_ = false, hudFading_ = false;
  QString hudKind_, hudStatus_;
  bool realPlayback_ = false;
  DocumentPickerDialog* pickerDialog_ = nullptr;
  double hudProgress_ = -1;
  std::shared_ptr<ProgressHUD> progressHUD_;
  QVariantMap overlay_;
  bool alertVisible_ = false;
  QString alertTitle_, alertMessage_;
  QVariantList alertActions_;
  QStringList menuEntries_;
  QRectF menuRect_;
  bool sheetVisible_ = false;
  QStringList sheetItems_;
  QStringList sheetActivities_;
  // The sheet the activities were read for: reading them looks for programs on disk.
  std::weak_ptr<UIActivityViewController> activitiesSheet_;
  bool adVisible_ = false;
  QString adNetwork_, adFormat_;
  QString notice_;
  bool pad_ = false;
  QString windowTitle_ = QStringLiteral("Nimbrel");
  QString clock_;
  QTimer* clockTimer_ = nullptr;
};

}  // namespace nimbrel::shell
