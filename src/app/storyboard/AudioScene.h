#pragma once

#include <memory>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeAudioScene();
std::shared_ptr<UIViewController> makeMusicPlayerScene();

}  // namespace nimbrel
