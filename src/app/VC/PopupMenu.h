#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/uikit/UIView.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// The drop-down every screen uses. One overlay serves all screens: showing a menu puts it into
// the controller's view (at (-44, -15), the view's size) with a full-size clear button that closes
// it and a white rounded menu of one 40-point row per entry, whose right edge is the anchor's and
// whose top is the anchor's middle (its bottom with `belowAnchor`). The menu is as wide as the
// longest entry (by characters) at the system font of 18, the view's width less 44 when that does
// not fit, or the anchor's width with `matchAnchorWidth`. Frames are in the overlay's coordinates,
// so its origin moves the whole menu 44 left and 15 up on screen.
//
// The controller gets the actions "didPress:" (closes, then calls the handler with the row's
// index) and "dissmissViewAction" (closes without calling it). The handler stays in one slot until
// the next menu replaces it.
void showPopupMenu(UIViewController& controller, const std::shared_ptr<UIView>& anchor,
                   const std::vector<std::string>& entries, bool belowAnchor, bool matchAnchorWidth,
                   std::function<void(long index)> handler);

// The overlay, made on first use.
std::shared_ptr<UIView> popupMenuOverlay();

// The shown menu's entries, top down; empty when no menu is shown.
std::vector<std::string> popupMenuEntries();
// A person's touch on an entry / outside the menu. False when no menu is shown or it has no such
// entry.
bool pressPopupMenuEntry(long index);
bool dismissPopupMenu();

}  // namespace nimbrel
