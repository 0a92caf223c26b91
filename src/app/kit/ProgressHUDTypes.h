#pragma once

#include <cstdint>
#include <string>

namespace nimbrel {

enum class AnimationType : std::uint8_t {
  systemActivityIndicator,
  horizontalCirclesPulse,
  lineScaling,
  singleCirclePulse,
  multipleCirclePulse,
  singleCircleScaleRipple,
  multipleCircleScaleRipple,
  circleSpinFade,
  lineSpinFade,
  circleRotateChase,
  circleStrokeSpin,
};

// Raw value 3 stands for no icon in the show routine.
enum class AnimatedIcon : std::uint8_t { succeed, failed, added, none };

enum class AlertIcon {
  heart, doc, bookmark, moon, star, exclamation, flag, message, question, bolt,
  shuffle, eject, card, rotate, like, dislike, privacy, cart, search,
};

// The case's name as the code spells it ("circleStrokeSpin", "succeed").
std::string animationTypeName(AnimationType type);
std::string animatedIconName(AnimatedIcon icon);
// The system image an alert icon shows ("heart.fill").
std::string alertIconImageName(AlertIcon icon);

}  // namespace nimbrel
