#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/Date.h"
#include "platform/photos/PHAsset.h"
#include "platform/uikit/UILabel.h"

namespace nimbrel {

// The viewer's two-line title: the place (when the geocoder names a locality) over the date and
// time, or the date over the time.
class PreviewTitleBuilder {
 public:
  PreviewTitleBuilder() = delete;
  // Answers later (on the main queue), or never when the asset has neither place nor date.
  static void build(const std::shared_ptr<PHAsset>& asset, std::function<void(NSAttributedString)> completion);
  static NSAttributedString dateTitle(Date date);
};

}  // namespace nimbrel
