#include "app/storyboard/ImagesScene.h"

#include "app/media/ImagesVC.h"
#include "app/storyboard/BrowseScene.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeImagesScene() {
  auto controller = std::make_shared<ImagesVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    buildBrowseScene(static_cast<ImagesVC&>(vc), {"Your library", "Images", "Images"});
  });
  return controller;
}

}  // namespace nimbrel
