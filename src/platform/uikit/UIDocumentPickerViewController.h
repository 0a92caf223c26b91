#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/Result.h"
#include "platform/uikit/UIActivityViewController.h"
#include "platform/uikit/UIDocumentPickerDelegate.h"
#include "platform/uikit/UIViewController.h"

enum class UIDocumentPickerMode : int { import = 0, open = 1, exportToService = 2, moveToService = 3 };

// The system's document picker while it is presented: the types and mode it was made with. A
// front end (or a script) answers it with a file or a cancel.
class UIDocumentPickerViewController : public UIViewController {
 public:
  UIDocumentPickerViewController(std::vector<std::string> documentTypes, UIDocumentPickerMode mode);
  const char* className() const override { return "UIDocumentPickerViewController"; }

  std::weak_ptr<UIDocumentPickerDelegate> delegate;
  const std::vector<std::string>& documentTypes() const { return documentTypes_; }
  UIDocumentPickerMode documentPickerMode() const { return mode_; }
  // Only a popover presentation has one.
  UIPopoverPresentationController* popoverPresentationController();

  // The person chose a file: the picker goes away, then the delegate hears of it.
  void pick(const URL& url);
  // The named file of the installed source, handed over and picked; the reason when it cannot be.
  Result<URL> pickNamed(const std::string& name);
  // The person gave up: only the delegate hears of it, and it dismisses the picker.
  void cancel();

 private:
  std::vector<std::string> documentTypes_;
  UIDocumentPickerMode mode_;
  std::unique_ptr<UIPopoverPresentationController> popover_;
};
