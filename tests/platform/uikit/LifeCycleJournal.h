#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/uikit/UIViewController.h"

namespace uikit_test {

// The life-cycle calls controllers receive, as "<name>.<call>" lines in the order they came.
class Journal {
 public:
  void note(std::string line) { lines_.push_back(std::move(line)); }
  // What was noted since the last take.
  std::vector<std::string> take() { return std::exchange(lines_, {}); }
  const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
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

}  // namespace uikit_test
