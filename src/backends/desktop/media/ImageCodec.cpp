#include "backends/desktop/media/ImageCodec.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <algorithm>
#include <memory>

#include <jpeglib.h>
#include <libheif/heif.h>
#include <png.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/imgutils.h>
#include <libswscale/swscale.h>
}

#include <cmath>

#include "backends/desktop/media/MediaProbe.h"

namespace nimbrel::desktop {

namespace {

struct FileCloser {
  void operator()(FILE* f) const {
    if (f) std::fclose(f);
  }
};
using File = std::unique_ptr<FILE, FileCloser>;

struct JpegError {
  jpeg_error_mgr mgr;
  std::jmp_buf jump;
};

void jpegErrorExit(j_common_ptr cinfo) {
  std::longjmp(reinterpret_cast<JpegError*>(cinfo->err)->jump, 1);
}

void jpegSilence(j_common_ptr, int) {}

// The smallest size libjpeg may decode to: the longer side, or each side, at least so long.
struct JpegTarget {
  int minLongSide = 0;
  int minWidth = 0, minHeight = 0;
  bool reached(int width, int height) const {
    return std::max(width, height) >= minLongSide && width >= minWidth && height >= minHeight;
  }
};

// libjpeg reports errors by longjmp: everything with a destructor lives in the caller.
bool decodeJpegInto(FILE* file, JpegTarget target, RgbaImage* out) {
  jpeg_decompress_struct cinfo;
  JpegError err;
  cinfo.err = jpeg_std_error(&err.mgr);
  err.mgr.error_exit = jpegErrorExit;
  err.mgr.emit_message = jpegSilence;
  if (setjmp(err.jump)) {
    jpeg_destroy_decompress(&cinfo);
    return false;
  }
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, file);
  jpeg_read_header(&cinfo, TRUE);
  const int w = static_cast<int>(cinfo.image_width), h = static_cast<int>(cinfo.image_height);
  unsigned denom = 1;
  if (target.minLongSide > 0 || target.minWidth > 0 || target.minHeight > 0) {
    for (int d : {8, 4, 2}) {
      if (target.reached((w + d - 1) / d, (h + d - 1) / d)) {
        denom = static_cast<unsigned>(d);
        break;
      }
    }
  }
  cinfo.scale_num = 1;
  cinfo.scale_denom = denom;
  cinfo.out_color_space = JCS_EXT_RGBA;
  cinfo.dct_method = JDCT_ISLOW;
  jpeg_start_decompress(&cinfo);
  out->width = static_cast<int>(cinfo.output_width);
  out->height = static_cast<int>(cinfo.output_height);
  out->pixels.resize(static_cast<size_t>(out->width) * out->height * 4);
  while (cinfo.output_scanline < cinfo.output_height) {
    JSAMPROW row = out->pixels.data() + static_cast<size_t>(cinfo.output_scanline) * out->width * 4;
    jpeg_read_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_decompress(&cinfo);
  jpeg_destroy_decompress(&cinfo);
  return true;
}

bool encodeJpegInto(FILE* file, const RgbaImage& image, int quality) {
  jpeg_compress_struct cinfo;
  JpegError err;
  cinfo.err = jpeg_std_error(&err.mgr);
  err.mgr.error_exit = jpegErrorExit;
  if (setjmp(err.jump)) {
    jpeg_destroy_compress(&cinfo);
    return false;
  }
  jpeg_create_compress(&cinfo);
  jpeg_stdio_dest(&cinfo, file);
  cinfo.image_width = static_cast<JDIMENSION>(image.width);
  cinfo.image_height = static_cast<JDIMENSION>(image.height);
  cinfo.input_components = 4;
  cinfo.in_color_space = JCS_EXT_RGBA;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, quality, TRUE);
  jpeg_start_compress(&cinfo, TRUE);
  while (cinfo.next_scanline < cinfo.image_height) {
    JSAMPROW row = const_cast<std::uint8_t*>(image.pixels.data()) + static_cast<size_t>(cinfo.next_scanline) * image.width * 4;
    jpeg_write_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  return true;
}

void pngSilence(png_structp, png_const_charp) {}

bool decodePngInto(FILE* file, RgbaImage* out, PngInfo* info, bool pixels) {
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, pngSilence);
  if (!png) return false;
  png_infop pinfo = png_create_info_struct(png);
  png_infop end = png_create_info_struct(png);
  std::vector<png_bytep>* rows = nullptr;
  if (setjmp(png_jmpbuf(png))) {
    delete rows;
    png_destroy_read_struct(&png, &pinfo, &end);
    return false;
  }
  png_init_io(png, file);
  png_read_info(png, pinfo);
  int w = static_cast<int>(png_get_image_width(png, pinfo));
  int h = static_cast<int>(png_get_image_height(png, pinfo));
  auto collectText = [&](png_infop from) {
    png_textp text = nullptr;
    int count = 0;
    png_get_text(png, from, &text, &count);
    for (int i = 0; i < count; ++i) {
      info->text[text[i].key] = std::string(text[i].text ? text[i].text : "",
                                            text[i].itxt_length ? text[i].itxt_length : text[i].text_length);
    }
  };
  if (info) {
    info->width = w;
    info->height = h;
    collectText(pinfo);
  }
  if (!pixels && info && info->text.count("Thumb::URI") && info->text.count("Thumb::MTime")) {
    png_destroy_read_struct(&png, &pinfo, &end);
    return true;
  }
  // Text after the pixels is only reached by reading them.
  png_set_expand(png);
  png_set_strip_16(png);
  png_set_gray_to_rgb(png);
  png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
  png_set_interlace_handling(png);
  png_read_update_info(png, pinfo);
  RgbaImage scratch;
  RgbaImage* target = out ? out : &scratch;
  target->width = w;
  target->height = h;
  target->pixels.assign(static_cast<size_t>(w) * h * 4, 0);
  rows = new std::vector<png_bytep>(static_cast<size_t>(h));
  for (int y = 0; y < h; ++y) (*rows)[y] = target->pixels.data() + static_cast<size_t>(y) * w * 4;
  png_read_image(png, rows->data());
  png_read_end(png, end);
  if (info) collectText(end);
  delete rows;
  png_destroy_read_struct(&png, &pinfo, &end);
  return true;
}

bool encodePngInto(FILE* file, const RgbaImage& image, const std::vector<std::pair<std::string, std::string>>& text) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, pngSilence);
  if (!png) return false;
  png_infop info = png_create_info_struct(png);
  std::vector<png_text>* chunks = nullptr;
  std::vector<std::uint8_t>* rgb = nullptr;
  if (setjmp(png_jmpbuf(png))) {
    delete chunks;
    delete rgb;
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_init_io(png, file);
  bool opaque = true;
  for (size_t i = 3; i < image.pixels.size(); i += 4) {
    if (image.pixels[i] != 255) {
      opaque = false;
      break;
    }
  }
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width), static_cast<png_uint_32>(image.height), 8,
               opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  // Thumbnails are written often and read often: fast compression is the better trade.
  png_set_compression_level(png, 3);
  chunks = new std::vector<png_text>(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    (*chunks)[i].compression = PNG_TEXT_COMPRESSION_NONE;
    (*chunks)[i].key = const_cast<char*>(text[i].first.c_str());
    (*chunks)[i].text = const_cast<char*>(text[i].second.c_str());
    (*chunks)[i].text_length = text[i].second.size();
  }
  if (!chunks->empty()) png_set_text(png, info, chunks->data(), static_cast<int>(chunks->size()));
  png_write_info(png, info);
  if (opaque) {
    rgb = new std::vector<std::uint8_t>(static_cast<size_t>(image.width) * 3);
    for (int y = 0; y < image.height; ++y) {
      const std::uint8_t* src = image.at(0, y);
      for (int x = 0; x < image.width; ++x) std::memcpy(rgb->data() + x * 3, src + x * 4, 3);
      png_write_row(png, rgb->data());
    }
  } else {
    for (int y = 0; y < image.height; ++y) png_write_row(png, const_cast<std::uint8_t*>(image.at(0, y)));
  }
  png_write_end(png, info);
  delete chunks;
  delete rgb;
  png_destroy_write_struct(&png, &info);
  return true;
}

