#pragma once

#include <memory>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeRecentFilesScene();
std::shared_ptr<UIViewController> makeFavouriteFilesScene();

}  // namespace nimbrel
