#include "backends/desktop/media/AudioTags.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/flacpicture.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/xiphcomment.h>
#include <taglib/vorbisfile.h>

namespace nimbrel::desktop {

namespace {

std::optional<std::string> text(const TagLib::String& s) {
  if (s.isEmpty()) return std::nullopt;
  return s.to8Bit(true);
}

// TagLib 1.x keeps pictures in each format's own frames; there is no common call for them.
bool hasArtwork(TagLib::File* file) {
  if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
    auto* id3 = mpeg->ID3v2Tag(false);
    return id3 && !id3->frameListMap()["APIC"].isEmpty();
  }
  if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) return !flac->pictureList().isEmpty();
  if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
    auto* tag = mp4->tag();
    return tag && tag->contains("covr") && !tag->item("covr").toCoverArtList().isEmpty();
  }
  if (auto* vorbis = dynamic_cast<TagLib::Ogg::Vorbis::File*>(file)) {
    auto* tag = vorbis->tag();
    return tag && !tag->pictureList().isEmpty();
  }
  return false;
}

std::string bytesOf(const TagLib::ByteVector& data) { return std::string(data.data(), data.size()); }

// FLAC blocks and Vorbis comments hold the same picture records.
std::optional<std::string> pictureOf(const TagLib::List<TagLib::FLAC::Picture*>& pictures) {
  const TagLib::FLAC::Picture* chosen = nullptr;
  for (const auto* p : pictures) {
    if (!chosen || p->type() == TagLib::FLAC::Picture::FrontCover) chosen = p;
    if (p->type() == TagLib::FLAC::Picture::FrontCover) break;
  }
  if (!chosen || chosen->data().isEmpty()) return std::nullopt;
  return bytesOf(chosen->data());
}

}  // namespace

std::optional<std::string> AudioTags::artworkData(const std::string& path) {
  TagLib::FileRef ref(path.c_str(), false);
  if (ref.isNull()) return std::nullopt;
  TagLib::File* file = ref.file();
  if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
    auto* id3 = mpeg->ID3v2Tag(false);
    if (!id3) return std::nullopt;
    const TagLib::ID3v2::AttachedPictureFrame* chosen = nullptr;
    for (auto* frame : id3->frameListMap()["APIC"]) {
      auto* picture = dynamic_cast<TagLib::ID3v2::AttachedPictureFrame*>(frame);
      if (!picture) continue;
      if (!chosen || picture->type() == TagLib::ID3v2::AttachedPictureFrame::FrontCover) chosen = picture;
      if (picture->type() == TagLib::ID3v2::AttachedPictureFrame::FrontCover) break;
    }
    if (!chosen || chosen->picture().isEmpty()) return std::nullopt;
    return bytesOf(chosen->picture());
  }
  if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
    if (auto found = pictureOf(flac->pictureList())) return found;
    return flac->xiphComment() ? pictureOf(flac->xiphComment()->pictureList()) : std::nullopt;
  }
  if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
    auto* tag = mp4->tag();
    if (!tag || !tag->contains("covr")) return std::nullopt;
    auto covers = tag->item("covr").toCoverArtList();
    if (covers.isEmpty() || covers.front().data().isEmpty()) return std::nullopt;
    return bytesOf(covers.front().data());
  }
  if (auto* vorbis = dynamic_cast<TagLib::Ogg::Vorbis::File*>(file)) {
    return vorbis->tag() ? pictureOf(vorbis->tag()->pictureList()) : std::nullopt;
  }
  return std::nullopt;
}

std::optional<AudioTags> AudioTags::read(const std::string& path) {
  TagLib::FileRef ref(path.c_str(), true, TagLib::AudioProperties::Average);
  if (ref.isNull()) return std::nullopt;
  AudioTags tags;
  if (auto* tag = ref.tag()) {
    tags.title = text(tag->title());
    tags.artist = text(tag->artist());
    tags.album = text(tag->album());
  }
  if (auto* props = ref.audioProperties()) tags.duration = props->lengthInMilliseconds() / 1000.0;
  tags.readable = tags.duration > 0;
  tags.artwork = hasArtwork(ref.file());
  return tags;
}

}  // namespace nimbrel::desktop
