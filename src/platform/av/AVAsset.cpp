#include "platform/av/AVAsset.h"

#include "platform/av/MediaDurations.h"
#include "platform/av/MediaURL.h"

std::shared_ptr<AVURLAsset> AVURLAsset::assetWithURL(const URL& url) {
  return std::make_shared<AVURLAsset>(url, MediaDurations::current()->durationOfFile(mediaFilePath(url)));
}
