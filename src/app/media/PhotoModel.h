#pragma once

#include <memory>
#include <string>

#include "app/core/FileType.h"
#include "app/media/Units.h"
#include "platform/foundation/Date.h"
#include "platform/photos/PHAsset.h"

namespace nimbrel {

// One row of a photo or video list, as a value.
struct PhotoModel {
  std::shared_ptr<PHAsset> asset = std::make_shared<PHAsset>();  // bare asset when no asset
  std::string name;
  long count = 0;
  std::string identifier;
  std::string albumId;
  std::string albumName;
  Units size;
  long duration = 0;
  Date creationDate = Date::now();
  FileType fileType = FileType::photo;

  static PhotoModel empty();
  // Only the asset, its identifier, its date (now when it has none) and its kind are filled.
  static PhotoModel fromAsset(const std::shared_ptr<PHAsset>& asset);
};

}  // namespace nimbrel
