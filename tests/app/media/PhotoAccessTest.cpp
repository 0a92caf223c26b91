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

// Refused (1) and restricted (2) explain and offer the settings; undetermined (0) and limited (4)
// do nothing. Each alert is closed by one of its two buttons.
TEST_F(PhotoAccessTest, EveryAnswerButAuthorisedIsLoggedAndOnlyARefusalExplains) {
  const std::tuple<int, const char*, std::vector<std::string>> rows[] = {
      {1, "Setting", {"app-settings:"}}, {2, "Cancel", {}}, {0, nullptr, {}}, {4, nullptr, {}}};
  for (const auto& [answer, pressed, opens] : rows) {
    SCOPED_TRACE(answer);
    startShowing(answer);
    ask();
    settle();
    EXPECT_TRUE(logged("photo library authorization status " + std::to_string(answer)));
    EXPECT_EQ(authorizedRuns, 0);
    auto shown = alert();
    ASSERT_EQ(shown != nullptr, pressed != nullptr);
    if (shown) {
      EXPECT_EQ(shown->preferredStyle(), UIAlertControllerStyle::alert);
      EXPECT_EQ(shown->alertTitle(), "Can not access Photos!");
      EXPECT_EQ(shown->message(),
                "You have not given permission for access Photos. \nGoto settings and give permission to access Photos.");
      ASSERT_EQ(shown->actions().size(), 2u);
      EXPECT_EQ(shown->actions()[0].title, "Cancel");
      EXPECT_EQ(shown->actions()[1].title, "Setting");
      EXPECT_TRUE(shown->pressActionWithTitle(pressed));
      settle();
      EXPECT_EQ(alert(), nullptr);
    }
    EXPECT_EQ(openedURLs(), opens);
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
