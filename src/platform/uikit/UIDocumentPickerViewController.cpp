#include "platform/uikit/UIDocumentPickerViewController.h"

#include "platform/uikit/DocumentPickerSource.h"

UIDocumentPickerViewController::UIDocumentPickerViewController(std::vector<std::string> documentTypes,
                                                               UIDocumentPickerMode mode)
    : documentTypes_(std::move(documentTypes)), mode_(mode) {}

UIPopoverPresentationController* UIDocumentPickerViewController::popoverPresentationController() {
  if (modalPresentationStyle() != UIModalPresentationStyle::popover) return nullptr;
  if (!popover_) popover_ = std::make_unique<UIPopoverPresentationController>();
  return popover_.get();
}

void UIDocumentPickerViewController::pick(const URL& url) {
  auto keep = strongSelf<UIDocumentPickerViewController>();
  dismissViewControllerAnimated(true, nullptr);
  if (auto d = delegate.lock()) d->documentPickerDidPickDocumentAtURL(*this, url);
}

Result<URL> UIDocumentPickerViewController::pickNamed(const std::string& name) {
  auto source = DocumentPickerSource::current();
  if (!source) return Result<URL>::failure("this platform offers no files by name");
  auto url = source->handOver(name);
  if (url) pick(url.value());
  return url;
}

void UIDocumentPickerViewController::cancel() {
  auto keep = strongSelf<UIDocumentPickerViewController>();
  if (auto d = delegate.lock()) d->documentPickerWasCancelled(*this);
}
