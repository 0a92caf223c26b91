#include "platform/uikit/UIActivityViewController.h"

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
