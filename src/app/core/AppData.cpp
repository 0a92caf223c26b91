#include "app/core/AppData.h"

#include "platform/foundation/SharedInstance.h"

namespace nimbrel {

std::shared_ptr<AppData> AppData::shared() {
  return SharedInstance<AppData>::get();
}

}  // namespace nimbrel
