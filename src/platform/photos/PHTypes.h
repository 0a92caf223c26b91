#pragma once

#include <cstdint>

// The photo library's published numbers.
enum class PHAssetMediaType : int { unknown = 0, image = 1, video = 2, audio = 3 };

enum PHAssetMediaSubtype : unsigned {
  PHAssetMediaSubtypeNone = 0,
  PHAssetMediaSubtypePhotoPanorama = 1u << 0,
  PHAssetMediaSubtypePhotoHDR = 1u << 1,
  PHAssetMediaSubtypePhotoScreenshot = 1u << 2,
  PHAssetMediaSubtypePhotoLive = 1u << 3,
  PHAssetMediaSubtypePhotoDepthEffect = 1u << 4,
  PHAssetMediaSubtypeVideoStreamed = 1u << 16,
  PHAssetMediaSubtypeVideoHighFrameRate = 1u << 17,
  PHAssetMediaSubtypeVideoTimelapse = 1u << 18,
};

enum class PHAssetCollectionType : int { album = 1, smartAlbum = 2, moment = 3 };

// Subtypes are plain numbers: the platform's values (2 regular album, 201 panoramas, 202 videos,
// 203 favourites, 209 user library, 210 selfies) and "any".
using PHAssetCollectionSubtype = std::int64_t;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeAlbumRegular = 2;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeSmartAlbumPanoramas = 201;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeSmartAlbumVideos = 202;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeSmartAlbumFavorites = 203;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeSmartAlbumUserLibrary = 209;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeSmartAlbumSelfPortraits = 210;
inline constexpr PHAssetCollectionSubtype PHAssetCollectionSubtypeAny = 0x7FFFFFFFFFFFFFFF;

enum class PHAuthorizationStatus : int { notDetermined = 0, restricted = 1, denied = 2, authorized = 3, limited = 4 };

enum class PHImageContentMode : int { aspectFit = 0, aspectFill = 1 };

using PHImageRequestID = std::int32_t;
inline constexpr PHImageRequestID PHInvalidImageRequestID = 0;
