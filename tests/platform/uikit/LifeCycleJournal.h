#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/ManualRunLoop.h"
#include "platform/uikit/UIViewController.h"
#include "platform/uikit/UIWindow.h"

namespace uikit_test {

// The life-cycle calls controllers receive, as "<name>.<call>" lines in the order they came.
struct Journal {
  std::vector<std::string> lines;
  void note(std::string line) { lines.push_back(std::move(line)); }
  std::vector<std::string> take() { return std::exchange(lines, {}); }  // what came since
};

class RecordingController : public UIViewController {
 public:
  RecordingController(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}
  const std::string& name() const { return name_; }

  void viewDidLoad() override { journal_.note(name_ + ".viewDidLoad"); }
  void viewWillAppear(bool) override { journal_.note(name_ + ".viewWillAppear"); }
  void viewDidAppear(bool) override { journal_.note(name_ + ".viewDidAppear"); }
  void viewWillDisappear(bool) override { journal_.note(name_ + ".viewWillDisappear"); }
  void viewDidDisappear(bool) override { journal_.note(name_ + ".viewDidDisappear"); }

 private:
  std::string name_;
  Journal& journal_;
};

inline std::shared_ptr<RecordingController> recording(std::string name, Journal& journal) {
  return std::make_shared<RecordingController>(std::move(name), journal);
}

using Lines = std::vector<std::string>;

// Screens shown in a key window, with the loop that drives their transitions.
class ScreenTest : public ::testing::Test {
 public:
  ManualRunLoop loop;
  Journal journal;
  std::shared_ptr<UIWindow> window;

  // Given `root` as the root of a new key window, settled on screen.
  void showOnScreen(const std::shared_ptr<UIViewController>& root) {
    window = std::make_shared<UIWindow>(CGRectMake(0, 0, 390, 844));
    window->setRootViewController(root);
    window->makeKeyAndVisible();
    loop.runUntilIdle();
    journal.take();
  }

  // Runs the work posted so far, then a marker: what a transition does after it came a turn late.
  Lines settle() {
    DispatchQueue::main().async([this] { journal.note("next turn"); });
    loop.runUntilIdle();
    return journal.take();
  }
};

}  // namespace uikit_test
