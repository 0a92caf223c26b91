#include "app/storyboard/AudioScene.h"

#include "app/audio/AudioVC.h"
#include "app/audio/MusicPlayerVC.h"
#include "app/storyboard/BrowseScene.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeAudioScene() {
  auto controller = std::make_shared<AudioVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    BrowseSceneTexts texts{"Your library", "Audio", "Audio"};
    texts.hasDelete = false;
    texts.hasFavouriteImage = false;
    buildBrowseScene(static_cast<AudioVC&>(vc), texts);
  });
  return controller;
}

std::shared_ptr<UIViewController> makeMusicPlayerScene() {
  auto controller = std::make_shared<MusicPlayerVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& screen = static_cast<MusicPlayerVC&>(vc);
    SceneBuilder scene(screen);
    auto root = scene.root();
    root->setBackgroundColor(UIColor::blackColor());
    const double w = UIScreen::mainScreen().bounds().width();
    const double h = UIScreen::mainScreen().bounds().height();
    screen.ivBg = scene.outlet<UIImageView>("ivBg", root, CGRectMake(0, 0, w, h));
    auto close = scene.outlet<UIButton>("btnClose", root, CGRectMake(12, 44, 40, 40));
    close->setImage(UIImage::named("ic_close"));
    scene.wire(close, "btnClose:");
    const double banner = std::min(w, h) * 0.62;
    const double top = h * 0.16;
    screen.ivSongBanner = scene.outlet<UIImageView>("ivSongBanner", root, CGRectMake((w - banner) / 2, top, banner, banner));
    double y = top + banner + 32;
    screen.lblSongTitle = scene.outlet<UILabel>("lblSongTitle", root, CGRectMake(24, y, w - 48, 30));
    screen.lblSongTitle->setFont(UIFont::boldSystemFontOfSize(22));
    screen.lblSongTitle->setTextColor(UIColor::whiteColor());
    screen.lblSongTitle->setTextAlignment(NSTextAlignment::center);
    screen.lblArtist = scene.outlet<UILabel>("lblArtist", root, CGRectMake(24, y + 34, w - 48, 22));
    screen.lblArtist->setTextColor(UIColor::white(0.85));
    screen.lblArtist->setTextAlignment(NSTextAlignment::center);
    y += 76;
    screen.sliderOutlet = scene.outlet<UISlider>("sliderOutlet", root, CGRectMake(24, y, w - 48, 30));
    scene.wire(screen.sliderOutlet, "sliderValueChange:", UIControlEvents::valueChanged);
    screen.lblTime = scene.outlet<UILabel>("lblTime", root, CGRectMake(24, y + 32, 100, 18));
    screen.lblTime->setText(std::string("00:00"));
    screen.lblTime->setTextColor(UIColor::whiteColor());
    screen.lblTotalTime = scene.outlet<UILabel>("lblTotalTime", root, CGRectMake(w - 124, y + 32, 100, 18));
    screen.lblTotalTime->setText(std::string("00:00"));
    screen.lblTotalTime->setTextColor(UIColor::whiteColor());
    screen.lblTotalTime->setTextAlignment(NSTextAlignment::right);
    y += 70;
    auto less = scene.outlet<UIButton>("btnLessTime", root, CGRectMake(w / 2 - 120, y, 56, 56));
    less->setImage(UIImage::named("backward15"));
    scene.wire(less, "btnLessTime:");
    screen.btnPlayOutlet = scene.outlet<UIButton>("btnPlayOutlet", root, CGRectMake(w / 2 - 36, y - 8, 72, 72));
    screen.btnPlayOutlet->setImage(UIImage::named("pause"));
    scene.wire(screen.btnPlayOutlet, "btnPlay:");
    auto more = scene.outlet<UIButton>("btnAddTime", root, CGRectMake(w / 2 + 64, y, 56, 56));
    more->setImage(UIImage::named("forward15"));
    scene.wire(more, "btnAddTime:");
  });
  return controller;
}

}  // namespace nimbrel
