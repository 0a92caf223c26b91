#pragma once

namespace nimbrel {

// The kinds of library item the browse screens show. Usable as a set or hash key.
enum class MediaTypes { image, video };

// The photo library's media-type number: image 1, video 2.
int platformMediaType(MediaTypes t);

}  // namespace nimbrel
