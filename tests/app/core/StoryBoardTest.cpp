#include "app/core/StoryBoard.h"

#include <gtest/gtest.h>

#include "app/VC/UIViewControllerExtension.h"
#include "app/SimTest.h"
#include "app/core/HomeViewController.h"
#include "app/core/SplashVC.h"
#include "app/storyboard/MainStoryboard.h"
#include "platform/uikit/UIStoryboard.h"

namespace nimbrel {
namespace {

class StoryBoardTest : public testing::SimTest {
 protected:
  void SetUp() override {
    start();
    registerMainStoryboard();
  }
};

TEST_F(StoryBoardTest, ScreensAreFoundUnderTheirTypeNameWithFreshObjectsEachTime) {
  auto a = instantiate<HomeViewController>(AppStoryboard::Main);
  auto b = instantiate<HomeViewController>(AppStoryboard::Main);
  ASSERT_TRUE(a && b);
  EXPECT_NE(a, b);
  EXPECT_EQ(a->storyboardIdentifier(), "HomeViewController");
  EXPECT_FALSE(a->isViewLoaded()) << "the scene loads with the view, on first need";
  a->view();
  EXPECT_TRUE(a->lblInternalStorage);
  EXPECT_EQ(a->outlet("lblInternalStorage"), a->lblInternalStorage);
}

using StoryBoardDeathTest = StoryBoardTest;

TEST_F(StoryBoardDeathTest, AMissingSceneOrOneOfAnotherClassEndsTheProcessNamingTheCaller) {
  UIStoryboard::unregisterAll();
  EXPECT_DEATH(instantiate<SplashVC>(AppStoryboard::Main),
               "Fatal error: ViewController with identifier SplashVC, not found in Main Storyboard.\n"
               "File : VC/UIViewController \\+ Extension \n"
               "Line Number : 20 \n"
               "Function : instantiate\\(fromAppStoryboard:\\): file Nimbrel/StoryBoard, line 28");
  UIStoryboard::registerScene("Main", "SplashVC", [] { return std::make_shared<HomeViewController>(); });
  EXPECT_DEATH(viewController<SplashVC>(AppStoryboard::Main, "caller()", 7, "Here"),
               "with identifier SplashVC, not found in Main Storyboard.\nFile : Here \nLine Number : 7 \nFunction : caller\\(\\)");
}

}  // namespace
}  // namespace nimbrel
