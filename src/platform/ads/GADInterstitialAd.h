#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/NSObject.h"

class GADInterstitialAd;
class UIViewController;

struct GADRequest {};

struct GADError {
  int code = 1;
  std::string localizedDescription = "Request Error: No ad to show.";
};

class GADFullScreenContentDelegate {
 public:
  virtual ~GADFullScreenContentDelegate() = default;
  virtual void adDidFailToPresentFullScreenContentWithError(GADInterstitialAd& ad, const GADError& error) {}
  virtual void adWillPresentFullScreenContent(GADInterstitialAd& ad) {}
  virtual void adWillDismissFullScreenContent(GADInterstitialAd& ad) {}
  virtual void adDidDismissFullScreenContent(GADInterstitialAd& ad) {}
};

class GADInterstitialAd : public NSObject {
 public:
  using Handler = std::function<void(std::shared_ptr<GADInterstitialAd>, std::optional<GADError>)>;
  static void loadWithAdUnitID(const std::string& adUnitID, const GADRequest& request, Handler handler);

  explicit GADInterstitialAd(std::string adUnitID) : adUnitID_(std::move(adUnitID)) {}
  const std::string& adUnitID() const { return adUnitID_; }
  void setFullScreenContentDelegate(std::weak_ptr<GADFullScreenContentDelegate> d) {
    delegate_ = std::move(d);
  }
  std::shared_ptr<GADFullScreenContentDelegate> fullScreenContentDelegate() const {
    return delegate_.lock();
  }
  void presentFromRootViewController(const std::shared_ptr<UIViewController>& root);

 private:
  std::string adUnitID_;
  std::weak_ptr<GADFullScreenContentDelegate> delegate_;
  bool presented_ = false;
};
