#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/NSObject.h"

// Something that can receive an action by selector name ("onGridOrListBtn:").
class UIResponder : public NSObject {
 public:
  // True when the selector is known here and was performed.
  virtual bool performAction(std::string_view selector, const std::shared_ptr<NSObject>& sender) {
    return false;
  }
  virtual bool respondsToSelector(std::string_view selector) const { return false; }
};
