#pragma once

#include <memory>
#include <optional>

#include "platform/quicklook/QLPreviewControllerDataSource.h"
#include "platform/quicklook/QLPreviewControllerDelegate.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIViewController.h"

// A full-screen view of one file. The item is asked of the data source each time it is needed, so
// a front end always shows what the owner answers now. The controller carries its own back button
// ("backButton", action "backButtonPressed:"), because the app's screens hide the navigation bar.
class QLPreviewController : public UIViewController {
 public:
  QLPreviewController();
  const char* className() const override { return "QLPreviewController"; }

  std::weak_ptr<QLPreviewControllerDataSource> dataSource;
  std::weak_ptr<QLPreviewControllerDelegate> delegate;

  long currentPreviewItemIndex() const { return 0; }
  // The item at the current index, when the data source has one to give.
  std::optional<URL> currentPreviewItem();
  // A person follows a link inside the item: the delegate decides, the platform opens.
  bool openLink(const URL& url);
  // Leaves the preview: tells the delegate, then pops or dismisses.
  void goBack();

  std::shared_ptr<UIButton> backButton();

 protected:
  void loadView() override;

 private:
  std::shared_ptr<UIButton> backButton_;
};
