#include "app/media/MediaTypes.h"

#include "platform/photos/PHTypes.h"

namespace nimbrel {

int platformMediaType(MediaTypes t) {
  switch (t) {
    case MediaTypes::image: return static_cast<int>(PHAssetMediaType::image);
    case MediaTypes::video: return static_cast<int>(PHAssetMediaType::video);
  }
  return static_cast<int>(PHAssetMediaType::unknown);
}

}  // namespace nimbrel
