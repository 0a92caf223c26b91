#include "platform/uikit/UIAlertController.h"

#include <gtest/gtest.h>

#include "LifeCycleJournal.h"

namespace {

using uikit_test::Lines;
using uikit_test::recording;

class UIAlertControllerTest : public uikit_test::ScreenTest {
 protected:
  std::shared_ptr<uikit_test::RecordingController> screen = recording("Screen", journal);
  std::shared_ptr<UIAlertController> alert;

  // Given an alert with two handlers that note where they run, presented on a screen
  void SetUp() override {
    showOnScreen(screen);
    alert = std::make_shared<UIAlertController>("Delete?", "It cannot be undone.",
                                                UIAlertControllerStyle::alert);
    for (const char* title : {"Cancel", "Delete"}) {
      alert->addAction({title, UIAlertActionStyle::defaultStyle, [this, weakAlert = std::weak_ptr(alert)](const UIAlertAction& a) {
                          auto self = weakAlert.lock();
                          journal.note("handler " + a.title + (screen->presentedViewController()
                                                                   ? " while presented"
                                                                   : " after dismissal"));
                          journal.note(self->appearance() == UIViewController::Appearance::disappeared
                                           ? "alert gone"
                                           : "alert still on screen");
                        }});
    }
    screen->presentViewController(alert, true, nullptr);
    loop.runUntilIdle();
    journal.take();
  }
};

TEST_F(UIAlertControllerTest, OnlyAKnownTitlePressesAndTheAlertLeavesBeforeItsHandlerRuns) {
  EXPECT_EQ(screen->appearance(), UIViewController::Appearance::appeared) << "an alert leaves the presenter on screen";
  EXPECT_FALSE(alert->pressActionWithTitle("delete"));
  EXPECT_FALSE(alert->pressActionWithTitle(""));
  loop.runUntilIdle();
  EXPECT_TRUE(journal.take().empty());
  EXPECT_EQ(screen->presentedViewController(), alert);

  EXPECT_TRUE(alert->pressActionWithTitle("Delete"));

  EXPECT_TRUE(journal.take().empty()) << "the handler waits for the alert to leave";
  loop.runUntilIdle();
  EXPECT_EQ(journal.take(), (Lines{"handler Delete after dismissal", "alert gone"}))
      << "and the screen beneath makes no appearance calls";
  EXPECT_EQ(screen->presentedViewController(), nullptr);
}

}  // namespace
