#include "app/storyboard/DocumentsScene.h"

#include "app/documents/DocumentVC.h"
#include "app/storyboard/BrowseScene.h"
#include "app/storyboard/SceneBuilder.h"
#include "platform/uikit/UIScreen.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeDocumentsScene() {
  auto controller = std::make_shared<DocumentVC>();
  controller->setSceneLoader([](UIViewController& vc) {
    auto& screen = static_cast<DocumentVC&>(vc);
    buildBrowseScene(screen, {"Your files", "Documents", "Documents"});
    SceneBuilder scene(screen);
    const double w = UIScreen::mainScreen().bounds().width();
    // Beside the grid-or-list switch in the header.
    auto import = scene.outlet<UIButton>("btnImport", screen.HEADERView, CGRectMake(w - 136, 2, 40, 40));
    import->setImage(UIImage::named("ic_add"));
    scene.wire(import, "onOpenDocumentOicker:");
  });
  return controller;
}

}  // namespace nimbrel
