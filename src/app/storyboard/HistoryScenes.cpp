#include "app/storyboard/HistoryScenes.h"

#include "app/history/FavouriteFilesVC.h"
#include "app/history/RecentFilesVC.h"
#include "app/storyboard/BrowseScene.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeRecentFilesScene() {
  auto controller = std::make_shared<RecentFilesVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    BrowseSceneTexts texts{"Your files", "Recent", "Recent"};
    texts.hasFavourite = false;
    texts.hasFavouriteImage = false;
    buildBrowseScene(static_cast<RecentFilesVC&>(vc), texts);
  });
  return controller;
}

std::shared_ptr<UIViewController> makeFavouriteFilesScene() {
  auto controller = std::make_shared<FavouriteFilesVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    BrowseSceneTexts texts{"Your files", "Favourites", "Favourites"};
    texts.favouriteSelector = "onUnFavBtn:";
    texts.hasDelete = false;
    texts.hasFavouriteImage = false;
    buildBrowseScene(static_cast<FavouriteFilesVC&>(vc), texts);
  });
  return controller;
}

}  // namespace nimbrel
