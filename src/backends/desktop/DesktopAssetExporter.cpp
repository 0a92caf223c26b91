#include "backends/desktop/DesktopAssetExporter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace nimbrel::desktop {

namespace {

namespace fs = std::filesystem;

std::string avError(int code) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(code, text, sizeof text);
  return text;
}

// "file:" keeps a colon in a song's name from reading as a protocol.
std::string fileUrl(const std::string& path) { return "file:" + path; }

struct Input {
  AVFormatContext* ctx = nullptr;
  ~Input() {
    if (ctx) avformat_close_input(&ctx);
  }
};

struct Output {
  AVFormatContext* ctx = nullptr;
  AVStream* stream = nullptr;
  ~Output() {
    if (!ctx) return;
    if (ctx->pb) avio_closep(&ctx->pb);
    avformat_free_context(ctx);
  }
  bool open(const std::string& path, std::string& error) {
    int rc = avformat_alloc_output_context2(&ctx, nullptr, "caf", nullptr);
    if (rc < 0 || !ctx) {
      error = "no Core Audio muxer: " + avError(rc);
      return false;
    }
    stream = avformat_new_stream(ctx, nullptr);
    if (!stream) {
      error = "out of memory";
      return false;
    }
    if ((rc = avio_open(&ctx->pb, fileUrl(path).c_str(), AVIO_FLAG_WRITE)) < 0) {
      error = "Cannot Save: " + avError(rc);
      return false;
    }
    return true;
  }
  bool start(std::string& error) {
    int rc = avformat_write_header(ctx, nullptr);
    if (rc < 0) error = "the Core Audio format cannot hold it: " + avError(rc);
    return rc >= 0;
  }
  bool finish(std::string& error) {
    int rc = av_write_trailer(ctx);
    if (rc < 0) error = "Cannot Save: " + avError(rc);
    return rc >= 0;
  }
};

struct Packet {
  AVPacket* p = av_packet_alloc();
  ~Packet() { av_packet_free(&p); }
};

bool remux(AVFormatContext* in, int index, const std::string& path, std::string& error) {
  Output out;
  if (!out.open(path, error)) return false;
  const AVStream* source = in->streams[index];
  if (avcodec_parameters_copy(out.stream->codecpar, source->codecpar) < 0) {
    error = "out of memory";
    return false;
  }
  out.stream->codecpar->codec_tag = 0;
  out.stream->time_base = source->time_base;
  if (!out.start(error)) return false;
  Packet packet;
  int rc;
  while ((rc = av_read_frame(in, packet.p)) >= 0) {
    if (packet.p->stream_index == index) {
      av_packet_rescale_ts(packet.p, source->time_base, out.stream->time_base);
      packet.p->stream_index = 0;
      packet.p->pos = -1;
      if ((rc = av_write_frame(out.ctx, packet.p)) < 0) {
        error = "Cannot Save: " + avError(rc);
        return false;
      }
    }
    av_packet_unref(packet.p);
  }
  if (rc != AVERROR_EOF) {
    error = "Cannot Open: " + avError(rc);
    return false;
  }
  return out.finish(error);
}

struct Decoder {
  AVCodecContext* ctx = nullptr;
  SwrContext* swr = nullptr;
  AVFrame* frame = av_frame_alloc();
  ~Decoder() {
    av_frame_free(&frame);
    swr_free(&swr);
    avcodec_free_context(&ctx);
  }
};

// Decodes to interleaved 16-bit samples at the song's own rate and channel count.
bool decodeToPcm(AVFormatContext* in, int index, const std::string& path, std::string& error) {
  const AVStream* source = in->streams[index];
  const AVCodec* codec = avcodec_find_decoder(source->codecpar->codec_id);
  Decoder d;
  if (!codec || !(d.ctx = avcodec_alloc_context3(codec)) ||
      avcodec_parameters_to_context(d.ctx, source->codecpar) < 0 || avcodec_open2(d.ctx, codec, nullptr) < 0) {
    error = std::string("Cannot Open: no decoder for ") + avcodec_get_name(source->codecpar->codec_id);
    return false;
  }
  const int rate = d.ctx->sample_rate;
  const int channels = d.ctx->ch_layout.nb_channels;
  if (rate <= 0 || channels <= 0) {
    error = "Cannot Open: the audio has no rate or channels";
    return false;
  }
  AVChannelLayout layout;
  av_channel_layout_default(&layout, channels);
  AVChannelLayout* inLayout = d.ctx->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC ? &layout : &d.ctx->ch_layout;
  if (swr_alloc_set_opts2(&d.swr, &layout, AV_SAMPLE_FMT_S16, rate, inLayout, d.ctx->sample_fmt, rate, 0, nullptr) < 0 ||
      swr_init(d.swr) < 0) {
    error = "Cannot Open: the samples cannot be converted";
    return false;
  }

  Output out;
  if (!out.open(path, error)) return false;
  AVCodecParameters* par = out.stream->codecpar;
  par->codec_type = AVMEDIA_TYPE_AUDIO;
  par->codec_id = AV_CODEC_ID_PCM_S16LE;
  par->format = AV_SAMPLE_FMT_S16;
  par->sample_rate = rate;
  av_channel_layout_copy(&par->ch_layout, &layout);
  par->bits_per_coded_sample = 16;
  par->block_align = channels * 2;
  par->bit_rate = static_cast<int64_t>(rate) * channels * 16;
  out.stream->time_base = {1, rate};
  if (!out.start(error)) return false;

  Packet packet, samples;
  std::int64_t written = 0;
  // Converted samples go out as one packet per call; a null frame drains the converter.
  auto emit = [&](const AVFrame* frame) {
    int room = swr_get_out_samples(d.swr, frame ? frame->nb_samples : 0);
    if (room <= 0) return true;
    if (av_new_packet(samples.p, room * channels * 2) < 0) return false;
    std::uint8_t* target = samples.p->data;
    int got = swr_convert(d.swr, &target, room, frame ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr,
                          frame ? frame->nb_samples : 0);
    if (got < 0) return false;
    if (got == 0) {
      av_packet_unref(samples.p);
      return true;
    }
    av_shrink_packet(samples.p, got * channels * 2);
    samples.p->pts = samples.p->dts = written;
    samples.p->duration = got;
    samples.p->stream_index = 0;
    written += got;
    return av_write_frame(out.ctx, samples.p) >= 0;
  };
  auto drain = [&]() {
    int rc;
    while ((rc = avcodec_receive_frame(d.ctx, d.frame)) == 0) {
      bool ok = emit(d.frame);
      av_frame_unref(d.frame);
      if (!ok) return false;
    }
    return rc == AVERROR(EAGAIN) || rc == AVERROR_EOF;
  };
  int rc;
  while ((rc = av_read_frame(in, packet.p)) >= 0) {
    bool ok = true;
    // A damaged packet is skipped, as a player would.
    if (packet.p->stream_index == index && avcodec_send_packet(d.ctx, packet.p) >= 0) ok = drain();
    av_packet_unref(packet.p);
    if (!ok) {
      error = "Cannot Save: the decoded audio could not be written";
      return false;
    }
  }
  if (rc != AVERROR_EOF) {
    error = "Cannot Open: " + avError(rc);
    return false;
  }
  avcodec_send_packet(d.ctx, nullptr);
  if (!drain() || !emit(nullptr)) {
    error = "Cannot Save: the decoded audio could not be written";
    return false;
  }
  if (written == 0) {
    error = "Cannot Open: no sound could be decoded";
    return false;
  }
  return out.finish(error);
}

