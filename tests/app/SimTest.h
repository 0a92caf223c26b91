#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "app/core/ApplicationMain.h"
#include "backends/sim/SimPlatform.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIGestureRecognizer.h"
#include "platform/uikit/UINavigationController.h"

namespace nimbrel::testing {

// A test on the simulated platform: a fresh process state, a temporary home and virtual time from
// the fixture given to `start`. Log lines are kept for the test to read.
class SimTest : public ::testing::Test {
 protected:
  void start(const std::string& fixtureJson = "{}") {
    auto fixture = sim::Fixture::parse(fixtureJson);
    ASSERT_TRUE(fixture.ok()) << fixture.error();
    platform = std::make_unique<sim::SimPlatform>(std::move(fixture).value());
    LogSink::install([this](std::string_view line) {
      std::lock_guard lock(logMutex);
      logLines.emplace_back(line);
    });
  }
  void TearDown() override {
    LogSink::install(nullptr);
    platform.reset();
  }

  // Starts the program on the fixture and lets the splash hand over to the home screen.
  void launchToHome(const std::string& fixtureJson = "{}") {
    start(fixtureJson);
    NimbrelApplicationMain();
    advance(6);
  }
  std::shared_ptr<UINavigationController> nav() {
    return std::dynamic_pointer_cast<UINavigationController>(
        UIApplication::sharedApplication().keyWindow()->rootViewController());
  }
  ManualRunLoop& loop() { return platform->runLoop(); }
  void settle() { loop().runUntilIdle(); }
  void advance(double seconds) { loop().advance(seconds); }
  NSUserDefaults& defaults() { return NSUserDefaults::standardUserDefaults(); }
  std::vector<std::string> takeLog() {
    std::lock_guard lock(logMutex);
    return std::exchange(logLines, {});
  }
  // A touch on a row of a browsing screen's collection as a person makes it: through the screen's
  // tap recogniser while it is attached and enabled, else as the collection's own selection.
  template <class Screen>
  void tapRow(Screen& screen, long row) {
    auto& cv = *screen.albumsCollectionView;
    cv.layoutSubviews();
    if (screen.tap && screen.tap->view() && screen.tap->isEnabled()) {
      screen.tap->recognize(UIGestureRecognizerState::ended, cv.centerOfItemAtIndexPath({0, row}));
    } else {
      cv.userTapItemAtIndexPath({0, row});
    }
    settle();
  }
  // A long press that begins and ends on a row.
  template <class Screen>
  void longPressRow(Screen& screen, long row) {
    screen.albumsCollectionView->layoutSubviews();
    auto point = screen.albumsCollectionView->centerOfItemAtIndexPath({0, row});
    screen.longPress->recognize(UIGestureRecognizerState::began, point);
    screen.longPress->recognize(UIGestureRecognizerState::ended, point);
    settle();
  }
  // An action as a control sends it, from the outlet named `sender` when one is given.
  void press(UIViewController& screen, const std::string& selector, const std::string& sender = "") {
    screen.performAction(selector, sender.empty() ? nullptr : screen.outlet(sender));
    settle();
  }
  // The screen a button of the top screen pushes, its collection laid out.
  template <class Screen>
  std::shared_ptr<Screen> pushedBy(const std::string& button) {
    press(*nav()->topViewController(), button);
    auto screen = std::dynamic_pointer_cast<Screen>(nav()->topViewController());
    EXPECT_TRUE(screen) << button;
    if (screen) screen->albumsCollectionView->layoutSubviews();
    return screen;
  }
  std::vector<std::string> openedURLs() {
    std::vector<std::string> out;
    for (const auto& url : UIApplication::sharedApplication().openedURLs()) out.push_back(url.absoluteString());
    return out;
  }
  // Assets and albums of the installed library by identifier, and the identifiers of a list.
  static std::shared_ptr<PHAsset> asset(const std::string& id) {
    return PHAsset::fetchAssetsWithLocalIdentifiers({id}, nullptr)[0];
  }
  static std::vector<std::shared_ptr<PHAsset>> assets(const std::vector<std::string>& ids) {
    return PHAsset::fetchAssetsWithLocalIdentifiers(ids, nullptr).objects();
  }
  static std::shared_ptr<PHAssetCollection> album(const std::string& id) {
    return PHAssetCollection::fetchAssetCollectionsWithLocalIdentifiers({id}, nullptr)[0];
  }
  template <class List>
  static std::vector<std::string> ids(const List& list) {
    std::vector<std::string> out;
    for (const auto& item : list) out.push_back(item->localIdentifier());
    return out;
  }
  // How many calls into the outside libraries begin with `prefix`.
  size_t calls(const std::string& prefix) {
    size_t n = 0;
    for (const auto& c : platform->sdkCalls()) n += c.rfind(prefix, 0) == 0;
    return n;
  }
  bool logged(const std::string& line) {
    std::lock_guard lock(logMutex);
    for (const auto& l : logLines) {
      if (l == line) return true;
    }
    return false;
  }

  std::unique_ptr<sim::SimPlatform> platform;
  std::mutex logMutex;
  std::vector<std::string> logLines;
};

}  // namespace nimbrel::testing
