#include "platform/uikit/UIActivityViewController.h"

#include <algorithm>

#include "platform/uikit/UIDevice.h"

UIActivityViewController::UIActivityViewController(std::vector<Item> activityItems)
    : items_(std::move(activityItems)) {
  if (UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::pad) {
    popover_ = std::make_unique<UIPopoverPresentationController>();
    setModalPresentationStyle(UIModalPresentationStyle::popover);
  } else {
    setModalPresentationStyle(UIModalPresentationStyle::pageSheet);
  }
}

std::vector<std::string> UIActivityViewController::itemDescriptions() const {
  std::vector<std::string> out;
  for (const auto& item : items_) {
    if (auto s = std::get_if<std::string>(&item)) {
      out.push_back(*s);
    } else if (auto u = std::get_if<URL>(&item)) {
      out.push_back(u->absoluteString());
    } else {
      out.push_back(std::get<UIImage>(item).describe());
    }
  }
  return out;
}

void UIActivityViewController::close(bool completed) {
  auto self = strongSelf<UIActivityViewController>();
  dismissViewControllerAnimated(true, [self, completed] {
    if (self->completionWithItemsHandler) self->completionWithItemsHandler(completed);
  });
}

std::vector<std::string> UIActivityViewController::activityNames() const {
  auto activities = ShareActivities::current();
  return activities ? activities->names(items_) : std::vector<std::string>{};
}

bool UIActivityViewController::performActivity(const std::string& name, const std::optional<std::string>& folder) {
  auto activities = ShareActivities::current();
  if (!activities) return false;
  auto offered = activities->names(items_);
  if (std::find(offered.begin(), offered.end(), name) == offered.end()) return false;
  if (!activities->perform(name, items_, folder)) return false;
  close(true);
  return true;
}