// Writes through a temporary file in the same folder, so a reader never sees half a file.
template <class Encode>
bool writeAtomically(const std::string& path, unsigned mode, Encode encode) {
  std::string temporary = path + ".tmp-XXXXXX";
  int fd = ::mkstemp(temporary.data());
  if (fd < 0) return false;
  ::fchmod(fd, mode);
  FILE* f = ::fdopen(fd, "wb");
  if (!f) {
    ::close(fd);
    ::unlink(temporary.c_str());
    return false;
  }
  bool ok = encode(f);
  ok = (std::fclose(f) == 0) && ok;
  if (!ok || ::rename(temporary.c_str(), path.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  return true;
}

}  // namespace

std::optional<RgbaImage> decodeJpeg(const std::string& path, int minLongSide) {
  File f(std::fopen(path.c_str(), "rb"));
  if (!f) return std::nullopt;
  RgbaImage image;
  if (!decodeJpegInto(f.get(), {minLongSide, 0, 0}, &image) || image.width <= 0) return std::nullopt;
  return image;
}

std::optional<RgbaImage> decodeJpegCovering(const std::string& path, int minWidth, int minHeight) {
  File f(std::fopen(path.c_str(), "rb"));
  if (!f) return std::nullopt;
  RgbaImage image;
  if (!decodeJpegInto(f.get(), {0, minWidth, minHeight}, &image) || image.width <= 0) return std::nullopt;
  return image;
}

std::optional<RgbaImage> decodeImageData(const std::string& bytes, int minWidth, int minHeight) {
  if (bytes.size() < 8) return std::nullopt;
  File f(::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"));
  if (!f) return std::nullopt;
  RgbaImage image;
  static constexpr unsigned char kPng[] = {0x89, 'P', 'N', 'G'};
  bool ok = std::memcmp(bytes.data(), kPng, sizeof kPng) == 0
                ? decodePngInto(f.get(), &image, nullptr, true)
                : decodeJpegInto(f.get(), {0, minWidth, minHeight}, &image);
  if (!ok || image.width <= 0) return std::nullopt;
  return image;
}

std::optional<RgbaImage> decodePng(const std::string& path) {
  File f(std::fopen(path.c_str(), "rb"));
  if (!f) return std::nullopt;
  RgbaImage image;
  if (!decodePngInto(f.get(), &image, nullptr, true) || image.width <= 0) return std::nullopt;
  return image;
}

std::optional<PngInfo> readPngInfo(const std::string& path) {
  File f(std::fopen(path.c_str(), "rb"));
  if (!f) return std::nullopt;
  PngInfo info;
  if (!decodePngInto(f.get(), nullptr, &info, false)) return std::nullopt;
  return info;
}

std::optional<RgbaImage> decodeHeif(const std::string& path) {
  heif_context* ctx = heif_context_alloc();
  std::optional<RgbaImage> result;
  heif_image_handle* handle = nullptr;
  heif_image* img = nullptr;
  if (heif_context_read_from_file(ctx, path.c_str(), nullptr).code == heif_error_Ok &&
      heif_context_get_primary_image_handle(ctx, &handle).code == heif_error_Ok &&
      heif_decode_image(handle, &img, heif_colorspace_RGB, heif_chroma_interleaved_RGBA, nullptr).code ==
          heif_error_Ok) {
    int stride = 0;
    const std::uint8_t* data = heif_image_get_plane_readonly(img, heif_channel_interleaved, &stride);
    int w = heif_image_get_width(img, heif_channel_interleaved);
    int h = heif_image_get_height(img, heif_channel_interleaved);
    if (data && w > 0 && h > 0) {
      RgbaImage out(w, h);
      for (int y = 0; y < h; ++y) std::memcpy(out.at(0, y), data + static_cast<size_t>(y) * stride, static_cast<size_t>(w) * 4);
      result = std::move(out);
    }
  }
  if (img) heif_image_release(img);
  if (handle) heif_image_handle_release(handle);
  heif_context_free(ctx);
  return result;
}

std::optional<RgbaImage> decodeVideoFrame(const std::string& path, int maxLongSide) {
  av_log_set_level(AV_LOG_QUIET);
  AVFormatContext* fmt = nullptr;
  if (avformat_open_input(&fmt, path.c_str(), nullptr, nullptr) < 0) return std::nullopt;
  std::optional<RgbaImage> result;
  AVCodecContext* codec = nullptr;
  AVPacket* packet = av_packet_alloc();
  AVFrame* frame = av_frame_alloc();
  int orientation = 1;
  do {
    if (avformat_find_stream_info(fmt, nullptr) < 0) break;
    const AVCodec* decoder = nullptr;
    int index = av_find_best_stream(fmt, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (index < 0 || !decoder) break;
    AVStream* st = fmt->streams[index];
    if (auto* matrix = av_stream_get_side_data(st, AV_PKT_DATA_DISPLAYMATRIX, nullptr)) {
      double r = av_display_rotation_get(reinterpret_cast<const int32_t*>(matrix));
      long deg = std::isnan(r) ? 0 : ((std::lround(r) % 360) + 360) % 360;
      // The matrix turns counter-clockwise; EXIF's numbers name the clockwise turn to show.
      orientation = deg == 90 ? 8 : deg == 180 ? 3 : deg == 270 ? 6 : 1;
    }
    codec = avcodec_alloc_context3(decoder);
    if (!codec || avcodec_parameters_to_context(codec, st->codecpar) < 0) break;
    codec->thread_count = 1;
    if (avcodec_open2(codec, decoder, nullptr) < 0) break;
    bool got = false, draining = false;
    while (!got) {
      if (!draining) {
        int rc = av_read_frame(fmt, packet);
        if (rc < 0) {
          draining = true;
          avcodec_send_packet(codec, nullptr);
        } else {
          if (packet->stream_index == index) avcodec_send_packet(codec, packet);
          av_packet_unref(packet);
        }
      }
      int rc = avcodec_receive_frame(codec, frame);
      if (rc == 0) {
        got = true;
      } else if (rc == AVERROR_EOF || (draining && rc == AVERROR(EAGAIN))) {
        break;
      }
    }
    if (!got || frame->width <= 0 || frame->height <= 0) break;
    auto [w, h] = fitInSquare(frame->width, frame->height, maxLongSide > 0 ? maxLongSide : std::max(frame->width, frame->height));
    SwsContext* sws = sws_getContext(frame->width, frame->height, static_cast<AVPixelFormat>(frame->format), w, h,
                                     AV_PIX_FMT_RGBA, SWS_AREA, nullptr, nullptr, nullptr);
    if (!sws) break;
    RgbaImage out(w, h);
    std::uint8_t* dst[4] = {out.pixels.data(), nullptr, nullptr, nullptr};
    int dstStride[4] = {w * 4, 0, 0, 0};
    sws_scale(sws, frame->data, frame->linesize, 0, frame->height, dst, dstStride);
    sws_freeContext(sws);
    result = oriented(out, orientation);
  } while (false);
  av_frame_free(&frame);
  av_packet_free(&packet);
  avcodec_free_context(&codec);
  avformat_close_input(&fmt);
  return result;
}

std::optional<RgbaImage> decodeAny(const std::string& path, int minLongSide) {
  std::string ext = lowercaseExtension(path);
  if (ext == "jpg" || ext == "jpeg") return decodeJpeg(path, minLongSide);
  if (ext == "png") return decodePng(path);
  if (ext == "heic" || ext == "heif") return decodeHeif(path);
  if (mediaFileKind(path) == MediaFileKind::video) return decodeVideoFrame(path, std::max(minLongSide, 1));
  return std::nullopt;
}

std::pair<int, int> fitInSquare(int width, int height, int box) {
  if (width <= 0 || height <= 0) return {0, 0};
  if (width <= box && height <= box) return {width, height};
  if (width >= height) return {box, std::max(1, static_cast<int>(std::lround(static_cast<double>(height) * box / width)))};
  return {std::max(1, static_cast<int>(std::lround(static_cast<double>(width) * box / height))), box};
}

RgbaImage resized(const RgbaImage& image, int width, int height) {
  if (width == image.width && height == image.height) return image;
  RgbaImage out(width, height);
  SwsContext* sws = sws_getContext(image.width, image.height, AV_PIX_FMT_RGBA, width, height, AV_PIX_FMT_RGBA,
                                   SWS_AREA, nullptr, nullptr, nullptr);
  if (!sws) return out;
  const std::uint8_t* src[4] = {image.pixels.data(), nullptr, nullptr, nullptr};
  int srcStride[4] = {image.width * 4, 0, 0, 0};
  std::uint8_t* dst[4] = {out.pixels.data(), nullptr, nullptr, nullptr};
  int dstStride[4] = {width * 4, 0, 0, 0};
  sws_scale(sws, src, srcStride, 0, image.height, dst, dstStride);
  sws_freeContext(sws);
  return out;
}

RgbaImage coverCropped(const RgbaImage& image, int width, int height) {
  if (image.width <= 0 || image.height <= 0 || width <= 0 || height <= 0) return RgbaImage(std::max(width, 0), std::max(height, 0));
  // The part of the source that fills the box once scaled: cropping first keeps the scaler's work
  // to the pixels that show.
  double scale = std::max(static_cast<double>(width) / image.width, static_cast<double>(height) / image.height);
  int cropW = std::clamp(static_cast<int>(std::lround(width / scale)), 1, image.width);
  int cropH = std::clamp(static_cast<int>(std::lround(height / scale)), 1, image.height);
  int x0 = (image.width - cropW) / 2, y0 = (image.height - cropH) / 2;
  RgbaImage crop(cropW, cropH);
  for (int y = 0; y < cropH; ++y) std::memcpy(crop.at(0, y), image.at(x0, y0 + y), static_cast<size_t>(cropW) * 4);
  return resized(crop, width, height);
}

RgbaImage oriented(const RgbaImage& image, int orientation) {
  if (orientation <= 1 || orientation > 8) return image;
  const int W = image.width, H = image.height;
  bool swap = orientation >= 5;
  RgbaImage out(swap ? H : W, swap ? W : H);
  for (int y = 0; y < out.height; ++y) {
    for (int x = 0; x < out.width; ++x) {
      int sx = x, sy = y;
      switch (orientation) {
        case 2: sx = W - 1 - x; break;
        case 3: sx = W - 1 - x; sy = H - 1 - y; break;
        case 4: sy = H - 1 - y; break;
        case 5: sx = y; sy = x; break;
        case 6: sx = y; sy = H - 1 - x; break;
        case 7: sx = W - 1 - y; sy = H - 1 - x; break;
        case 8: sx = W - 1 - y; sy = x; break;
      }
      std::memcpy(out.at(x, y), image.at(sx, sy), 4);
    }
  }
  return out;
}

bool writePng(const std::string& path, const RgbaImage& image,
              const std::vector<std::pair<std::string, std::string>>& text, unsigned mode) {
  return writeAtomically(path, mode, [&](FILE* f) { return encodePngInto(f, image, text); });
}

bool writeJpeg(const std::string& path, const RgbaImage& image, int quality) {
  return writeAtomically(path, 0644, [&](FILE* f) { return encodeJpegInto(f, image, quality); });
}

}  // namespace nimbrel::desktop
