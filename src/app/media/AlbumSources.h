#pragma once

#include <array>
#include <vector>

#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHTypes.h"

namespace nimbrel {

struct AlbumSource {
  PHAssetCollectionType type;
  PHAssetCollectionSubtype subtype;
};

// Where the album lists come from, in the order they are shown: user library, favourites, the
// user's albums, selfies, panoramas, videos.
inline constexpr std::array<AlbumSource, 6> kAlbumSources{{
    {PHAssetCollectionType::smartAlbum, PHAssetCollectionSubtypeSmartAlbumUserLibrary},
    {PHAssetCollectionType::smartAlbum, PHAssetCollectionSubtypeSmartAlbumFavorites},
    {PHAssetCollectionType::album, PHAssetCollectionSubtypeAlbumRegular},
    {PHAssetCollectionType::smartAlbum, PHAssetCollectionSubtypeSmartAlbumSelfPortraits},
    {PHAssetCollectionType::smartAlbum, PHAssetCollectionSubtypeSmartAlbumPanoramas},
    {PHAssetCollectionType::smartAlbum, PHAssetCollectionSubtypeSmartAlbumVideos},
}};

// One fetch per source, in that order.
std::vector<PHFetchResult<PHAssetCollection>> fetchAlbumSources(const PHFetchOptions* options);

}  // namespace nimbrel
