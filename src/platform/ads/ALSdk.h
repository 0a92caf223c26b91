#pragma once

#include <functional>
#include <string>

// The AppLovin SDK's shared object.
class ALSdk {
 public:
  static ALSdk& shared();
  void setMediationProvider(std::string provider);
  const std::string& mediationProvider() const { return provider_; }
  void initializeSdkWithCompletionHandler(std::function<void()> completion);
  bool isInitialized() const { return initialized_; }
  void reset();

 private:
  std::string provider_;
  bool initialized_ = false;
};
