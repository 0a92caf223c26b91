#pragma once

#include "platform/foundation/URL.h"

class UIDocumentPickerViewController;

// The owner of a document picker hears what the person chose, or that they gave up.
class UIDocumentPickerDelegate {
 public:
  virtual ~UIDocumentPickerDelegate() = default;
  virtual void documentPickerDidPickDocumentAtURL(UIDocumentPickerViewController& controller, const URL& url) {}
  virtual void documentPickerWasCancelled(UIDocumentPickerViewController& controller) {}
};
