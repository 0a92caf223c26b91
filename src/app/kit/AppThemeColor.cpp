#include "app/kit/AppThemeColor.h"

namespace nimbrel {

namespace {
template <class Make>
const UIColor& lazily(std::optional<UIColor>& slot, Make make) {
  if (!slot) slot = make();
  return *slot;
}
}  // namespace

const UIColor& AppThemeColor::AppTheme() const {
  return lazily(appTheme_, [] { return themeTextColor; });
}

const UIColor& AppThemeColor::backgroundColor() const {
  return lazily(background_, [] { return UIColor::whiteColor(); });
}

const UIColor& AppThemeColor::selectionFillColor() const {
  return lazily(selectionFill_, [this] { return AppTheme(); });
}

const UIColor& AppThemeColor::selectionStrokeColor() const {
  return lazily(selectionStroke_, [] { return UIColor::whiteColor(); });
}

const UIColor& AppThemeColor::selectionShadowColor() const {
  return lazily(selectionShadow_, [] { return UIColor::blackColor(); });
}

const UIColor& AppThemeColor::unbackgroundColor() const {
  return lazily(unbackground_, [] { return UIColor::lightGrayColor(); });
}

const UIColor& AppThemeColor::unselectionFillColor() const {
  return lazily(unselectionFill_, [] { return UIColor::whiteColor(); });
}

const UIColor& AppThemeColor::unselectionStrokeColor() const {
  return lazily(unselectionStroke_, [] { return UIColor::clearColor(); });
}

const UIColor& AppThemeColor::unselectionShadowColor() const {
  return lazily(unselectionShadow_, [] { return UIColor::blackColor(); });
}

}  // namespace nimbrel
