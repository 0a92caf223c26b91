#include "shell/AppBridge.h"

#include <QColor>
#include <QJSEngine>
#include <QTimer>

#include "app/VC/PopupMenu.h"
#include "app/kit/ProgressHUD.h"
#include "automation/TreeWriter.h"
#include "shell/DocumentPickerDialog.h"
#include "platform/ads/FullScreenAdStage.h"
#include "platform/uikit/UserNotice.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIView.h"

namespace nimbrel::shell {

namespace {
AppBridge* gInstance = nullptr;
// How long a screen that left stays for its exit animation.
constexpr int kLeavingMs = 420;
}  // namespace

// ---- ScreenList ----

QVariant ScreenList::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= count() || role != ScreenRole) return {};
  return QVariant::fromValue(rows_[static_cast<size_t>(index.row())]);
}

ScreenObject* ScreenList::at(int row) const {
  return row >= 0 && row < count() ? rows_[static_cast<size_t>(row)] : nullptr;
}

ScreenObject* ScreenList::top() const {
  for (auto it = rows_.rbegin(); it != rows_.rend(); ++it) {
    if (!(*it)->leaving()) return *it;
  }
  return nullptr;
}

void ScreenList::append(ScreenObject* screen) {
  beginInsertRows({}, count(), count());
  rows_.push_back(screen);
  endInsertRows();
  Q_EMIT countChanged();
}

void ScreenList::remove(ScreenObject* screen) {
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i] != screen) continue;
    beginRemoveRows({}, int(i), int(i));
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(i));
    endRemoveRows();
    Q_EMIT countChanged();
    return;
  }
}

// ---- AppBridge ----

AppBridge::AppBridge(QObject* parent) : QObject(parent) {
  gInstance = this;
  auto observe = [this](ChangeSignal& signal) {
    tokens_.emplace_back(&signal, signal.observe([this] { scheduleRefresh(); }));
  };
  observe(SVProgressHUD::changed());
  progressHUD_ = ProgressHUD::shared();
  observe(progressHUD_->changed());
  observe(FullScreenAdStage::shared().changed());
  observe(UserNotice::changed());
  menuOverlay_ = popupMenuOverlay();
  observe(menuOverlay_->changed());
  clockTimer_ = new QTimer(this);
  connect(clockTimer_, &QTimer::timeout, this, &AppBridge::refreshClock);
  clockTimer_->start(5000);
  refreshClock();
  refreshNow();
}

void AppBridge::refreshClock() {
  NSDateFormatter formatter;
  formatter.setTimeStyle(NSDateFormatterStyle::short_);
  QString text = QString::fromStdString(formatter.stringFromDate(Date::now()));
  if (text == clock_) return;
  clock_ = text;
  Q_EMIT clockChanged();
}

AppBridge::~AppBridge() {
  for (auto& [signal, token] : tokens_) signal->unobserve(token);
  for (auto& [controller, token] : controllerTokens_) controller->changed().unobserve(token);
  if (gInstance == this) gInstance = nullptr;
}

AppBridge* AppBridge::instance() {
  return gInstance;
}


void AppBridge::scheduleRefresh() {
  // Platform objects tell of a change in the middle of their own work (a menu is told before it
  // is attached): read once that work is over.
  if (refreshScheduled_) return;
  refreshScheduled_ = true;
  QTimer::singleShot(0, this, [this] {
    refreshScheduled_ = false;
    refreshNow();
  });
}

void AppBridge::refreshNow() {
  refreshScreens();
  refreshHud();
  refreshOverlay();
  refreshOverlays();
}

void AppBridge::observeControllers(const std::vector<std::shared_ptr<UIViewController>>& controllers) {
  for (auto& [controller, token] : controllerTokens_) controller->changed().unobserve(token);
  controllerTokens_.clear();
  for (const auto& c : controllers) {
    controllerTokens_.emplace_back(c, c->changed().observe([this] { scheduleRefresh(); }));
  }
}

void AppBridge::refreshScreens() {
  std::vector<std::shared_ptr<UIViewController>> watched;
  if (auto window = UIApplication::sharedApplication().keyWindow()) {
    if (auto root = window->rootViewController()) {
      for (auto c = root; c; c = c->presentedViewController()) watched.push_back(c);
    }
  }
  observeControllers(watched);

  auto entries = TreeWriter::screens();
  std::map<const UIViewController*, const TreeWriter::ScreenEntry*> current;
  for (const auto& e : entries) current[e.controller.get()] = &e;

  // Screens that left: marked, then dropped once their exit has played.
  for (auto* screen : std::vector<ScreenObject*>(screens_.rows())) {
    if (current.count(screen->controller().get()) || screen->leaving()) continue;
    screen->setPlace(screen->presentation(), screen->modalStyle(), true);
    objects_.erase(screen->controller().get());
    QTimer::singleShot(kLeavingMs, this, [this, screen] {
      screens_.remove(screen);
      screen->deleteLater();
    });
  }
  for (const auto& e : entries) {
    QString presentation = QString::fromStdString(e.presentation);
    // setPlace reads the screen's chrome again too.
    auto it = objects_.find(e.controller.get());
    if (it != objects_.end()) {
      it->second->setPlace(presentation, e.style, false);
      continue;
    }
    auto* screen = new ScreenObject(e.controller, this);
    screen->setPlace(presentation, e.style, false);
    objects_[e.controller.get()] = screen;
    screens_.append(screen);
  }
}

