#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/URL.h"
#include "platform/uikit/ShareActivities.h"
#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIViewController.h"

// Where a popover points; only a pad presents the share sheet as a popover.
class UIPopoverPresentationController {
 public:
  std::weak_ptr<UIView> sourceView;
};

// The share sheet with the items handed to it.
class UIActivityViewController : public UIViewController {
 public:
  using Item = ShareItem;

  explicit UIActivityViewController(std::vector<Item> activityItems);
  const char* className() const override { return "UIActivityViewController"; }

  const std::vector<Item>& activityItems() const { return items_; }
  // Null on a phone, as the platform gives no popover there.
  UIPopoverPresentationController* popoverPresentationController() { return popover_.get(); }
  std::function<void(bool completed)> completionWithItemsHandler;

  // Each item as text: strings as they are, URLs by absolute string, images by description.
  std::vector<std::string> itemDescriptions() const;
  // The user closes the sheet.
  void close(bool completed);
  // The platform's activities for these items (none where the platform installs none).
  std::vector<std::string> activityNames() const;
  // The user chooses an activity: it starts with the items and the sheet closes, completed.
  // False, and the sheet stays, when the platform does not offer it.
  bool performActivity(const std::string& name, const std::optional<std::string>& folder = std::nullopt);

 private:
  std::vector<Item> items_;
  std::unique_ptr<UIPopoverPresentationController> popover_;
};
