#include "platform/uikit/UIBarButtonItem.h"

void UIBarButtonItem::press() {
  auto self = shared_from_this();
  if (auto target = target_.lock()) target->performAction(action_, self);
}
