#pragma once

#include <optional>

#include "platform/uikit/UIColor.h"

namespace nimbrel {

// The theme's orange, as the single-precision components it was designed in.
inline constexpr UIColor themeTextColor{static_cast<double>(0.9834601f), static_cast<double>(0.7096537f),
                                        static_cast<double>(0.16932446f), 1};

// The colours of the selection marks. Each is made on first read and then kept for the life of
// the value, so `selectionFillColor` is whatever `AppTheme` holds when it is first read.
class AppThemeColor {
 public:
  const UIColor& AppTheme() const;
  const UIColor& backgroundColor() const;
  const UIColor& selectionFillColor() const;
  const UIColor& selectionStrokeColor() const;
  const UIColor& selectionShadowColor() const;
  const UIColor& unbackgroundColor() const;
  const UIColor& unselectionFillColor() const;
  const UIColor& unselectionStrokeColor() const;
  const UIColor& unselectionShadowColor() const;

  void setAppTheme(UIColor c) { appTheme_ = c; }
  void setBackgroundColor(UIColor c) { background_ = c; }
  void setSelectionFillColor(UIColor c) { selectionFill_ = c; }
  void setSelectionStrokeColor(UIColor c) { selectionStroke_ = c; }
  void setSelectionShadowColor(UIColor c) { selectionShadow_ = c; }
  void setUnbackgroundColor(UIColor c) { unbackground_ = c; }
  void setUnselectionFillColor(UIColor c) { unselectionFill_ = c; }
  void setUnselectionStrokeColor(UIColor c) { unselectionStroke_ = c; }
  void setUnselectionShadowColor(UIColor c) { unselectionShadow_ = c; }

 private:
  mutable std::optional<UIColor> appTheme_;
  mutable std::optional<UIColor> background_;
  mutable std::optional<UIColor> selectionFill_;
  mutable std::optional<UIColor> selectionStroke_;
  mutable std::optional<UIColor> selectionShadow_;
  mutable std::optional<UIColor> unbackground_;
  mutable std::optional<UIColor> unselectionFill_;
  mutable std::optional<UIColor> unselectionStroke_;
  mutable std::optional<UIColor> unselectionShadow_;
};

}  // namespace nimbrel
