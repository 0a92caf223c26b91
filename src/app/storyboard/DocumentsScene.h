#pragma once

#include <memory>

#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// "DocumentsVC": the documents screen on the browse frame's scene, with an import button.
std::shared_ptr<UIViewController> makeDocumentsScene();

}  // namespace nimbrel