void AppBridge::refreshHud() {
  auto state = SVProgressHUD::state();
  QString kind;
  switch (state.kind) {
    case SVProgressHUD::Kind::none: break;
    case SVProgressHUD::Kind::status: kind = QStringLiteral("status"); break;
    case SVProgressHUD::Kind::progress: kind = QStringLiteral("progress"); break;
    case SVProgressHUD::Kind::info: kind = QStringLiteral("info"); break;
    case SVProgressHUD::Kind::success: kind = QStringLiteral("success"); break;
    case SVProgressHUD::Kind::error: kind = QStringLiteral("error"); break;
    case SVProgressHUD::Kind::image: kind = QStringLiteral("image"); break;
  }
  QString status = state.status ? QString::fromStdString(*state.status) : QString();
  if (state.visible == hudVisible_ && kind == hudKind_ && status == hudStatus_ &&
      state.progress == hudProgress_ && state.fadingOut == hudFading_) {
    return;
  }
  hudVisible_ = state.visible;
  hudKind_ = kind;
  hudStatus_ = status;
  hudProgress_ = state.progress;
  hudFading_ = state.fadingOut;
  Q_EMIT hudChanged();
}

void AppBridge::refreshOverlay() {
  const ProgressHUD& hud = *progressHUD_;
  QVariantMap next;
  bool shown = hud.alpha() == 1.0 && hud.viewBackground && hud.toolbarHUD;
  next["shown"] = shown;
  if (shown) {
    const UIView& card = *hud.toolbarHUD;
    auto rgba = [](const UIColor& c) { return QColor::fromRgbF(float(c.red), float(c.green), float(c.blue), float(c.alpha)); };
    next["blocks"] = hud.viewBackground->isUserInteractionEnabled();
    next["backdrop"] = rgba(hud.viewBackground->backgroundColor().value_or(UIColor::clearColor()));
    next["cardColor"] = rgba(card.backgroundColor().value_or(UIColor::systemGrayColor()));
    next["card"] = QRectF(card.frame().minX(), card.frame().minY(), card.frame().width(), card.frame().height());
    next["cardScale"] = card.transformScale();
    next["cardAlpha"] = card.alpha();
    if (hud.labelStatus && hud.labelStatus->text() && !hud.labelStatus->isHidden()) {
      next["status"] = QString::fromStdString(*hud.labelStatus->text());
      next["statusColor"] = rgba(hud.labelStatus->textColor());
    }
    auto placed = [](const std::shared_ptr<UIView>& v) { return v && v->superview(); };
    const UIView* content = nullptr;
    if (placed(hud.viewAnimation)) {
      next["figureKind"] = QStringLiteral("animation");
      next["figure"] = QString::fromStdString(hud.viewAnimation->figure());
      next["color"] = rgba(hud.viewAnimation->color());
      next["duration"] = hud.viewAnimation->duration();
      content = hud.viewAnimation.get();
    } else if (placed(hud.viewAnimatedIcon)) {
      next["figureKind"] = QStringLiteral("icon");
      next["figure"] = QString::fromStdString(hud.viewAnimatedIcon->figure());
      next["color"] = rgba(hud.viewAnimatedIcon->color());
      next["duration"] = hud.viewAnimatedIcon->duration();
      content = hud.viewAnimatedIcon.get();
    } else if (placed(hud.staticImageView)) {
      next["figureKind"] = QStringLiteral("still");
      next["figure"] = QString::fromStdString(hud.staticImageView->image() ? hud.staticImageView->image()->name() : std::string());
      next["color"] = rgba(hud.staticImageView->tintColor().value_or(UIColor::lightGrayColor()));
      content = hud.staticImageView.get();
    } else if (placed(hud.viewProgress)) {
      next["figureKind"] = QStringLiteral("progress");
      next["progress"] = hud.viewProgress->progress();
      next["color"] = rgba(hud.viewProgress->color());
      content = hud.viewProgress.get();
    }
    if (content) {
      next["content"] = QRectF(content->frame().minX(), content->frame().minY(), content->frame().width(),
                               content->frame().height());
    }
  }
  if (next == overlay_) return;
  overlay_ = std::move(next);
  Q_EMIT overlayChanged();
}

