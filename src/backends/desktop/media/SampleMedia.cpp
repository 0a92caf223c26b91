#include "backends/desktop/media/SampleMedia.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <vector>

#include <exiv2/exiv2.hpp>
#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/vorbisfile.h>
#include <taglib/xiphcomment.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include "backends/desktop/media/ImageCodec.h"
#include "backends/desktop/media/MediaProbe.h"

namespace nimbrel::desktop {

namespace {

std::string rational3(double value) {
  value = std::fabs(value);
  int degrees = static_cast<int>(value);
  double rest = (value - degrees) * 60;
  int minutes = static_cast<int>(rest);
  long hundredths = std::lround((rest - minutes) * 60 * 100);
  return std::to_string(degrees) + "/1 " + std::to_string(minutes) + "/1 " + std::to_string(hundredths) + "/100";
}

struct Muxer {
  AVFormatContext* oc = nullptr;
  AVCodecContext* c = nullptr;
  AVStream* st = nullptr;
  AVPacket* pkt = av_packet_alloc();
  AVFrame* frame = av_frame_alloc();
  ~Muxer() {
    av_frame_free(&frame);
    av_packet_free(&pkt);
    avcodec_free_context(&c);
    if (oc) {
      if (oc->pb && !(oc->oformat->flags & AVFMT_NOFILE)) avio_closep(&oc->pb);
      avformat_free_context(oc);
    }
  }
  bool open(const std::string& path, const AVCodec* codec) {
    if (avformat_alloc_output_context2(&oc, nullptr, nullptr, path.c_str()) < 0 || !oc || !codec) return false;
    st = avformat_new_stream(oc, nullptr);
    c = avcodec_alloc_context3(codec);
    return st && c;
  }
  bool start(const std::string& path) {
    if (avcodec_parameters_from_context(st->codecpar, c) < 0) return false;
    st->time_base = c->time_base;
    if (!(oc->oformat->flags & AVFMT_NOFILE) && avio_open(&oc->pb, path.c_str(), AVIO_FLAG_WRITE) < 0) return false;
    return avformat_write_header(oc, nullptr) >= 0;
  }
  bool send(AVFrame* f) {
    if (avcodec_send_frame(c, f) < 0) return false;
    while (avcodec_receive_packet(c, pkt) == 0) {
      av_packet_rescale_ts(pkt, c->time_base, st->time_base);
      pkt->stream_index = st->index;
      if (av_interleaved_write_frame(oc, pkt) < 0) return false;
    }
    return true;
  }
  bool finish() { return send(nullptr) && av_write_trailer(oc) >= 0; }
};

}  // namespace

bool writeExif(const std::string& path, const SampleExif& exif) {
  try {
    probeImage(path);  // sets Exiv2 up once, as the readers do
    auto image = Exiv2::ImageFactory::open(path);
    image->readMetadata();
    Exiv2::ExifData& data = image->exifData();
    if (exif.dateTimeOriginal) data["Exif.Photo.DateTimeOriginal"] = *exif.dateTimeOriginal;
    if (exif.offsetTimeOriginal) data["Exif.Photo.OffsetTimeOriginal"] = *exif.offsetTimeOriginal;
    if (exif.orientation) data["Exif.Image.Orientation"] = static_cast<std::uint16_t>(exif.orientation);
    if (exif.lensModel) data["Exif.Photo.LensModel"] = *exif.lensModel;
    if (exif.latitude && exif.longitude) {
      data["Exif.GPSInfo.GPSLatitudeRef"] = *exif.latitude < 0 ? "S" : "N";
      auto lat = Exiv2::Value::create(Exiv2::unsignedRational);
      lat->read(rational3(*exif.latitude));
      data.add(Exiv2::ExifKey("Exif.GPSInfo.GPSLatitude"), lat.get());
      data["Exif.GPSInfo.GPSLongitudeRef"] = *exif.longitude < 0 ? "W" : "E";
      auto lon = Exiv2::Value::create(Exiv2::unsignedRational);
      lon->read(rational3(*exif.longitude));
      data.add(Exiv2::ExifKey("Exif.GPSInfo.GPSLongitude"), lon.get());
    }
    if (exif.panoramaProjection) {
      Exiv2::XmpProperties::registerNs("http://ns.google.com/photos/1.0/panorama/", "GPano");
      image->xmpData()["Xmp.GPano.ProjectionType"] = *exif.panoramaProjection;
    }
    image->writeMetadata();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool writeSampleJpeg(const std::string& path, int width, int height, const SampleExif& exif, std::uint32_t seed) {
  RgbaImage image(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      auto* p = image.at(x, y);
      if (x < width / 2 && y < height / 2) {
        p[0] = 230, p[1] = 20, p[2] = 20;
      } else {
        p[0] = static_cast<std::uint8_t>((x * 255 / std::max(1, width - 1) + seed * 37) & 0xFF);
        p[1] = static_cast<std::uint8_t>((y * 255 / std::max(1, height - 1) + seed * 11) & 0xFF);
        p[2] = static_cast<std::uint8_t>((seed * 71) & 0xFF);
      }
    }
  }
  if (!writeJpeg(path, image, 85)) return false;
  bool any = exif.dateTimeOriginal || exif.offsetTimeOriginal || exif.orientation || exif.latitude ||
             exif.lensModel || exif.panoramaProjection;
  return !any || writeExif(path, exif);
}

bool writeSampleMovie(const std::string& path, const SampleMovie& movie) {
  av_log_set_level(AV_LOG_QUIET);
  Muxer m;
  if (!m.open(path, avcodec_find_encoder(AV_CODEC_ID_MPEG4))) return false;
  const int fps = 10;
  m.c->width = movie.width;
  m.c->height = movie.height;
  m.c->time_base = {1, fps};
  m.c->framerate = {fps, 1};
  m.c->pix_fmt = AV_PIX_FMT_YUV420P;
  m.c->gop_size = fps;
  m.c->bit_rate = 200000;
  if (m.oc->oformat->flags & AVFMT_GLOBALHEADER) m.c->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (avcodec_open2(m.c, m.c->codec, nullptr) < 0) return false;
  if (movie.creationTime) av_dict_set(&m.oc->metadata, "creation_time", movie.creationTime->c_str(), 0);
  if (movie.location) av_dict_set(&m.oc->metadata, "location", movie.location->c_str(), 0);
  if (!m.start(path)) return false;
  m.frame->format = m.c->pix_fmt;
  m.frame->width = m.c->width;
  m.frame->height = m.c->height;
  if (av_frame_get_buffer(m.frame, 0) < 0) return false;
  int frames = std::max(1, static_cast<int>(std::lround(movie.seconds * fps)));
  for (int i = 0; i < frames; ++i) {
    if (av_frame_make_writable(m.frame) < 0) return false;
    for (int y = 0; y < m.c->height; ++y) {
      for (int x = 0; x < m.c->width; ++x) m.frame->data[0][y * m.frame->linesize[0] + x] = static_cast<std::uint8_t>(x + y + i * 8);
    }
    for (int y = 0; y < m.c->height / 2; ++y) {
      for (int x = 0; x < m.c->width / 2; ++x) {
        m.frame->data[1][y * m.frame->linesize[1] + x] = static_cast<std::uint8_t>(128 + y + i * 2);
        m.frame->data[2][y * m.frame->linesize[2] + x] = static_cast<std::uint8_t>(64 + x + i * 5);
      }
    }
    m.frame->pts = i;
    if (!m.send(m.frame)) return false;
  }
  return m.finish();
}

bool writeSampleSong(const std::string& path, const SampleSong& song) {
  av_log_set_level(AV_LOG_QUIET);
  const std::string ext = lowercaseExtension(path);
  bool flac = ext == "flac", m4a = ext == "m4a", ogg = ext == "ogg";
  const AVCodec* codec = flac  ? avcodec_find_encoder(AV_CODEC_ID_FLAC)
                         : m4a ? avcodec_find_encoder(AV_CODEC_ID_AAC)
                         : ogg ? avcodec_find_encoder_by_name("libvorbis")
                               : avcodec_find_encoder_by_name("libmp3lame");
  if (!codec) return false;
  {
    Muxer m;
    if (!m.open(path, codec)) return false;
    const int rate = 44100;
    m.c->sample_rate = rate;
    m.c->sample_fmt = codec->sample_fmts ? codec->sample_fmts[0] : AV_SAMPLE_FMT_S16;
    av_channel_layout_default(&m.c->ch_layout, 1);
    m.c->bit_rate = 64000;
    m.c->time_base = {1, rate};
    if (m.oc->oformat->flags & AVFMT_GLOBALHEADER) m.c->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (avcodec_open2(m.c, codec, nullptr) < 0) return false;
    if (!m.start(path)) return false;
    int frameSize = m.c->frame_size > 0 ? m.c->frame_size : 1152;
    m.frame->format = m.c->sample_fmt;
    m.frame->nb_samples = frameSize;
    m.frame->sample_rate = rate;
    av_channel_layout_copy(&m.frame->ch_layout, &m.c->ch_layout);
    if (av_frame_get_buffer(m.frame, 0) < 0) return false;
    long total = std::lround(song.seconds * rate);
    for (long done = 0; done < total; done += frameSize) {
      if (av_frame_make_writable(m.frame) < 0) return false;
      for (int i = 0; i < frameSize; ++i) {
        double v = 0.3 * std::sin(2 * M_PI * 440.0 * static_cast<double>(done + i) / rate);
        switch (m.c->sample_fmt) {
          case AV_SAMPLE_FMT_S16:
          case AV_SAMPLE_FMT_S16P: reinterpret_cast<std::int16_t*>(m.frame->data[0])[i] = static_cast<std::int16_t>(v * 32767); break;
          case AV_SAMPLE_FMT_S32:
          case AV_SAMPLE_FMT_S32P: reinterpret_cast<std::int32_t*>(m.frame->data[0])[i] = static_cast<std::int32_t>(v * 2147483647.0); break;
          case AV_SAMPLE_FMT_FLT:
          case AV_SAMPLE_FMT_FLTP: reinterpret_cast<float*>(m.frame->data[0])[i] = static_cast<float>(v); break;
          default: return false;
        }
      }
      m.frame->pts = done;
      if (!m.send(m.frame)) return false;
    }
    if (!m.finish()) return false;
  }
  TagLib::ByteVector cover;
  if (song.artworkJpeg) {
    std::ifstream in(*song.artworkJpeg, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    cover = TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size()));
  }
  auto setTags = [&](TagLib::Tag* tag) {
    if (song.title) tag->setTitle(TagLib::String(*song.title, TagLib::String::UTF8));
    if (song.artist) tag->setArtist(TagLib::String(*song.artist, TagLib::String::UTF8));
    if (song.album) tag->setAlbum(TagLib::String(*song.album, TagLib::String::UTF8));
  };
  if (m4a) {
    TagLib::MP4::File file(path.c_str());
    if (!file.isValid()) return false;
    setTags(file.tag());
    if (!cover.isEmpty()) {
      file.tag()->setItem("covr", TagLib::MP4::CoverArtList().append(TagLib::MP4::CoverArt(TagLib::MP4::CoverArt::JPEG, cover)));
    }
    return file.save();
  }
  if (ogg) {
    TagLib::Ogg::Vorbis::File file(path.c_str());
    if (!file.isValid()) return false;
    setTags(file.tag());
    return file.save();
  }
  if (flac) {
    TagLib::FLAC::File file(path.c_str());
    if (!file.isValid()) return false;
    setTags(file.xiphComment(true));
    if (!cover.isEmpty()) {
      auto* picture = new TagLib::FLAC::Picture;
      picture->setType(TagLib::FLAC::Picture::FrontCover);
      picture->setMimeType("image/jpeg");
      picture->setData(cover);
      file.addPicture(picture);
    }
    return file.save();
  }
  TagLib::MPEG::File file(path.c_str());
  if (!file.isValid()) return false;
  auto* tag = file.ID3v2Tag(true);
  setTags(tag);
  if (!cover.isEmpty()) {
    auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
    frame->setMimeType("image/jpeg");
    frame->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
    frame->setPicture(cover);
    tag->addFrame(frame);
  }
  return file.save(TagLib::MPEG::File::ID3v2);
}

}  // namespace nimbrel::desktop
