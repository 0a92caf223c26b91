#include "app/media/AlbumSources.h"

namespace nimbrel {

std::vector<PHFetchResult<PHAssetCollection>> fetchAlbumSources(const PHFetchOptions* options) {
  std::vector<PHFetchResult<PHAssetCollection>> results;
  results.reserve(kAlbumSources.size());
  for (const auto& source : kAlbumSources) {
    results.push_back(PHAssetCollection::fetchAssetCollectionsWithType(source.type, source.subtype, options));
  }
  return results;
}

}  // namespace nimbrel