// What libavformat's Core Audio muxer writes so that the file reads back: it turns AAC down, and
// writes FLAC and Opus without the setup data a reader needs, though it claims to take them.
bool cafHolds(AVCodecID codec) {
  switch (codec) {
    case AV_CODEC_ID_MP1:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
    case AV_CODEC_ID_ALAC:
    case AV_CODEC_ID_PCM_S8:
    case AV_CODEC_ID_PCM_S16LE:
    case AV_CODEC_ID_PCM_S16BE:
    case AV_CODEC_ID_PCM_S24LE:
    case AV_CODEC_ID_PCM_S24BE:
    case AV_CODEC_ID_PCM_S32LE:
    case AV_CODEC_ID_PCM_S32BE:
    case AV_CODEC_ID_PCM_F32LE:
    case AV_CODEC_ID_PCM_F32BE:
    case AV_CODEC_ID_PCM_F64LE:
    case AV_CODEC_ID_PCM_F64BE:
    case AV_CODEC_ID_PCM_MULAW:
    case AV_CODEC_ID_PCM_ALAW: return true;
    default: return false;
  }
}

// A file of our own beside the target, so that nobody sees half an export under its name.
std::string temporaryBeside(const std::string& target) {
  fs::path p(target);
  std::string pattern = (p.parent_path() / ("." + p.filename().string() + ".XXXXXX")).string();
  int fd = ::mkstemp(pattern.data());
  if (fd < 0) return {};
  ::close(fd);
  return pattern;
}

}  // namespace

bool DesktopAssetExporter::exportFile(const std::string& sourcePath, const std::string& outputPath,
                                      const std::string& fileType, std::string& error) {
  av_log_set_level(AV_LOG_QUIET);
  if (fileType != AVFileTypeCoreAudioFormat) {
    error = "Cannot Save: no export into " + fileType;
    return false;
  }
  std::error_code ec;
  if (fs::exists(outputPath, ec)) {
    error = "Cannot Save: the file " + outputPath + " already exists";
    return false;
  }
  if (sourcePath.empty()) {
    error = "Cannot Open: no media file";
    return false;
  }
  Input in;
  int rc = avformat_open_input(&in.ctx, fileUrl(sourcePath).c_str(), nullptr, nullptr);
  if (rc < 0 || (rc = avformat_find_stream_info(in.ctx, nullptr)) < 0) {
    error = "Cannot Open: " + sourcePath + ": " + avError(rc);
    return false;
  }
  int index = av_find_best_stream(in.ctx, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
  if (index < 0) {
    error = "Cannot Open: " + sourcePath + " has no sound";
    return false;
  }
  std::string temporary = temporaryBeside(outputPath);
  if (temporary.empty()) {
    error = std::string("Cannot Save: ") + std::strerror(errno);
    return false;
  }
  bool done = false;
  std::string remuxError;
  if (cafHolds(in.ctx->streams[index]->codecpar->codec_id)) {
    done = remux(in.ctx, index, temporary, remuxError);
    if (!done) {
      // The muxer may still turn a codec down at its header: start over and decode instead.
      av_seek_frame(in.ctx, -1, 0, AVSEEK_FLAG_BACKWARD);
      avformat_flush(in.ctx);
    }
  }
  if (!done) done = decodeToPcm(in.ctx, index, temporary, error);
  // The file appears whole, and not over a name taken meanwhile; a hard link where the folder's
  // file system cannot rename that way.
  if (done && ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, outputPath.c_str(), RENAME_NOREPLACE) != 0 &&
      (errno != EINVAL || ::link(temporary.c_str(), outputPath.c_str()) != 0)) {
    error = errno == EEXIST ? "Cannot Save: the file " + outputPath + " already exists"
                            : std::string("Cannot Save: ") + std::strerror(errno);
    done = false;
  }
  ::unlink(temporary.c_str());
  return done;
}

}  // namespace nimbrel::desktop
