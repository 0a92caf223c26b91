#pragma once

#include <memory>
#include <string_view>

#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIFont.h"

// Measures a line of text. The default estimates from the character count (deterministic, for
// tests and the headless runner); a shell installs one with real font metrics.
class TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;
  virtual CGSize measure(std::string_view utf8, const UIFont& font) const;

  static const TextMeasurer& current();
  static void install(std::shared_ptr<const TextMeasurer> measurer);
};
