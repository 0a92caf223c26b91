#pragma once

#include <memory>

#include "app/ads/AppLovinNativeAdManual.h"
#include "app/ads/GoogleNativeAds.h"
#include "platform/libs/MGCollapsingHeaderView.h"
#include "platform/photos/PHImageManager.h"
#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UICollectionView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

class RecentFilesCollectionViewCell;
enum class MediaTypes;

// The root of the user's work: the storage line, the strip of recent items, the buttons to the
// browse screens and the two modal screens, a native ad. Everything is rebuilt at each appearance.
// Its strip's delegate is also the scroll delegate of the main scroll view.
class HomeViewController : public UIViewController,
                           public MGCollapsingHeaderDelegate,
                           public UICollectionViewDataSource,
                           public UICollectionViewDelegate {
 public:
  static inline constexpr const char* kTypeName = "HomeViewController";
  const char* className() const override { return kTypeName; }
  HomeViewController();

  std::shared_ptr<UICollectionView> recentFileCollectionView;
  std::shared_ptr<PHImageManager> imageManager = PHCachingImageManager::defaultManager();
  std::shared_ptr<UILabel> lblInternalStorage;
  std::shared_ptr<UIScrollView> mainScrollView;
  std::shared_ptr<NSLayoutConstraint> heightOfMainStackView;
  std::shared_ptr<NSLayoutConstraint> heightOfRecentFilesView;
  std::shared_ptr<UIView> nativeAdview;
  std::shared_ptr<UIView> recentFilesView;
  std::shared_ptr<NSLayoutConstraint> heightOfNativrAdView;
  std::shared_ptr<UIButton> btnMenu;
  std::shared_ptr<UIView> expandableTitleView;
  std::shared_ptr<UIView> TitleView;
  std::shared_ptr<NSLayoutConstraint> heightOfHeaderViewConstant;
  std::shared_ptr<MGCollapsingHeaderView> HEADERView;
  bool isShowNativeAds = false;
  bool isFirstTime = false;
  std::shared_ptr<AppLovinNativeAdManual> appLovinNativeAd = std::make_shared<AppLovinNativeAdManual>();
  // Built with the screen, its four layouts from their nibs; nothing calls it further.
  std::shared_ptr<GoogleNativeAds> googleNativeAds = std::make_shared<GoogleNativeAds>();

  void viewDidLoad() override { UIViewController::viewDidLoad(); }
  // Neither calls the base class; all the work is here, at every appearance.
  void viewWillAppear(bool animated) override;
  void viewDidAppear(bool animated) override {}

  // Strip.
  long collectionViewNumberOfItemsInSection(UICollectionView& collectionView, long section) override;
  std::shared_ptr<UICollectionViewCell> collectionViewCellForItemAtIndexPath(UICollectionView& collectionView,
                                                                             const NSIndexPath& indexPath) override;
  CGSize collectionViewLayoutSizeForItemAtIndexPath(UICollectionView& collectionView,
                                                    const NSIndexPath& indexPath) override;
  void collectionViewDidSelectItemAtIndexPath(UICollectionView& collectionView, const NSIndexPath& indexPath) override;

  // Scroll and header.
  void scrollViewDidScroll(UIScrollView& scrollView) override;
  void headerDidCollapseToOffset(double) override {}
  void headerDidFinishCollapsing() override;
  void headerDidExpandToOffset(double) override {}
  void headerDidFinishExpanding() override;

  // Actions.
  void onStorageAnalysisBtn(const std::shared_ptr<NSObject>& sender);
  void onFavBtn(const std::shared_ptr<NSObject>& sender);
  void onDocumentBtn(const std::shared_ptr<NSObject>& sender);
  void onAudioBtn(const std::shared_ptr<NSObject>& sender);
  void onRecentBtn(const std::shared_ptr<NSObject>& sender);
  void onImagesBtn(const std::shared_ptr<NSObject>& sender);
  void onVideoBtn(const std::shared_ptr<NSObject>& sender);
  void onMenuBtn(const std::shared_ptr<NSObject>& sender);

 private:
  void setUpHeader();
  void showStorageLine();
  void showRecentStrip();
  void pushScene(const std::string& identifier);
  void openImages(MediaTypes type);
  void presentLater(const std::string& identifier);
  void clearRecentFiles();
  void requestThumbnail(RecentFilesCollectionViewCell& cell, const std::shared_ptr<PHAsset>& asset);
};

}  // namespace nimbrel
