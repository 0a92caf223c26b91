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
