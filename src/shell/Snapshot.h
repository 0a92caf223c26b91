#pragma once

#include <QColor>
#include <QVariantMap>

#include <memory>

#include "platform/foundation/NSObject.h"
#include "platform/uikit/UIColor.h"
#include "platform/uikit/UIScrollView.h"

namespace nimbrel::shell {

QColor toQColor(const UIColor& color);

// What a person could see of one outlet, as QML reads it: "type", "hidden", "alpha", "text",
// "textColor", "title", "titleColor", "image" (an address for the image provider), "selected",
// "enabled", "constant", "fontSize", "bold", "align", "lines", "background", "cornerRadius",
// "contentY", "tag", a label's attributed "runs", a scroll view's zoom, insets and shown offset,
// the live photo's still, the view's layer animation records, a bar button item's system item,
// and the pieces of the library views (ring chart, animation, checkmark, collapsing header, native
// ads rendered into the view).
QVariantMap snapshotOf(const std::shared_ptr<NSObject>& object);

// Where the scroll view's content shows: its offset held inside the range that the content size
// and insets allow (a negative inset narrows it).
CGPoint shownContentOffset(const UIScrollView& scroll);
// An offset held inside that range.
CGPoint clampContentOffset(const UIScrollView& scroll, CGPoint offset);

}  // namespace nimbrel::shell
