#include "platform/uikit/TextMeasurer.h"

#include <cmath>
#include <mutex>

namespace {
std::mutex gMutex;
std::shared_ptr<const TextMeasurer>& installed() {
  static std::shared_ptr<const TextMeasurer> m = std::make_shared<TextMeasurer>();
  return m;
}
}  // namespace

CGSize TextMeasurer::measure(std::string_view utf8, const UIFont& font) const {
  // Half an em per character is the average advance of a proportional system font.
  size_t characters = 0;
  for (unsigned char c : utf8) {
    if ((c & 0xC0) != 0x80) ++characters;
  }
  double width = std::ceil(static_cast<double>(characters) * font.pointSize * 0.5);
  return {width, std::ceil(font.pointSize * 1.2)};
}

const TextMeasurer& TextMeasurer::current() {
  std::lock_guard lock(gMutex);
  return *installed();
}

void TextMeasurer::install(std::shared_ptr<const TextMeasurer> measurer) {
  std::lock_guard lock(gMutex);
  installed() = measurer ? std::move(measurer) : std::make_shared<TextMeasurer>();
}
