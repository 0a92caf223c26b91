#pragma once

#include <optional>

#include "platform/uikit/CGGeometry.h"

namespace nimbrel {

// How the helper layer fetches an album's assets and turns them into pictures.
struct FetchOptions {
  long count = 0;  // 0 = all
  bool newestFirst = true;
  std::optional<CGSize> size;  // none = the asset's own pixel size
};

}  // namespace nimbrel
