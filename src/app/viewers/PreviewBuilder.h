#pragma once

#include <memory>

#include "app/viewers/PreviewViewController.h"

namespace nimbrel {

// Picks the viewer for an asset: a live photo (subtypes exactly 8), a video, or the still.
class PreviewBuilder {
 public:
  PreviewBuilder() = delete;
  static std::shared_ptr<PreviewViewController> build(const std::shared_ptr<PHAsset>& asset);
};

}  // namespace nimbrel
