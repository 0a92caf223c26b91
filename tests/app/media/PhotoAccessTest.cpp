#include <gtest/gtest.h>

#include "app/SimTest.h"
#include "app/media/PhotoLibraryAccess.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIWindow.h"

namespace nimbrel {
namespace {

class PhotoAccessTest : public testing::SimTest {
 protected:
  // A screen on display, asking with the library's first-time answer `answer`.
  void startShowing(int answer) {
    start(R"({"permissions": {"photos": {"status": 0, "answer": )" + std::to_string(answer) + "}}}");
    screen = std::make_shared<UIViewController>();
    window = std::make_shared<UIWindow>(CGRectMake(0, 0, 390, 844));
    window->setRootViewController(screen);
    window->makeKeyAndVisible();
    settle();
  }
  void ask() {
    requestPhotoAccess(screen, [this] {
      EXPECT_TRUE(loop().isMainThread());
      ++authorizedRuns;
    });
  }
  // Ends this run of the platform so that a table can start the next one.
  void finish() {
    window.reset();
    screen.reset();
    authorizedRuns = 0;
    takeLog();
    TearDown();
  }
  std::shared_ptr<UIAlertController> alert() { return as<UIAlertController>(screen->presentedViewController()); }

  std::shared_ptr<UIViewController> screen;
  std::shared_ptr<UIWindow> window;
  int authorizedRuns = 0;
};

TEST_F(PhotoAccessTest, RefusedOrRestrictedAccessExplainsAndOffersTheSettings) {
  for (int answer : {1, 2}) {
    SCOPED_TRACE(answer);
    startShowing(answer);
    ask();
    settle();

    auto shown = alert();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->preferredStyle(), UIAlertControllerStyle::alert);
    EXPECT_EQ(shown->alertTitle(), "Can not access Photos!");
    EXPECT_EQ(shown->message(),
              "You have not given permission for access Photos. \nGoto settings and give permission to access Photos.");
    ASSERT_EQ(shown->actions().size(), 2u);
    EXPECT_EQ(shown->actions()[0].title, "Cancel");
    EXPECT_EQ(shown->actions()[0].style, UIAlertActionStyle::defaultStyle);
    EXPECT_FALSE(shown->actions()[0].handler);
    EXPECT_EQ(shown->actions()[1].title, "Setting");
    EXPECT_EQ(shown->actions()[1].style, UIAlertActionStyle::defaultStyle);
    EXPECT_EQ(authorizedRuns, 0);
    EXPECT_TRUE(logged("photo library authorization status " + std::to_string(answer)));
    finish();
  }
}

TEST_F(PhotoAccessTest, SettingOpensTheAppSettingsAndCancelOpensNothing) {
  for (const char* pressed : {"Setting", "Cancel"}) {
    SCOPED_TRACE(pressed);
    startShowing(2);
    ask();
    settle();
    ASSERT_NE(alert(), nullptr);
    EXPECT_TRUE(alert()->pressActionWithTitle(pressed));
    settle();
    EXPECT_EQ(alert(), nullptr) << "the alert went away";
    const auto& opened = UIApplication::sharedApplication().openedURLs();
    if (std::string(pressed) == "Setting") {
      ASSERT_EQ(opened.size(), 1u);
      EXPECT_EQ(opened[0].absoluteString(), "app-settings:");
    } else {
      EXPECT_TRUE(opened.empty());
    }
    finish();
  }
}

TEST_F(PhotoAccessTest, AuthorisedAccessRunsTheClosureOnceOnTheMainQueue) {
  startShowing(3);
  ask();
  // The platform answers on a background queue; the closure waits for the main queue.
  while (loop().pendingBackgroundCount() > 0) loop().runBackgroundTask(0);
  EXPECT_EQ(authorizedRuns, 0);
  loop().runMainUntilIdle();
  EXPECT_EQ(authorizedRuns, 1);
  EXPECT_EQ(alert(), nullptr);
  EXPECT_TRUE(logged("photo library authorization status 3"));
}

TEST_F(PhotoAccessTest, UndeterminedAndLimitedAccessDoNothing) {
  for (int answer : {0, 4}) {
    SCOPED_TRACE(answer);
    startShowing(answer);
    ask();
    settle();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(authorizedRuns, 0);
    EXPECT_TRUE(UIApplication::sharedApplication().openedURLs().empty());
    EXPECT_TRUE(logged("photo library authorization status " + std::to_string(answer)));
    finish();
  }
}

TEST_F(PhotoAccessTest, AScreenGoneBeforeTheAnswerShowsNoAlert) {
  startShowing(2);
  auto leaving = std::make_shared<UIViewController>();
  std::weak_ptr<UIViewController> watch = leaving;
  requestPhotoAccess(leaving, nullptr);
  leaving.reset();
  settle();
  EXPECT_TRUE(watch.expired()) << "the request does not keep the screen alive";
  EXPECT_EQ(alert(), nullptr);
}

}  // namespace
}  // namespace nimbrel
