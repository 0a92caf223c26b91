#pragma once

#include <QString>

#include <mutex>

#include "platform/uikit/TextMeasurer.h"

namespace nimbrel::shell {

// Measures text with the font the shell draws it in, so that widths the rules compute from text
// (a path bar's label, a menu's width) fit what a person sees.
class QtTextMeasurer final : public TextMeasurer {
 public:
  explicit QtTextMeasurer(QString family) : family_(std::move(family)) {}
  CGSize measure(std::string_view utf8, const UIFont& font) const override;

 private:
  QString family_;
  mutable std::mutex mutex_;
};

}  // namespace nimbrel::shell
