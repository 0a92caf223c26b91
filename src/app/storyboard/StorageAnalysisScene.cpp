#include "app/storyboard/StorageAnalysisScene.h"

#include "app/core/SettingVC.h"
#include "app/storage/StorageAnalysisVC.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

namespace {

// The header both modal screens share: a back button, a title, a menu button.
template <class Screen>
void buildHeader(Screen& screen, SceneBuilder& scene, const std::string& title, double w) {
  auto root = scene.root();
  screen.HEADERView = scene.outlet<MGCollapsingHeaderView>("HEADERView", root, CGRectMake(0, 0, w, 110));
  screen.heightOfHeaderViewConstant = scene.constraint("heightOfHeaderViewConstant", 110);
  auto back = scene.outlet<UIButton>("btnBack", screen.HEADERView, CGRectMake(8, 4, 40, 40));
  back->setImage(UIImage::named("ic_back"));
  scene.wire(back, "onBackBtn:");
  screen.TitleView = scene.outlet<UIView>("TitleView", screen.HEADERView, CGRectMake(56, 4, w - 112, 40));
  screen.TitleView->setHidden(true);
  auto small = scene.template outlet<UILabel>("lblSmallTitle", screen.TitleView, CGRectMake(0, 10, w - 112, 20));
  small->setText(title);
  screen.expandableTitleView = scene.outlet<UIView>("expandableTitleView", screen.HEADERView, CGRectMake(0, 50, w, 60));
  auto big = scene.template outlet<UILabel>("lblTitle", screen.expandableTitleView, CGRectMake(16, 6, w - 32, 44));
  big->setText(title);
  big->setFont(UIFont::boldSystemFontOfSize(32));
  screen.btnMenu = scene.outlet<UIButton>("btnMenu", screen.HEADERView, CGRectMake(w - 48, 4, 40, 40));
  screen.btnMenu->setImage(UIImage::named("ic_menu"));
}

}  // namespace

std::shared_ptr<UIViewController> makeStorageAnalysisScene() {
  auto controller = std::make_shared<StorageAnalysisVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& screen = static_cast<StorageAnalysisVC&>(vc);
    SceneBuilder scene(vc);
    auto root = scene.root();
    root->setBackgroundColor(UIColor::white(0.97));
    double w = UIScreen::mainScreen().bounds().width();
    double h = UIScreen::mainScreen().bounds().height();
    buildHeader(screen, scene, "Storage analysis", w);
    scene.wire(screen.btnMenu, "onMenuBtn:");
    screen.mainScrollView = scene.outlet<UIScrollView>("mainScrollView", root, CGRectMake(0, 110, w, h - 230));
    auto content = screen.mainScrollView;
    screen.lblInternalStorage = scene.outlet<UILabel>("lblInternalStorage", content, CGRectMake(16, 8, w - 32, 22));
    double ring = std::min(w - 96, 280.0);
    screen.pieChartView = scene.outlet<DYPieChartView>("pieChartView", content, CGRectMake((w - ring) / 2, 40, ring, ring));
    screen.valueLabel = scene.outlet<UILabel>("valueLabel", screen.pieChartView, CGRectMake(0, ring / 2 - 30, ring, 60));
    screen.valueLabel->setNumberOfLines(2);
    screen.valueLabel->setTextAlignment(NSTextAlignment::center);
    screen.valueLabel->setFont(UIFont::boldSystemFontOfSize(24));
    struct Row {
      const char* name;
      const char* caption;
      std::shared_ptr<UILabel> StorageAnalysisVC::*label;
    };
    const Row rows[] = {{"lblVideo", "Video", &StorageAnalysisVC::lblVideo},
                        {"lblImages", "Images", &StorageAnalysisVC::lblImages},
                        {"lblAudio", "Audio", &StorageAnalysisVC::lblAudio},
                        {"lblOther", "Other", &StorageAnalysisVC::lblOther},
                        {"lblFreeSpace", "Free", &StorageAnalysisVC::lblFreeSpace}};
    double y = 56 + ring;
    for (const auto& row : rows) {
      auto caption = scene.outlet<UILabel>(std::string(row.name) + "Caption", content, CGRectMake(40, y, 120, 24));
      caption->setText(std::string(row.caption));
      screen.*row.label = scene.outlet<UILabel>(row.name, content, CGRectMake(w - 176, y, 160, 24));
      (screen.*row.label)->setText(std::string("--"));
      (screen.*row.label)->setTextAlignment(NSTextAlignment::right);
      y += 36;
    }
    screen.nativeAdview = scene.outlet<UIView>("nativeAdview", root, CGRectMake(0, h - 120, w, 120));
    screen.nativeAdview->setHidden(true);
    screen.heightOfNativrAdView = scene.constraint("heightOfNativrAdView", 120);
  });
  return controller;
}

std::shared_ptr<UIViewController> makeSettingScene() {
  auto controller = std::make_shared<SettingVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& screen = static_cast<SettingVC&>(vc);
    SceneBuilder scene(vc);
    auto root = scene.root();
    root->setBackgroundColor(UIColor::white(0.97));
    double w = UIScreen::mainScreen().bounds().width();
    double h = UIScreen::mainScreen().bounds().height();
    buildHeader(screen, scene, "Settings", w);
    screen.mainScrollView = scene.outlet<UIScrollView>("mainScrollView", root, CGRectMake(0, 110, w, h - 230));
    screen.lblInternalStorage = scene.outlet<UILabel>("lblInternalStorage", screen.mainScrollView, CGRectMake(16, 8, w - 32, 22));
    screen.lblInternalStorage->setHidden(true);
    struct Row {
      const char* name;
      const char* title;
      const char* icon;
      const char* selector;
    };
    const Row rows[] = {{"btnPrivacyPolicy", "Privacy policy", "ic_privacy", "onPrivacyPolicyBtn:"},
                        {"btnTerms", "Terms of use", "ic_terms", "onClickTermsofUs:"},
                        {"btnShareUs", "Share the app", "ic_share", "onShareUsBtn:"},
                        {"btnRateUs", "Rate us", "ic_rate", "onRateUsBtn:"}};
    double y = 40;
    for (const auto& row : rows) {
      auto button = scene.outlet<UIButton>(row.name, screen.mainScrollView, CGRectMake(16, y, w - 32, 56));
      button->setTitle(std::string(row.title));
      button->setImage(UIImage::named(row.icon));
      scene.wire(button, row.selector);
      y += 64;
    }
    screen.nativeAdview = scene.outlet<UIView>("nativeAdview", root, CGRectMake(0, h - 120, w, 120));
    screen.nativeAdview->setHidden(true);
    screen.heightOfNativrAdView = scene.constraint("heightOfNativrAdView", 120);
  });
  return controller;
}

}  // namespace nimbrel
