#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"
#include "platform/photos/PHTypes.h"

// What a photo library knows of one asset. Backends fill these; PHAsset objects wrap them.
struct PHAssetRecord {
  std::string localIdentifier;
  PHAssetMediaType mediaType = PHAssetMediaType::image;
  unsigned mediaSubtypes = 0;
  std::optional<Date> creationDate;
  int pixelWidth = 0;
  int pixelHeight = 0;
  double duration = 0;
  std::optional<CLLocation> location;
  std::optional<std::string> locality;  // what reverse geocoding of `location` finds
  bool favorite = false;
  // The "filename" key and the first resource's original file name.
  std::string filename;
  // The first resource's "fileSize"; none when the resource does not say.
  std::optional<std::int64_t> fileSize;
  int resourceCount = 1;
  // The file behind the asset, if any.
  std::string backingPath;
};

// What a photo library knows of one album.
struct PHAssetCollectionRecord {
  std::string localIdentifier;
  std::optional<std::string> title;
  PHAssetCollectionType type = PHAssetCollectionType::album;
  std::int64_t subtype = 2;
  // The album's own order.
  std::vector<std::string> assetIdentifiers;
};
