#include "backends/desktop/index/DesktopPermissions.h"

#include <gtest/gtest.h>

#include "backends/desktop/DesktopTestSupport.h"
#include "platform/PlatformState.h"
#include "platform/uikit/UIAlertController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIStoryboard.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel::desktop {
namespace {

using namespace testing;
using Kind = PermissionAuthority::Kind;

class DesktopPermissionsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetPlatformState();
    UIStoryboard::setInitialScene("Main", [] { return std::make_shared<UIViewController>(); });
    UIApplication::sharedApplication().launch(nullptr, "Main");
    loop.runUntilIdle();
  }
  void TearDown() override { resetPlatformState(); }
  std::shared_ptr<UIAlertController> alert() {
    return std::dynamic_pointer_cast<UIAlertController>(
        UIApplication::sharedApplication().keyWindow()->rootViewController()->presentedViewController());
  }

  ManualRunLoop loop;
  TempFolder dir;
  std::string path = dir / "state/nimbrel/permissions.plist";
};

TEST_F(DesktopPermissionsTest, TheFirstRequestAsksAndTheAnswerIsKeptForTheNextRun) {
  auto authority = std::make_shared<DesktopPermissions>(path);
  EXPECT_EQ(authority->status(Kind::photos), 0);
  std::vector<int> answers;
  authority->request(Kind::photos, [&](int s) { answers.push_back(s); });
  authority->request(Kind::photos, [&](int s) { answers.push_back(s); });
  loop.runUntilIdle();
  auto shown = alert();
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->alertTitle(), std::optional<std::string>("\u201CNimbrel\u201D Would Like to Access Your Photos"));
  ASSERT_EQ(shown->actions().size(), 2u);
  EXPECT_EQ(shown->actions()[0].title, "Don't Allow");
  EXPECT_EQ(shown->actions()[1].title, "Allow");
  EXPECT_TRUE(answers.empty());
  shown->pressActionWithTitle("Allow");
  loop.runUntilIdle();
  EXPECT_EQ(answers, (std::vector<int>{3, 3})) << "one prompt answers every waiting request";
  EXPECT_FALSE(alert());

  auto nextRun = std::make_shared<DesktopPermissions>(path);
  EXPECT_EQ(nextRun->status(Kind::photos), 3);
  EXPECT_EQ(nextRun->status(Kind::music), 0);
  int later = -1;
  nextRun->request(Kind::photos, [&](int s) { later = s; });
  loop.runUntilIdle();
  EXPECT_EQ(later, 3);
  EXPECT_FALSE(alert()) << "asked once only";
}

TEST_F(DesktopPermissionsTest, DontAllowGivesEachKindsRefusal) {
  auto authority = std::make_shared<DesktopPermissions>(path);
  for (auto [kind, refusal] : {std::pair{Kind::music, 1}, std::pair{Kind::photos, 2}}) {
    int answer = -1;
    authority->request(kind, [&](int s) { answer = s; });
    loop.runUntilIdle();
    alert()->pressActionWithTitle("Don't Allow");
    loop.runUntilIdle();
    EXPECT_EQ(answer, refusal);
  }
  EXPECT_EQ(DesktopPermissions(path).status(Kind::music), 1);
}

TEST_F(DesktopPermissionsTest, TrackingIsRestrictedWithoutAPrompt) {
  // Even an answer kept by an older version does not bring the prompt or tracking back.
  ASSERT_TRUE(DesktopPermissions::setStatus(path, Kind::tracking, 3));
  auto authority = std::make_shared<DesktopPermissions>(path);
  EXPECT_EQ(authority->status(Kind::tracking), 1);
  std::vector<int> answers;
  authority->request(Kind::tracking, [&](int s) { answers.push_back(s); });
  loop.runUntilIdle();
  EXPECT_EQ(answers, std::vector<int>{1});
  EXPECT_FALSE(alert());
}

TEST_F(DesktopPermissionsTest, AKeptAnswerCanBeChangedOrForgotten) {
  ASSERT_TRUE(DesktopPermissions::setStatus(path, Kind::photos, 2));
  ASSERT_TRUE(DesktopPermissions::setStatus(path, Kind::music, 3));
  EXPECT_EQ(DesktopPermissions(path).status(Kind::photos), 2);
  ASSERT_TRUE(DesktopPermissions::setStatus(path, Kind::photos, std::nullopt));
  auto authority = std::make_shared<DesktopPermissions>(path);
  EXPECT_EQ(authority->status(Kind::photos), 0);
  EXPECT_EQ(authority->status(Kind::music), 3) << "the others stay";
  authority->request(Kind::photos, [](int) {});
  loop.runUntilIdle();
  EXPECT_TRUE(alert()) << "forgotten means asked again";
}

}  // namespace
}  // namespace nimbrel::desktop
