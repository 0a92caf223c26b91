#include "platform/mediaplayer/MPMediaItem.h"

std::optional<UIImage> MPMediaItemArtwork::imageWithSize(CGSize size) const {
  if (!renders_) return std::nullopt;
  UIImage::Pixels pixels;
  pixels.width = static_cast<int>(size.width > 0 ? size.width : 1);
  pixels.height = static_cast<int>(size.height > 0 ? size.height : 1);
  pixels.source = source_;
  return UIImage::withPixels(std::move(pixels));
}

std::optional<URL> MPMediaItem::assetURL() const {
  if (!record_->hasAssetURL) return std::nullopt;
  return URL::withString("ipod-library://item/item.mp3?id=" + std::to_string(record_->persistentID));
}

std::shared_ptr<MPMediaItemArtwork> MPMediaItem::artwork() const {
  if (!record_->hasArtwork) return nullptr;
  return std::make_shared<MPMediaItemArtwork>(record_->persistentID, record_->backingPath + "#artwork", record_->artworkRenders);
}

std::optional<PlistValue> MPMediaItem::valueForProperty(std::string_view property) const {
  const auto& r = *record_;
  if (property == "fileSize") return r.fileSize ? std::optional<PlistValue>(PlistValue(*r.fileSize)) : std::nullopt;
  if (property == MPMediaItemPropertyPersistentID) {
    return PlistValue(static_cast<std::int64_t>(r.persistentID));
  }
  if (property == MPMediaItemPropertyTitle) return r.title ? std::optional<PlistValue>(*r.title) : std::nullopt;
  if (property == MPMediaItemPropertyArtist) return r.artist ? std::optional<PlistValue>(*r.artist) : std::nullopt;
  if (property == MPMediaItemPropertyAlbumTitle) {
    return r.albumTitle ? std::optional<PlistValue>(*r.albumTitle) : std::nullopt;
  }
  if (property == MPMediaItemPropertyPlaybackDuration) return PlistValue(r.playbackDuration);
  if (property == MPMediaItemPropertyDateAdded) {
    return r.dateAdded ? std::optional<PlistValue>(PlistValue(*r.dateAdded)) : std::nullopt;
  }
  if (property == MPMediaItemPropertyAssetURL) {
    auto url = assetURL();
    return url ? std::optional<PlistValue>(url->absoluteString()) : std::nullopt;
  }
  return std::nullopt;
}
