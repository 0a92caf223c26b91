#pragma once

#include <cstdint>
#include <memory>

#include "app/core/File.h"
#include "app/media/PhotoModel.h"
#include "platform/mediaplayer/MPMediaItem.h"
#include "platform/photos/PHAsset.h"

namespace nimbrel {

// A record of the recent or favourite list resolved to the thing itself, afresh at every use. A
// record whose asset or song has gone ends the process: nothing guards against it.

// Index 0 of a fetch by the record's synthetic address.
std::shared_ptr<PHAsset> historyAsset(const URL& url);
// The first song whose persistent identifier contains the address's text from character 32 on.
std::shared_ptr<MPMediaItem> historySong(const URL& url);
// The size of the file at the URL's path, 0 when it cannot be read.
std::int64_t historyFileSize(const URL& url);
// The first resource's "fileSize" through the float the photo lists use.
std::int64_t historyAssetSize(const PHAsset& asset);
// The record's row; `withName` resolves the entry for its name.
PhotoModel historyModel(const File& record, bool withName);
// The record's size by kind, as the info panel of a selection sees it.
std::int64_t historyInfoSize(const URL& url, FileType kind);

}  // namespace nimbrel
