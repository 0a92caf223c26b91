#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/media/MediaTypes.h"
#include "platform/foundation/URL.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"
#include "platform/uikit/UIImage.h"
#include "platform/uikit/UIViewController.h"

namespace nimbrel {

// Asks for photo-library access. Authorised: `whenAuthorized` runs on the main queue. Refused or
// restricted: the screen, if still alive, shows why and offers the settings. Undetermined and
// limited: nothing.
void requestPhotoAccess(std::weak_ptr<UIViewController> screen, std::function<void()> whenAuthorized);

// The albums that hold at least one item of `type`, by album source, in the library's order
// within each; on the calling thread.
std::vector<std::shared_ptr<PHAssetCollection>> albumsForMediaType(MediaTypes type);

// Newest first, restricted to `types`.
std::shared_ptr<PHFetchOptions> mediaFetchOptions(const std::set<MediaTypes>& types);

// The album's items of `type`, newest first, fetched on a user-interactive background queue; the
// completion runs there.
void fetchAlbumAssets(std::shared_ptr<PHAssetCollection> album, MediaTypes type,
                      std::function<void(long count, PHFetchResult<PHAsset> result)> completion);

// Where the item's file is: the full-size image of a photo (a photo without one ends the
// process), the file of a video (none when the video is not one file). Other items never answer.
void requestAssetURL(std::shared_ptr<PHAsset> asset, std::function<void(std::optional<URL>)> completion);

// The pictures to share, in the order their data arrives, on the main queue. An item whose data
// never comes holds the completion back for good.
void requestShareImages(std::vector<std::shared_ptr<PHAsset>> assets,
                        std::function<void(std::vector<UIImage>)> completion);

// Deletes the items (the platform asks the user). Refused or failed: an info status, then `leave`
// on the main queue. Done: the favourites at `addresses` are forgotten and saved, then `reload`,
// both on the main queue.
void deleteAssets(std::vector<std::shared_ptr<PHAsset>> assets, std::vector<URL> addresses,
                  std::function<void()> leaveSelectionModeOnMain, std::function<void()> reloadAlbumLevelOnMain);

// Deletes every user album of that title. Done: a success status and the callback on the main
// queue.
void deleteAlbumByTitle(const std::string& title, std::function<void()> removeSelectedItemsThenReloadOnMain);

}  // namespace nimbrel
