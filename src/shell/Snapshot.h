#pragma once

#include <QColor>
#include <QVariantMap>

#include <memory>

#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIColor.h"

namespace nimbrel::shell {

QColor toQColor(const UIColor& color);

// What a person could see of one outlet, as QML reads it: "type", "hidden", "alpha", "text",
// "textColor", "title", "titleColor", "image" (an address for the image provider), "selected",
// "enabled", "constant", "fontSize", "bold", "align", "lines", "background", "cornerRadius",
// "contentY", "tag", and the parts of the library views (ring chart, animation, checkmark,
// collapsing header, native ads rendered into the view).
QVariantMap snapshotOf(const std::shared_ptr<NSObject>& object);

}  // namespace nimbrel::shell
