#include "platform/uikit/UIApplication.h"

#include <gtest/gtest.h>

#include "platform/uikit/UIStoryboard.h"
#include "LifeCycleJournal.h"

namespace {

using uikit_test::Journal;
using uikit_test::Lines;
using uikit_test::recording;

const char* const kStateNames[] = {"active", "inactive", "background"};

class RecordingDelegate : public UIApplicationDelegate {
 public:
  explicit RecordingDelegate(Journal& journal) : journal_(journal) {}
  bool applicationDidFinishLaunchingWithOptions(UIApplication& app) override {
    auto root = app.keyWindow() ? app.keyWindow()->rootViewController() : nullptr;
    note("didFinishLaunching", app);
    journal_.note(std::string("root ") + (root ? "set" : "missing") +
                  (root && root->isViewLoaded() ? ", loaded" : ", not loaded") +
                  (app.keyWindow() && app.keyWindow()->isKeyWindow() ? ", window visible"
                                                                      : ", window hidden"));
    return true;
  }
  void applicationDidBecomeActive(UIApplication& app) override { note("didBecomeActive", app); }
  void applicationWillResignActive(UIApplication& app) override { note("willResignActive", app); }
  void applicationDidEnterBackground(UIApplication& app) override { note("didEnterBackground", app); }
  void applicationWillEnterForeground(UIApplication& app) override {
    note("willEnterForeground", app);
  }

 private:
  void note(const std::string& call, UIApplication& app) {
    journal_.note(call + " (" + kStateNames[static_cast<int>(app.applicationState())] + ")");
  }
  Journal& journal_;
};

class UIApplicationTest : public uikit_test::ScreenTest {
 protected:
  UIApplication& app = UIApplication::sharedApplication();

  void SetUp() override {
    UIStoryboard::setInitialScene("Main", [this] { return recording("Root", journal); });
  }
  void launch() { app.launch(std::make_shared<RecordingDelegate>(journal), "Main"); }
};

TEST_F(UIApplicationTest, LaunchFollowsThePlatformsOrder) {
  launch();

  EXPECT_EQ(journal.take(), (Lines{"didFinishLaunching (inactive)", "root set, not loaded, window hidden",
                                   "Root.viewDidLoad", "Root.viewWillAppear", "didBecomeActive (active)"}));
  EXPECT_EQ(settle(), (Lines{"Root.viewDidAppear", "next turn"}));
  ASSERT_NE(app.keyWindow(), nullptr);
  EXPECT_TRUE(app.keyWindow()->isKeyWindow());
  EXPECT_EQ(app.windows(), (std::vector<std::shared_ptr<UIWindow>>{app.keyWindow()}));
  EXPECT_EQ(app.applicationState(), UIApplicationState::active);
}

TEST_F(UIApplicationTest, BackgroundAndForegroundMovesCallTheDelegateOncePerMove) {
  launch();
  settle();
  struct Step {
    const char* name;
    bool toBackground;
    Lines calls;
    UIApplicationState after;
  };
  const Step steps[] = {
      {"to background", true,
       {"willResignActive (active)", "didEnterBackground (background)"}, UIApplicationState::background},
      {"to background again", true, {}, UIApplicationState::background},
      {"back to the front", false,
       {"willEnterForeground (background)", "didBecomeActive (active)"}, UIApplicationState::active},
      {"to the front again", false, {}, UIApplicationState::active},
      {"to background a second time", true,
       {"willResignActive (active)", "didEnterBackground (background)"}, UIApplicationState::background},
  };
  for (const auto& step : steps) {
    if (step.toBackground) {
      app.enterBackground();
    } else {
      app.becomeActive();
    }
    EXPECT_EQ(journal.take(), step.calls) << step.name;
    EXPECT_EQ(app.applicationState(), step.after) << step.name;
  }
}

TEST_F(UIApplicationTest, OpenURLRecordsTheURLAndAnswersOneTurnLaterAndOnlyURLsWithASchemeCanOpen) {
  std::vector<URL> asked;
  app.setURLOpener([&](const URL& url) {
    asked.push_back(url);
    return url.scheme() == "https";
  });
  std::vector<bool> answers;
  auto web = *URL::withString("https://example.com/help");
  auto mail = *URL::withString("mailto:someone@example.com");

  app.openURL(web, {}, [&](bool ok) { answers.push_back(ok); });
  app.openURL(mail, {}, [&](bool ok) { answers.push_back(ok); });
  app.openURL(web, {}, nullptr);

  EXPECT_EQ(app.openedURLs(), (std::vector<URL>{web, mail, web}));
  EXPECT_EQ(asked.size(), 3u);
  EXPECT_TRUE(answers.empty());
  loop.runUntilIdle();
  EXPECT_EQ(answers, (std::vector<bool>{true, false}));
  EXPECT_TRUE(app.canOpenURL(*URL::withString("https://example.com")));
  EXPECT_FALSE(app.canOpenURL(*URL::withString("relative/path")));
}

TEST_F(UIApplicationTest, LaunchingWithoutAnInitialScreenEndsTheProcess) {
  EXPECT_DEATH(app.launch(nullptr, "Missing"), "has no initial screen");
}

}  // namespace
