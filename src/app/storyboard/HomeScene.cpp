#include "app/storyboard/HomeScene.h"

#include "app/core/HomeViewController.h"
#include "app/core/RecentFilesCollectionViewCell.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeHomeScene() {
  auto controller = std::make_shared<HomeViewController>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& home = static_cast<HomeViewController&>(vc);
    SceneBuilder scene(vc);
    auto root = scene.root();
    root->setBackgroundColor(UIColor::white(0.96));
    double w = UIScreen::mainScreen().bounds().width();
    double h = UIScreen::mainScreen().bounds().height();

    home.HEADERView = scene.outlet<MGCollapsingHeaderView>("HEADERView", root, CGRectMake(0, 0, w, 120));
    home.heightOfHeaderViewConstant = scene.constraint("heightOfHeaderViewConstant", 120);
    home.expandableTitleView = scene.outlet<UIView>("expandableTitleView", home.HEADERView, CGRectMake(0, 50, w, 70));
    home.TitleView = scene.outlet<UIView>("TitleView", home.HEADERView, CGRectMake(0, 0, w, 50));
    auto title = scene.outlet<UILabel>("lblTitle", home.expandableTitleView, CGRectMake(16, 10, w - 80, 44));
    title->setText(std::string("Nimbrel"));
    title->setFont(UIFont::boldSystemFontOfSize(32));
    home.btnMenu = scene.outlet<UIButton>("btnMenu", home.HEADERView, CGRectMake(w - 50, 5, 40, 40));
    home.btnMenu->setImage(UIImage::named("ic_menu"));
    scene.wire(home.btnMenu, "onMenuBtn:");

    home.mainScrollView = scene.outlet<UIScrollView>("mainScrollView", root, CGRectMake(0, 120, w, h - 120));
    home.heightOfMainStackView = scene.constraint("heightOfMainStackView", 640);
    home.lblInternalStorage = scene.outlet<UILabel>("lblInternalStorage", home.mainScrollView, CGRectMake(16, 8, w - 32, 24));
    home.recentFilesView = scene.outlet<UIView>("recentFilesView", home.mainScrollView, CGRectMake(0, 40, w, 150));
    auto recentTitle = scene.outlet<UILabel>("lblRecentFiles", home.recentFilesView, CGRectMake(16, 0, w - 32, 24));
    recentTitle->setText(std::string("Recent files"));
    home.recentFileCollectionView = scene.outlet<UICollectionView>("recentFileCollectionView", home.recentFilesView,
                                                                   CGRectMake(0, 24, w, 126));
    home.recentFileCollectionView->registerCellFactory([] { return RecentFilesCollectionViewCell::make(); },
                                                       "recentFilesCell");
    home.heightOfRecentFilesView = scene.constraint("heightOfRecentFilesView", 150);

    // The buttons to the browse screens and the two modal screens.
    struct Button {
      const char* name;
      const char* title;
      const char* icon;
      const char* selector;
    };
    const Button buttons[] = {
        {"btnImages", "Images", "home_images", "onImagesBtn:"},
        {"btnVideo", "Videos", "home_videos", "onVideoBtn:"},
        {"btnAudio", "Audio", "home_audio", "onAudioBtn:"},
        {"btnDocument", "Documents", "home_documents", "onDocumentBtn:"},
        {"btnRecent", "Recent", "home_recent", "onRecentBtn:"},
        {"btnFav", "Favourites", "home_favourites", "onFavBtn:"},
        {"btnStorageAnalysis", "Storage analysis", "home_storage", "onStorageAnalysisBtn:"},
    };
    double cell = (w - 48) / 3;
    int i = 0;
    for (const auto& b : buttons) {
      double x = 16 + (i % 3) * (cell + 8);
      double y = 200 + (i / 3) * (cell + 8);
      auto button = scene.outlet<UIButton>(b.name, home.mainScrollView, CGRectMake(x, y, cell, cell));
      button->setTitle(std::string(b.title));
      button->setImage(UIImage::named(b.icon));
      scene.wire(button, b.selector);
      ++i;
    }
    home.nativeAdview = scene.outlet<UIView>("nativeAdview", root, CGRectMake(0, h - 120, w, 120));
    home.nativeAdview->setHidden(true);
    home.heightOfNativrAdView = scene.constraint("heightOfNativrAdView", 120);
  });
  return controller;
}

}  // namespace nimbrel
