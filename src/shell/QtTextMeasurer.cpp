#include "shell/QtTextMeasurer.h"

#include <QFont>
#include <QFontMetricsF>

#include <cmath>

namespace nimbrel::shell {

CGSize QtTextMeasurer::measure(std::string_view utf8, const UIFont& font) const {
  std::lock_guard lock(mutex_);
  QFont f(family_);
  // The platform's points are the shell's logical pixels.
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pointSize))));
  f.setBold(font.bold);
  QFontMetricsF metrics(f);
  QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  return {std::ceil(metrics.horizontalAdvance(text)), std::ceil(metrics.height())};
}

}  // namespace nimbrel::shell
