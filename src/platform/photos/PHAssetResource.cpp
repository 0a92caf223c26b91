#include "platform/photos/PHAssetResource.h"

std::vector<std::shared_ptr<PHAssetResource>> PHAssetResource::assetResourcesForAsset(const PHAsset& asset) {
  std::vector<std::shared_ptr<PHAssetResource>> out;
  const auto& r = asset.record();
  if (!r) return out;
  for (int i = 0; i < r->resourceCount; ++i) {
    // Only the first resource is the original file; the others are its companions.
    if (i == 0) {
      out.push_back(std::make_shared<PHAssetResource>(r->filename, r->fileSize));
    } else {
      out.push_back(std::make_shared<PHAssetResource>(r->filename + "." + std::to_string(i), std::nullopt));
    }
  }
  return out;
}

std::optional<PlistValue> PHAssetResource::valueForKey(std::string_view key) const {
  if (key == "fileSize" && fileSize_) return PlistValue(*fileSize_);
  if (key == "originalFilename") return PlistValue(originalFilename_);
  return std::nullopt;
}
