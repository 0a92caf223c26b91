// A real window (offscreen) over the simulated platform, for scene tests: the program's QML on
// the Qt run loop, with helpers to find items, touch them and keep screenshots.
#pragma once

#include <QDir>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QWheelEvent>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "app/storyboard/MainStoryboard.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/LivePreviewViewController.h"
#include "app/viewers/PreviewBuilder.h"
#include "app/viewers/VideoPreviewViewController.h"
#include "backends/sim/SimPlatform.h"
#include "platform/av/AVPlayerViewController.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIScreen.h"
#include "platform/uikit/UIStoryboard.h"
#include "shell/AppBridge.h"
#include "shell/ImageStore.h"
#include "shell/PlayerObject.h"
#include "shell/QtMessages.h"
#include "shell/QtRunLoop.h"
#include "shell/QtTextMeasurer.h"
#include "shell/Snapshot.h"

namespace nimbrel::shell {

class SceneTest : public ::testing::Test {
 protected:
  void start(QSize size, const char* fixtureJson) {
    installQtMessageRecorder();
    warningsBefore_ = recordedQtWarnings().size();
    auto fixture = sim::Fixture::parse(fixtureJson);
    ASSERT_TRUE(fixture.ok()) << fixture.error();
    loop_ = std::make_unique<QtRunLoop>(fixture.value().now);
    previous_ = RunLoop::install(loop_.get());
    platform_ = std::make_unique<sim::SimPlatform>(std::move(fixture).value(), sim::SimPlatform::RunLoopChoice::installed);
    const bool pad = size.width() >= 700;
    UIDevice::currentDevice().configure(pad ? UIUserInterfaceIdiom::pad : UIUserInterfaceIdiom::phone, "17.0");
    UIScreen::mainScreen().configure({double(size.width()), double(size.height())}, 2);
    TextMeasurer::install(std::make_shared<QtTextMeasurer>(QGuiApplication::font().family()));
    registerMainStoryboard();
    home_ = std::make_shared<UIViewController>();
    home_->setStoryboardIdentifier("Home");
    auto home = home_;
    UIStoryboard::setInitialScene("T", [home] {
      auto nav = UINavigationController::withRoot(home);
      nav->setNavigationBarHidden(true, false);  // as the program's stack starts
      return std::static_pointer_cast<UIViewController>(nav);
    });
    UIApplication::sharedApplication().launch(nullptr, "T");
    loop_->settle();
    bridge_ = std::make_unique<AppBridge>();
    bridge_->setPad(pad);
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->addImageProvider(QString::fromLatin1(ImageStore::kProviderId), new ImageProvider);
    engine_->addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_->setInitialProperties({{"width", size.width()}, {"height", size.height()}});
    engine_->load(QUrl(QStringLiteral("qrc:/qt/qml/Nimbrel/Shell/qml/Main.qml")));
    ASSERT_FALSE(engine_->rootObjects().isEmpty());
    window_ = qobject_cast<QQuickWindow*>(engine_->rootObjects().first());
    ASSERT_TRUE(window_);
    window_->requestActivate();
    loop_->settle();
  }

  ~SceneTest() override {
    engine_.reset();
    bridge_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    platform_.reset();
    if (loop_) {
      loop_->waitForBackground();
      RunLoop::install(previous_);
    }
  }

  void TearDown() override {
    QStringList warnings = recordedQtWarnings().mid(warningsBefore_);
    EXPECT_TRUE(warnings.isEmpty()) << "Qt said: " << warnings.join(QStringLiteral("\n")).toStdString();
  }

  std::shared_ptr<UINavigationController> nav() {
    return std::dynamic_pointer_cast<UINavigationController>(UIApplication::sharedApplication().keyWindow()->rootViewController());
  }
  // The platform presents on the window's root controller, whoever asks.
  std::shared_ptr<UIViewController> presented() { return nav()->presentedViewController(); }
  std::shared_ptr<PHAsset> asset(const std::string& id) {
    return PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0];
  }
  template <class T = PreviewViewController>
  std::shared_ptr<T> open(const std::string& id) {
    auto viewer = PreviewBuilder::build(asset(id));
    nav()->pushViewController(viewer, true);
    wait(0.6);  // the push and its slide
    return std::dynamic_pointer_cast<T>(viewer);
  }
  void wait(double seconds) {
    loop_->runFor(seconds);
    loop_->settle();
  }
  // The topmost item of that name (a screen that left may still be sliding out below). Scenes
  // come from a repeater and loaders, so the search follows the visual tree, not object parents.
  QQuickItem* item(const char* name) {
    QQuickItem* found = nullptr;
    std::function<void(QQuickItem*)> visit = [&](QQuickItem* at) {
      if (at->objectName() == QLatin1String(name) && (at->isVisible() || !found)) found = at;
      for (auto* child : at->childItems()) visit(child);
    };
    visit(window_->contentItem());
    return found;
  }
  QRectF sceneRect(QQuickItem* item) { return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())); }
  QPoint centreOf(QQuickItem* item) {
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
  }
  void click(QPoint at) { QTest::mouseClick(window_, Qt::LeftButton, Qt::NoModifier, at); }
  void wheel(QPoint at, int delta, Qt::KeyboardModifiers modifiers) {
    QWheelEvent event(QPointF(at), window_->mapToGlobal(QPointF(at)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window_, &event);
    loop_->settle();
  }
  void screenshot(const QString& name) {
    QDir().mkpath(QStringLiteral(NIMBREL_ARTIFACTS_DIR));
    QImage picture = window_->grabWindow();
    ASSERT_FALSE(picture.isNull());
    EXPECT_TRUE(picture.save(QStringLiteral(NIMBREL_ARTIFACTS_DIR "/scene-") + name + QStringLiteral(".png")));
  }

  std::unique_ptr<QtRunLoop> loop_;
  RunLoop* previous_ = nullptr;
  std::unique_ptr<sim::SimPlatform> platform_;
  std::shared_ptr<UIViewController> home_;
  std::unique_ptr<AppBridge> bridge_;
  std::unique_ptr<QQmlApplicationEngine> engine_;
  QQuickWindow* window_ = nullptr;
  qsizetype warningsBefore_ = 0;
};

}  // namespace nimbrel::shell
