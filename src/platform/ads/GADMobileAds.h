#pragma once

#include <functional>

struct GADInitializationStatus {};

class GADMobileAds {
 public:
  static GADMobileAds& sharedInstance();
  void startWithCompletionHandler(std::function<void(const GADInitializationStatus&)> handler);
  bool isStarted() const { return started_; }
  void reset() { started_ = false; }

 private:
  bool started_ = false;
};
