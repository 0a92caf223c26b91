#pragma once

#include "platform/foundation/URL.h"

class QLPreviewController;

// The preview's questions and news for its owner.
class QLPreviewControllerDelegate {
 public:
  virtual ~QLPreviewControllerDelegate() = default;
  // Whether a link inside the shown item may be followed.
  virtual bool previewControllerShouldOpenURLForPreviewItem(QLPreviewController& controller, const URL& url,
                                                            const URL& item) {
    return true;
  }
  virtual void previewControllerWillDismiss(QLPreviewController& controller) {}
};
