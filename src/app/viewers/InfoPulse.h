#pragma once

#include "platform/uikit/UIView.h"

namespace nimbrel {

// The panels' spring-in: "transform.scale" from 0.5 to 1.0 over 0.5 s, under the key "pulse".
inline void runPulse(UIView& view) {
  view.addLayerAnimation({"pulse", "transform.scale", 0.5, 1.0, 0.5, false, "spring"});
}

}  // namespace nimbrel
