#include "platform/foundation/Date.h"

#include "platform/foundation/RunLoop.h"

Date Date::now() {
  return Date{RunLoop::current().now()};
}
