#include "app/storyboard/InfoScenes.h"

#include "app/storyboard/SceneBuilder.h"
#include "app/viewers/InfoViewController.h"
#include "app/viewers/PhotosInfoVC.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

namespace {

// The card in the middle of a dimmed screen, with its two ways out.
std::shared_ptr<UIView> makeCard(SceneBuilder& scene, double height) {
  auto root = scene.root();
  root->setBackgroundColor(UIColor::blackColor().withAlphaComponent(0.4));
  double w = UIScreen::mainScreen().bounds().width();
  double h = UIScreen::mainScreen().bounds().height();
  double cardWidth = std::min(w - 40, 360.0);
  auto exit = scene.outlet<UIButton>("btnExit", root, CGRectMake(0, 0, w, h));
  scene.wire(exit, "onExitBtn:");
  auto card = scene.outlet<UIView>("popUpView", root, CGRectMake((w - cardWidth) / 2, (h - height) / 2, cardWidth, height));
  card->setBackgroundColor(UIColor::whiteColor());
  card->updateLayer([](CALayer& layer) { layer.cornerRadius = 16; });
  auto title = scene.outlet<UILabel>("lblTitle", card, CGRectMake(16, 12, cardWidth - 32, 24));
  title->setText(std::string("Info"));
  title->setFont(UIFont::boldSystemFontOfSize(18));
  auto done = scene.outlet<UIButton>("btnDone", card, CGRectMake(cardWidth - 96, height - 52, 80, 40));
  done->setTitle(std::string("Done"));
  scene.wire(done, "onDoneBtn:");
  return card;
}

std::shared_ptr<UILabel> line(SceneBuilder& scene, const std::shared_ptr<UIView>& card, const std::string& name,
                              const std::string& caption, double y) {
  double w = card->bounds().width();
  auto label = scene.outlet<UILabel>(name + "Caption", card, CGRectMake(16, y, 90, 20));
  label->setText(caption);
  label->setTextColor(UIColor::grayColor());
  auto value = scene.outlet<UILabel>(name, card, CGRectMake(110, y, w - 126, 20));
  value->setText(std::string("-"));
  return value;
}

}  // namespace

std::shared_ptr<UIViewController> makeInfoScene() {
  auto controller = std::make_shared<InfoViewController>();
  controller->setStoryboardIdentifier("InfoVC");
  controller->setSceneLoader([](UIViewController& vc) {
    auto& info = static_cast<InfoViewController&>(vc);
    SceneBuilder scene(vc);
    info.popUpView = makeCard(scene, 260);
    info.lblFileName = line(scene, info.popUpView, "lblFileName", "Name", 48);
    info.lblDate = line(scene, info.popUpView, "lblDate", "Date", 76);
    info.lblDimension = line(scene, info.popUpView, "lblDimension", "Dimension", 104);
    info.lblSize = line(scene, info.popUpView, "lblSize", "Size", 132);
    info.lblFilePath = line(scene, info.popUpView, "lblFilePath", "Path", 160);
    info.lblFilePath->setNumberOfLines(2);
  });
  return controller;
}

std::shared_ptr<UIViewController> makePhotosInfoScene() {
  auto controller = std::make_shared<PhotosInfoVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& info = static_cast<PhotosInfoVC&>(vc);
    SceneBuilder scene(vc);
    info.popUpView = makeCard(scene, 160);
    info.lblContain = line(scene, info.popUpView, "lblContain", "Contains", 48);
    info.lblSize = line(scene, info.popUpView, "lblSize", "Size", 76);
  });
  return controller;
}

}  // namespace nimbrel
