#pragma once

#include "platform/foundation/URL.h"

class QLPreviewController;

// What a preview shows: how many items, and the file of each.
class QLPreviewControllerDataSource {
 public:
  virtual ~QLPreviewControllerDataSource() = default;
  virtual long numberOfPreviewItemsInPreviewController(QLPreviewController& controller) = 0;
  virtual URL previewControllerPreviewItemAtIndex(QLPreviewController& controller, long index) = 0;
};
