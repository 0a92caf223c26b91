#include "platform/ads/ALSdk.h"

#include "platform/ads/AppLovinNetwork.h"

ALSdk& ALSdk::shared() {
  static ALSdk sdk;
  return sdk;
}

void ALSdk::setMediationProvider(std::string provider) {
  AppLovinNetwork::current()->record("ALSdk.setMediationProvider " + provider);
  provider_ = std::move(provider);
}

void ALSdk::initializeSdkWithCompletionHandler(std::function<void()> completion) {
  AppLovinNetwork::current()->record("ALSdk.initializeSdk");
  AppLovinNetwork::current()->initialize([this, completion = std::move(completion)] {
    initialized_ = true;
    if (completion) completion();
  });
}

void ALSdk::reset() {
  provider_.clear();
  initialized_ = false;
}
