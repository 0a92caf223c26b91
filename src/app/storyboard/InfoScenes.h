#pragma once

#include <memory>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeInfoScene();
std::shared_ptr<UIViewController> makePhotosInfoScene();

}  // namespace nimbrel
