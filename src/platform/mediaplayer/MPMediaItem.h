#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/NSObject.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/URL.h"
#include "platform/mediaplayer/MPMediaItemRecord.h"
#include "platform/uikit/CGGeometry.h"
#include "platform/uikit/UIImage.h"

using MPMediaEntityPersistentID = std::uint64_t;

inline constexpr const char* MPMediaItemPropertyPersistentID = "persistentID";
inline constexpr const char* MPMediaItemPropertyTitle = "title";
inline constexpr const char* MPMediaItemPropertyArtist = "artist";
inline constexpr const char* MPMediaItemPropertyAlbumTitle = "albumTitle";
inline constexpr const char* MPMediaItemPropertyPlaybackDuration = "playbackDuration";
inline constexpr const char* MPMediaItemPropertyDateAdded = "dateAdded";
inline constexpr const char* MPMediaItemPropertyAssetURL = "assetURL";

// A song's artwork: renders at any size.
class MPMediaItemArtwork : public NSObject {
 public:
  MPMediaItemArtwork(std::uint64_t persistentID, std::string source, bool renders = true)
      : persistentID_(persistentID), source_(std::move(source)), renders_(renders) {}
  // None when the artwork cannot be drawn.
  std::optional<UIImage> imageWithSize(CGSize size) const;

 private:
  std::uint64_t persistentID_;
  std::string source_;
  bool renders_;
};

// One song of the music library.
class MPMediaItem : public NSObject {
 public:
  explicit MPMediaItem(std::shared_ptr<const MPMediaItemRecord> record) : record_(std::move(record)) {}

  MPMediaEntityPersistentID persistentID() const { return record_->persistentID; }
  const std::optional<std::string>& title() const { return record_->title; }
  const std::optional<std::string>& artist() const { return record_->artist; }
  const std::optional<std::string>& albumTitle() const { return record_->albumTitle; }
  double playbackDuration() const { return record_->playbackDuration; }
  const std::optional<Date>& dateAdded() const { return record_->dateAdded; }
  // "ipod-library://item/item.mp3?id=" followed by the persistent id, when the song has a file.
  std::optional<URL> assetURL() const;
  std::shared_ptr<MPMediaItemArtwork> artwork() const;
  // Key-value access by property name ("fileSize", "title", ...); no value when absent.
  std::optional<PlistValue> valueForProperty(std::string_view property) const;
  const std::shared_ptr<const MPMediaItemRecord>& record() const { return record_; }

 private:
  std::shared_ptr<const MPMediaItemRecord> record_;
};
