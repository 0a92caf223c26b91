#pragma once

#include <string>

#include "platform/foundation/URL.h"

// The file behind a media URL: a song's library address ("ipod-library://item/item.mp3?id=N")
// names the music library's file of song N; a file URL its path. Empty when nothing stands behind.
std::string mediaFilePath(const URL& url);
