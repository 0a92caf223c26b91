#pragma once

#include <optional>
#include <string>

#include "platform/uikit/UIColor.h"

// The application's asset catalogue of colours: `UIColor(named:)`.
class UIColorCatalog {
 public:
  // None when the catalogue has no colour of that name.
  static std::optional<UIColor> colorNamed(const std::string& name);
  static void registerColor(const std::string& name, UIColor color);
  static void reset();
};
