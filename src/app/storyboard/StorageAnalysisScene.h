#pragma once

#include <memory>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

std::shared_ptr<UIViewController> makeStorageAnalysisScene();
std::shared_ptr<UIViewController> makeSettingScene();

}  // namespace nimbrel
