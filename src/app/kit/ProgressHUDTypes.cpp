#include "app/kit/ProgressHUDTypes.h"

namespace nimbrel {

std::string animationTypeName(AnimationType type) {
  static const char* const names[] = {
      "systemActivityIndicator", "horizontalCirclesPulse", "lineScaling", "singleCirclePulse",
      "multipleCirclePulse", "singleCircleScaleRipple", "multipleCircleScaleRipple", "circleSpinFade",
      "lineSpinFade", "circleRotateChase", "circleStrokeSpin"};
  return names[static_cast<size_t>(type)];
}

std::string animatedIconName(AnimatedIcon icon) {
  static const char* const names[] = {"succeed", "failed", "added", "none"};
  return names[static_cast<size_t>(icon)];
}

std::string alertIconImageName(AlertIcon icon) {
  static const char* const names[] = {
      "heart.fill", "doc.fill", "bookmark.fill", "moon.fill", "star.fill", "exclamationmark.triangle.fill",
      "flag.fill", "envelope.fill", "questionmark.diamond.fill", "bolt.fill", "shuffle", "eject.fill",
      "creditcard.fill", "rotate.right.fill", "hand.thumbsup.fill", "hand.thumbsdown.fill", "hand.raised.fill",
      "cart.fill", "magnifyingglass"};
  return names[static_cast<size_t>(icon)];
}

}  // namespace nimbrel