void AppBridge::refreshOverlays() {
  // Alert.
  auto alert = TreeWriter::currentAlert();
  QString title, message;
  QVariantList actions;
  if (alert) {
    title = alert->alertTitle() ? QString::fromStdString(*alert->alertTitle()) : QString();
    message = alert->message() ? QString::fromStdString(*alert->message()) : QString();
    for (const auto& a : alert->actions()) {
      actions.push_back(QVariantMap{{"title", QString::fromStdString(a.title)}, {"style", int(a.style)}});
    }
  }
  if (bool(alert) != alertVisible_ || title != alertTitle_ || message != alertMessage_ || actions != alertActions_) {
    alertVisible_ = bool(alert);
    alertTitle_ = title;
    alertMessage_ = message;
    alertActions_ = actions;
    Q_EMIT alertChanged();
  }

  // Pop-up menu, placed where the platform placed it in the screen's coordinates.
  QStringList entries;
  for (const auto& e : popupMenuEntries()) entries.push_back(QString::fromStdString(e));
  QRectF rect;
  if (!entries.isEmpty()) {
    const CGRect overlay = menuOverlay_->frame();
    for (const auto& sub : menuOverlay_->subviews()) {
      if (sub->subviews().empty()) continue;  // the full-size dismiss button has none
      const CGRect f = sub->frame();
      rect = QRectF(overlay.minX() + f.minX(), overlay.minY() + f.minY(), f.width(), f.height());
    }
  }
  if (entries != menuEntries_ || rect != menuRect_) {
    menuEntries_ = entries;
    menuRect_ = rect;
    Q_EMIT menuChanged();
  }

  // Share sheet.
  auto sheet = TreeWriter::currentSheet();
  QStringList items;
  if (sheet) {
    for (const auto& item : sheet->itemDescriptions()) items.push_back(QString::fromStdString(item));
  }
  QStringList activities = sheetActivities_;
  if (sheet != activitiesSheet_.lock()) {
    activitiesSheet_ = sheet;
    activities.clear();
    if (sheet) {
      for (const auto& name : sheet->activityNames()) activities.push_back(QString::fromStdString(name));
    }
  }
  if (bool(sheet) != sheetVisible_ || items != sheetItems_ || activities != sheetActivities_) {
    sheetVisible_ = bool(sheet);
    sheetItems_ = items;
    sheetActivities_ = activities;
    Q_EMIT sheetChanged();
  }

  if (pickerDialog_) pickerDialog_->follow(TreeWriter::currentPicker());

  // Full-screen ad.
  const auto& ad = FullScreenAdStage::shared().showing();
  QString network = ad ? QString::fromStdString(ad->network) : QString();
  QString format = ad ? QString::fromStdString(ad->format) : QString();
  if (bool(ad) != adVisible_ || network != adNetwork_ || format != adFormat_) {
    adVisible_ = bool(ad);
    adNetwork_ = network;
    adFormat_ = format;
    Q_EMIT adChanged();
  }

  const auto& notice = UserNotice::current();
  QString noticeText = notice ? QString::fromStdString(*notice) : QString();
  if (noticeText != notice_) {
    notice_ = noticeText;
    Q_EMIT noticeChanged();
  }
}

void AppBridge::setNativeDocumentPicker(bool native) {
  if (native && !pickerDialog_) pickerDialog_ = new DocumentPickerDialog(this);
}

bool AppBridge::pressAlertAction(const QString& title) {
  auto alert = TreeWriter::currentAlert();
  return alert && alert->pressActionWithTitle(title.toStdString());
}

bool AppBridge::pressMenuEntry(int index) {
  return pressPopupMenuEntry(index);
}

bool AppBridge::dismissMenu() {
  return dismissPopupMenu();
}

bool AppBridge::closeSheet() {
  auto sheet = TreeWriter::currentSheet();
  if (!sheet) return false;
  sheet->close(false);
  return true;
}

bool AppBridge::chooseActivity(const QString& name) {
  auto sheet = TreeWriter::currentSheet();
  return sheet && sheet->performActivity(name.toStdString());
}

bool AppBridge::closeAd() {
  return FullScreenAdStage::shared().close();
}

bool AppBridge::dismissNotice() {
  return UserNotice::dismiss();
}

bool AppBridge::back() {
  if (FullScreenAdStage::shared().showing()) return false;  // an ad closes by its own button
  if (!popupMenuEntries().empty()) return dismissPopupMenu();
  if (TreeWriter::currentSheet()) return closeSheet();
  if (TreeWriter::currentAlert()) return false;  // an alert wants an answer
  auto entries = TreeWriter::screens();
  if (entries.empty()) return false;
  const auto& top = entries.back();
  if (top.controller->respondsToSelector("onBackBtn:")) {
    return top.controller->performAction("onBackBtn:", top.controller->outlet("btnBack"));
  }
  // A panel leaves by its own way out (a touch beside the card).
  if (top.controller->respondsToSelector("onExitBtn:")) {
    return top.controller->performAction("onExitBtn:", top.controller->outlet("btnExit"));
  }
  // A pushed screen goes by the navigation bar's back button, which a hidden bar does not offer.
  if (top.presentation == "push") {
    auto it = objects_.find(top.controller.get());
    return it != objects_.end() && it->second->goBack();
  }
  // Without a back button only a modal screen goes: a stack whose bar is hidden has no back gesture.
  if (top.presentation == "modal") {
    top.controller->dismissViewControllerAnimated(true, nullptr);
    return true;
  }
  return false;
}

}  // namespace nimbrel::shell
