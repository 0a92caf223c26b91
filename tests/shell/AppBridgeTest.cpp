#include "shell/AppBridge.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include "platform/PlatformState.h"
#include "platform/libs/SVProgressHUD.h"
#include "platform/uikit/ShareActivities.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UIStoryboard.h"
#include "shell/QtRunLoop.h"
#include "shell/ViewObject.h"

namespace nimbrel::shell {
namespace {

class AppBridgeTest : public ::testing::Test {
 protected:
  AppBridgeTest() {
    resetPlatformState();
    root->setStoryboardIdentifier("Root");
    UIStoryboard::setInitialScene("T", [this] {
      return std::static_pointer_cast<UIViewController>(UINavigationController::withRoot(root));
    });
    UIApplication::sharedApplication().launch(nullptr, "T");
    loop_.settle();
  }
  ~AppBridgeTest() override {
    resetPlatformState();
    RunLoop::install(previous_);
  }
  std::shared_ptr<UINavigationController> nav() {
    return std::dynamic_pointer_cast<UINavigationController>(
        UIApplication::sharedApplication().keyWindow()->rootViewController());
  }

  QtRunLoop loop_{0.0};
  RunLoop* previous_ = RunLoop::install(&loop_);
  std::shared_ptr<UIViewController> root = std::make_shared<UIViewController>();
};

TEST_F(AppBridgeTest, APushedScreenJoinsTheListAndAPoppedOneLeavesAfterItsExit) {
  AppBridge bridge;
  ASSERT_EQ(bridge.screens()->count(), 1);
  EXPECT_EQ(bridge.screens()->at(0)->screenId(), "Root");
  auto next = std::make_shared<UIViewController>();
  next->setStoryboardIdentifier("Next");
  nav()->pushViewController(next, true);
  loop_.settle();
  ASSERT_EQ(bridge.screens()->count(), 2);
  EXPECT_EQ(bridge.screens()->top()->screenId(), "Next");
  EXPECT_EQ(bridge.screens()->top()->presentation(), "push");
  nav()->popViewControllerAnimated(true);
  loop_.settle();
  ASSERT_EQ(bridge.screens()->count(), 2);  // still there, leaving
  EXPECT_TRUE(bridge.screens()->at(1)->leaving());
  EXPECT_EQ(bridge.screens()->top()->screenId(), "Root");
  loop_.runFor(0.6);
  EXPECT_EQ(bridge.screens()->count(), 1);
}

TEST_F(AppBridgeTest, ThePresentedScreenIsModalWithItsStyle) {
  AppBridge bridge;
  auto modal = std::make_shared<UIViewController>();
  modal->setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
  root->presentViewController(modal, true, nullptr);
  loop_.settle();
  ASSERT_EQ(bridge.screens()->count(), 2);
  EXPECT_EQ(bridge.screens()->top()->presentation(), "modal");
  EXPECT_EQ(bridge.screens()->top()->modalStyle(), 5);
  // Escape: no back button there, so the modal screen is dismissed.
  EXPECT_TRUE(bridge.back());
  loop_.settle();
  EXPECT_EQ(bridge.screens()->top()->screenId(), "Root");
}

TEST_F(AppBridgeTest, EscapeUsesTheScreensOrPanelsOwnWayOutAndNeverPopsAScreenWithoutOne) {
  AppBridge bridge;
  nav()->setNavigationBarHidden(true, false);  // screens that draw their own header
  auto next = std::make_shared<UIViewController>();
  nav()->pushViewController(next, false);
  loop_.settle();
  EXPECT_FALSE(bridge.back());
  EXPECT_EQ(nav()->viewControllers().size(), 2u);
  int backs = 0;
  next->registerAction("onBackBtn:", [&](const std::shared_ptr<NSObject>&) { ++backs; });
  EXPECT_TRUE(bridge.back());
  EXPECT_EQ(backs, 1);

  // A panel leaves by its own way out; its action decides, not the shell.
  auto panel = std::make_shared<UIViewController>();
  int exits = 0;
  panel->registerAction("onExitBtn:", [&](const std::shared_ptr<NSObject>&) { ++exits; });
  panel->setModalPresentationStyle(UIModalPresentationStyle::overCurrentContext);
  next->presentViewController(panel, false, nullptr);
  loop_.settle();
  EXPECT_TRUE(bridge.back());
  EXPECT_EQ(exits, 1);
  EXPECT_EQ(nav()->presentedViewController(), panel);
  EXPECT_EQ(backs, 1) << "the screen below is not asked";
}

TEST_F(AppBridgeTest, EscapeIsTheBarsBackButtonWhileTheBarShows) {
  AppBridge bridge;
  auto next = std::make_shared<UIViewController>();
  nav()->pushViewController(next, false);
  loop_.settle();
  ScreenObject* screen = bridge.screens()->top();
  ASSERT_TRUE(screen);
  EXPECT_TRUE(screen->canGoBack());
  EXPECT_FALSE(bridge.screens()->at(0)->canGoBack()) << "the root has nowhere to go";
  nav()->setNavigationBarHidden(true, false);
  EXPECT_FALSE(bridge.back()) << "a hidden bar has no back button";
  EXPECT_EQ(nav()->viewControllers().size(), 2u);
  nav()->setNavigationBarHidden(false, false);
  EXPECT_TRUE(bridge.back());
  loop_.settle();
  EXPECT_EQ(nav()->viewControllers().size(), 1u);
  EXPECT_FALSE(bridge.back()) << "the root is never popped";
}

TEST_F(AppBridgeTest, TheStatusOverlayFollowsTheLibrary) {
  AppBridge bridge;
  EXPECT_FALSE(bridge.hudVisible());
  SVProgressHUD::showSuccessWithStatus("Mark as Favourite....");
  loop_.settle();
  EXPECT_TRUE(bridge.hudVisible());
  EXPECT_EQ(bridge.hudKind(), "success");
  EXPECT_EQ(bridge.hudStatus(), "Mark as Favourite....");
}

TEST_F(AppBridgeTest, TheShareSheetShowsThePlatformsActivitiesAndAClickStartsOne) {
  struct OneActivity : ShareActivities {
    int performed = 0;
    std::vector<std::string> names(const std::vector<ShareItem>&) const override { return {"Copy"}; }
    bool perform(const std::string&, const std::vector<ShareItem>&, const std::optional<std::string>&) override {
      return ++performed;
    }
  };
  AppBridge bridge;
  auto present = [&] {
    root->presentViewController(std::make_shared<UIActivityViewController>(std::vector<ShareItem>{std::string("x")}),
                                false, nullptr);
    loop_.settle();
  };
  present();
  EXPECT_TRUE(bridge.sheetVisible() && bridge.sheetActivities().isEmpty()) << "the sim's sheet only lists";
  root->dismissViewControllerAnimated(false, nullptr);
  auto activities = std::make_shared<OneActivity>();
  ShareActivities::install(activities);
  present();
  EXPECT_EQ(bridge.sheetActivities(), QStringList{QStringLiteral("Copy")});
  EXPECT_FALSE(bridge.chooseActivity(QStringLiteral("Email")));
  EXPECT_TRUE(bridge.chooseActivity(QStringLiteral("Copy")));
  loop_.settle();
  EXPECT_EQ(activities->performed, 1);
  EXPECT_FALSE(bridge.sheetVisible());
}

TEST_F(AppBridgeTest, QmlSeesTheBridgeMainMade) {
  AppBridge bridge;
  bridge.setWindowTitle(QStringLiteral("Nimbrel — simulated"));
  bridge.setRealPlayback(true);
  QQmlEngine engine;
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  QQmlComponent component(&engine);
  component.setData("import QtQml\nimport Nimbrel.Shell\n"
                    "QtObject { property string title: AppBridge.windowTitle; property bool real: AppBridge.realPlayback }",
                    QUrl());
  std::unique_ptr<QObject> object(component.create());
  ASSERT_TRUE(object) << component.errorString().toStdString();
  EXPECT_EQ(object->property("title").toString(), QStringLiteral("Nimbrel — simulated"));
  EXPECT_TRUE(object->property("real").toBool()) << "a second bridge would hold the defaults";
  EXPECT_EQ(AppBridge::instance(), &bridge);
}

// A screen whose status bar follows a flag, as the viewers' does.
class StatusScreen : public UIViewController {
 public:
  bool hide = false;
  bool prefersStatusBarHidden() const override { return hide; }
};

TEST_F(AppBridgeTest, AScreensChromeFollowsTheStackItsItemsAndItsStatusBar) {
  auto nav = this->nav();
  nav->setNavigationBarHidden(true, false);
  AppBridge bridge;
  auto viewer = std::make_shared<StatusScreen>();
  nav->pushViewController(viewer, true);
  loop_.settle();
  ScreenObject* screen = bridge.screens()->top();
  ASSERT_TRUE(screen);
  EXPECT_TRUE(screen->navigationBarHidden());
  EXPECT_FALSE(screen->statusBarHidden());
  EXPECT_FALSE(screen->rightBarButton());
  ASSERT_TRUE(screen->rootView());
  EXPECT_FALSE(screen->goBack()) << "no bar, no back button";

  QSignalSpy spy(screen, &ScreenObject::chromeChanged);
  nav->setNavigationBarHidden(false, true);
  EXPECT_GE(spy.count(), 1);
  EXPECT_FALSE(screen->navigationBarHidden());
  viewer->hide = true;
  viewer->setNeedsStatusBarAppearanceUpdate();
  EXPECT_TRUE(screen->statusBarHidden());
  auto label = std::make_shared<UILabel>();
  viewer->navigationItem().setTitleView(label);
  ASSERT_TRUE(screen->titleView());
  EXPECT_EQ(screen->titleView()->object(), label);
  std::shared_ptr<NSObject> sender;
  viewer->registerAction("pause:", [&](const std::shared_ptr<NSObject>& s) { sender = s; });
  auto pause = std::make_shared<UIBarButtonItem>(UIBarButtonItem::pause, viewer, "pause:");
  viewer->navigationItem().setRightBarButtonItem(pause, true);
  ASSERT_TRUE(screen->rightBarButton());
  EXPECT_EQ(screen->rightBarButton()->type(), "UIBarButtonItem");
  EXPECT_EQ(screen->rightBarButton()->image(), "image://nimbrel/asset/pause");
  EXPECT_TRUE(screen->rightBarButton()->press());
  EXPECT_EQ(sender, pause);
  viewer->navigationItem().setRightBarButtonItem(std::make_shared<UIBarButtonItem>(UIBarButtonItem::play, viewer, "pause:"), true);
  EXPECT_EQ(screen->rightBarButton()->image(), "image://nimbrel/asset/play");
  viewer->navigationItem().setRightBarButtonItem(nullptr, true);
  EXPECT_FALSE(screen->rightBarButton());
  viewer->view()->setBackgroundColor(UIColor::blackColor());
  EXPECT_EQ(screen->rootView()->state()["background"].value<QColor>(), QColor(Qt::black));

  EXPECT_TRUE(screen->goBack());
  loop_.settle();
  EXPECT_EQ(nav->viewControllers().size(), 1u);
}

}  // namespace
}  // namespace nimbrel::shell
