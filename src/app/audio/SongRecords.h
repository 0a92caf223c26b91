#pragma once

#include <memory>
#include <optional>

#include "app/media/AlbumModel.h"
#include "app/media/PhotoModel.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/mediaplayer/MPMediaItemCollection.h"
#include "platform/uikit/UIImage.h"

namespace nimbrel {

// The browse records share their shape with the photo lists; for music only the name, the
// count and the song's own facts are filled, the photo fields stay bare.

// An album: its representative song's album title, or "", and its song count.
AlbumModel albumRecord(const MPMediaItemCollection& album);

// A song: title, asset address, date added (now without one), whole seconds (a length that is no
// finite 64-bit number ends the process) and "fileSize" read through a float (0 when absent).
PhotoModel songRecord(const MPMediaItem& song);

// The song's artwork at `size`, or the music placeholder when it has none or it does not render.
std::optional<UIImage> songArtwork(const MPMediaItem& song, CGSize size);

}  // namespace nimbrel
