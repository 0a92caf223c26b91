#pragma once

#include <memory>

#include "app/core/StoryBoard.h"

namespace nimbrel {

// `instantiate(fromAppStoryboard:)`: every screen class makes itself from the storyboard by its
// own type name.
template <class T>
std::shared_ptr<T> instantiate(AppStoryboard board) {
  return viewController<T>(board, "instantiate(fromAppStoryboard:)", 20,
                           "VC/UIViewController + Extension");
}

}  // namespace nimbrel
