#pragma once

#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIViewController.h"

class UIAlertController;
class UIActivityViewController;
class UIDocumentPickerViewController;
class UICollectionView;

namespace nimbrel {

// What a person could see, as the automation protocol's `tree` shows it.
class TreeWriter {
 public:
  struct ScreenEntry {
    std::shared_ptr<UIViewController> controller;
    std::string presentation;  // "root", "push", "modal"
    int style = 0;             // the modal presentation style, for "modal"
  };

  // Every screen from the bottom of the navigation stack to the top, then the presented ones;
  // alerts, share sheets and document pickers are not screens.
  static std::vector<ScreenEntry> screens();
  static std::shared_ptr<UIViewController> topScreen();
  static std::shared_ptr<UIViewController> screenWithId(const std::string& id);
  static std::shared_ptr<UIAlertController> currentAlert();
  static std::shared_ptr<UIActivityViewController> currentSheet();
  static std::shared_ptr<UIDocumentPickerViewController> currentPicker();

  static std::string screenId(const UIViewController& controller);
  static nlohmann::json describeScreen(const ScreenEntry& entry);
  static nlohmann::json describeOutlet(const std::shared_ptr<NSObject>& object,
                                       const UIViewController* screen = nullptr);
  // A collection: tag, count, selected rows, the tap recogniser's state, and every row's cell as
  // the data source fills it now — on a screen that is showing. A covered screen's data source is
  // not asked (the platform would not ask it either); its cells are those last laid out.
  static nlohmann::json describeCollection(UICollectionView& collection, const UIViewController* screen);
  static nlohmann::json tree(double now);
};

}  // namespace nimbrel
