#include "backends/desktop/MediaProbe.h"

#include <exiv2/exiv2.hpp>
#include <libheif/heif.h>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/display.h>
}

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace nimbrel::desktop {

namespace {

void initialiseExiv2Once() {
  static std::once_flag once;
  std::call_once(once, [] {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    // The XMP toolkit must be set up before threads parse at once.
    Exiv2::XmpParser::initialize();
    Exiv2::enableBMFF(true);
  });
}

std::string lower(std::string_view s) {
  std::string out(s);
  for (auto& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::optional<std::string> exifText(const Exiv2::ExifData& exif, const char* key) {
  auto it = exif.findKey(Exiv2::ExifKey(key));
  if (it == exif.end() || it->count() == 0) return std::nullopt;
  std::string v = it->toString();
  while (!v.empty() && (v.back() == '\0' || v.back() == ' ')) v.pop_back();
  return v.empty() ? std::nullopt : std::optional<std::string>(v);
}

std::optional<double> gpsCoordinate(const Exiv2::ExifData& exif, const char* key, const char* refKey) {
  auto it = exif.findKey(Exiv2::ExifKey(key));
  if (it == exif.end() || it->count() < 3) return std::nullopt;
  double value = 0, unit = 1;
  for (long i = 0; i < 3; ++i) {
    auto r = it->toRational(i);
    if (r.second == 0) return std::nullopt;
    value += static_cast<double>(r.first) / r.second / unit;
    unit *= 60;
  }
  auto ref = exifText(exif, refKey);
  if (ref && (ref->front() == 'S' || ref->front() == 'W')) value = -value;
  return value;
}

std::optional<double> videoTagDate(const char* text) {
  // "2023-05-01T10:00:00.000000Z" or "2023-05-01T12:00:00+0200"
  int y, mo, d, h, mi, s;
  if (std::sscanf(text, "%d-%d-%dT%d:%d:%d", &y, &mo, &d, &h, &mi, &s) != 6) return std::nullopt;
  std::tm tm{};
  tm.tm_year = y - 1900;
  tm.tm_mon = mo - 1;
  tm.tm_mday = d;
  tm.tm_hour = h;
  tm.tm_min = mi;
  tm.tm_sec = s;
  double seconds = static_cast<double>(::timegm(&tm));
  std::string_view rest(text);
  rest = rest.substr(std::min<size_t>(rest.size(), 19));
  while (!rest.empty() && (rest.front() == '.' || std::isdigit(static_cast<unsigned char>(rest.front())))) {
    rest.remove_prefix(1);
  }
  if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) {
    int sign = rest.front() == '-' ? -1 : 1;
    std::string digits;
    for (char c : rest.substr(1)) {
      if (std::isdigit(static_cast<unsigned char>(c))) digits += c;
    }
    if (digits.size() >= 4) {
      seconds -= sign * (std::stoi(digits.substr(0, 2)) * 3600 + std::stoi(digits.substr(2, 2)) * 60);
    }
  }
  return seconds;
}

}  // namespace

std::string lowercaseExtension(std::string_view path) {
  auto slash = path.rfind('/');
  auto dot = path.rfind('.');
  if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) return {};
  return lower(path.substr(dot + 1));
}

MediaFileKind mediaFileKind(std::string_view path) {
  static const char* images[] = {"jpg", "jpeg", "png", "heic", "heif", "gif", "webp", "tif", "tiff", "bmp", "dng"};
  static const char* videos[] = {"mov", "mp4", "m4v", "avi", "mkv", "webm", "3gp"};
  static const char* audio[] = {"mp3", "m4a", "flac", "ogg", "opus", "wav", "aac", "oga"};
  std::string ext = lowercaseExtension(path);
  if (ext.empty()) return MediaFileKind::none;
  for (auto e : images) if (ext == e) return MediaFileKind::image;
  for (auto e : videos) if (ext == e) return MediaFileKind::video;
  for (auto e : audio) if (ext == e) return MediaFileKind::audio;
  return MediaFileKind::none;
}

std::optional<double> parseExifDateTime(std::string_view text, std::string_view offset) {
  int y, mo, d, h, mi, s;
  std::string t(text);
  if (std::sscanf(t.c_str(), "%d:%d:%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s) != 6 || y < 1800) return std::nullopt;
  std::tm tm{};
  tm.tm_year = y - 1900;
  tm.tm_mon = mo - 1;
  tm.tm_mday = d;
  tm.tm_hour = h;
  tm.tm_min = mi;
  tm.tm_sec = s;
  int oh, om;
  char sign;
  std::string o(offset);
  if (std::sscanf(o.c_str(), "%c%d:%d", &sign, &oh, &om) == 3 && (sign == '+' || sign == '-')) {
    int delta = (oh * 3600 + om * 60) * (sign == '-' ? -1 : 1);
    return static_cast<double>(::timegm(&tm) - delta);
  }
  // A camera's clock is the wall clock where it was: read it in the local zone.
  tm.tm_isdst = -1;
  return static_cast<double>(std::mktime(&tm));
}

std::optional<std::pair<double, double>> parseIso6709(std::string_view text) {
  double lat, lon;
  std::string t(text);
  if (std::sscanf(t.c_str(), "%lf%lf", &lat, &lon) != 2) return std::nullopt;
  if (std::fabs(lat) > 90 || std::fabs(lon) > 180) return std::nullopt;
  return std::make_pair(lat, lon);
}

std::optional<MediaFacts> probeImage(const std::string& path) {
  initialiseExiv2Once();
  MediaFacts facts;
  facts.kind = PHAssetMediaType::image;
  std::string ext = lowercaseExtension(path);
  try {
    auto image = Exiv2::ImageFactory::open(path);
    if (!image.get()) return std::nullopt;
    image->readMetadata();
    facts.width = image->pixelWidth();
    facts.height = image->pixelHeight();
    const auto& exif = image->exifData();
    if (facts.width <= 0 || facts.height <= 0) {
      auto w = exifText(exif, "Exif.Photo.PixelXDimension");
      auto h = exifText(exif, "Exif.Photo.PixelYDimension");
      if (w && h) {
        facts.width = std::atoi(w->c_str());
        facts.height = std::atoi(h->c_str());
      }
    }
    if (auto o = exifText(exif, "Exif.Image.Orientation")) {
      int v = std::atoi(o->c_str());
      if (v >= 1 && v <= 8) facts.orientation = v;
    }
    if (auto when = exifText(exif, "Exif.Photo.DateTimeOriginal")) {
      facts.created = parseExifDateTime(*when, exifText(exif, "Exif.Photo.OffsetTimeOriginal").value_or(""));
    }
    auto lat = gpsCoordinate(exif, "Exif.GPSInfo.GPSLatitude", "Exif.GPSInfo.GPSLatitudeRef");
    auto lon = gpsCoordinate(exif, "Exif.GPSInfo.GPSLongitude", "Exif.GPSInfo.GPSLongitudeRef");
    if (lat && lon && std::fabs(*lat) <= 90 && std::fabs(*lon) <= 180) {
      facts.latitude = lat;
      facts.longitude = lon;
    }
    // Phones name the lens they used: "... front camera ...".
    auto lens = lower(exifText(exif, "Exif.Photo.LensModel").value_or(""));
    if (lens.find("front") != std::string::npos) facts.selfie = true;
    const auto& xmp = image->xmpData();
    auto projection = xmp.findKey(Exiv2::XmpKey("Xmp.GPano.ProjectionType"));
    if (projection != xmp.end() && !projection->toString().empty()) facts.panorama = true;
    auto user = lower(exifText(exif, "Exif.Photo.UserComment").value_or(""));
    if (user.find("screenshot") != std::string::npos) facts.screenshot = true;
  } catch (const Exiv2::AnyError&) {
    if (ext != "heic" && ext != "heif") return std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
  if ((facts.width <= 0 || facts.height <= 0) && (ext == "heic" || ext == "heif")) {
    heif_context* ctx = heif_context_alloc();
    if (heif_context_read_from_file(ctx, path.c_str(), nullptr).code == heif_error_Ok) {
      heif_image_handle* handle = nullptr;
      if (heif_context_get_primary_image_handle(ctx, &handle).code == heif_error_Ok) {
        // The primary image's size is as shown: HEIF applies its own rotation.
        facts.width = heif_image_handle_get_width(handle);
        facts.height = heif_image_handle_get_height(handle);
        facts.orientation = 1;
        heif_image_handle_release(handle);
      }
    }
    heif_context_free(ctx);
  }
  if (facts.width <= 0 || facts.height <= 0) return std::nullopt;
  if (facts.orientation >= 5) std::swap(facts.width, facts.height);
  std::string name = lower(path.substr(path.rfind('/') + 1));
  if (name.find("selfie") != std::string::npos) facts.selfie = true;
  if (name.rfind("pano", 0) == 0) facts.panorama = true;
  if (name.rfind("screenshot", 0) == 0) facts.screenshot = true;
  int longSide = std::max(facts.width, facts.height), shortSide = std::min(facts.width, facts.height);
  if (shortSide > 0 && longSide >= 2 * shortSide) facts.panorama = true;
  return facts;
}

namespace {

struct FormatContext {
  AVFormatContext* ctx = nullptr;
  explicit FormatContext(const std::string& path) {
    if (avformat_open_input(&ctx, path.c_str(), nullptr, nullptr) < 0) {
      ctx = nullptr;
      return;
    }
    if (avformat_find_stream_info(ctx, nullptr) < 0) {
      avformat_close_input(&ctx);
      ctx = nullptr;
    }
  }
  ~FormatContext() {
    if (ctx) avformat_close_input(&ctx);
  }
};

double durationOf(AVFormatContext* ctx) {
  if (ctx->duration != AV_NOPTS_VALUE && ctx->duration > 0) return static_cast<double>(ctx->duration) / AV_TIME_BASE;
  double best = 0;
  for (unsigned i = 0; i < ctx->nb_streams; ++i) {
    auto* st = ctx->streams[i];
    if (st->duration != AV_NOPTS_VALUE && st->duration > 0) best = std::max(best, st->duration * av_q2d(st->time_base));
  }
  return best;
}

const char* tag(AVDictionary* dict, const char* key) {
  auto* e = av_dict_get(dict, key, nullptr, 0);
  return e ? e->value : nullptr;
}

}  // namespace

std::optional<MediaFacts> probeVideo(const std::string& path) {
  av_log_set_level(AV_LOG_QUIET);
  FormatContext f(path);
  if (!f.ctx) return std::nullopt;
  int index = av_find_best_stream(f.ctx, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (index < 0) return std::nullopt;
  auto* st = f.ctx->streams[index];
  MediaFacts facts;
  facts.kind = PHAssetMediaType::video;
  facts.width = st->codecpar->width;
  facts.height = st->codecpar->height;
  facts.duration = durationOf(f.ctx);
  if (auto* matrix = av_stream_get_side_data(st, AV_PKT_DATA_DISPLAYMATRIX, nullptr)) {
    double rotation = av_display_rotation_get(reinterpret_cast<const int32_t*>(matrix));
    if (!std::isnan(rotation) && std::lround(std::fabs(rotation)) % 180 == 90) std::swap(facts.width, facts.height);
  }
  for (const char* key : {"com.apple.quicktime.creationdate", "creation_time"}) {
    const char* value = tag(f.ctx->metadata, key);
    if (!value) value = tag(st->metadata, key);
    if (value) {
      facts.created = videoTagDate(value);
      if (facts.created) break;
    }
  }
  for (const char* key : {"com.apple.quicktime.location.ISO6709", "location"}) {
    if (const char* value = tag(f.ctx->metadata, key)) {
      if (auto place = parseIso6709(value)) {
        facts.latitude = place->first;
        facts.longitude = place->second;
        break;
      }
    }
  }
  if (facts.width <= 0 || facts.height <= 0) return std::nullopt;
  return facts;
}

std::optional<double> probeDuration(const std::string& path) {
  av_log_set_level(AV_LOG_QUIET);
  FormatContext f(path);
  if (!f.ctx) return std::nullopt;
  double d = durationOf(f.ctx);
  if (d <= 0) return std::nullopt;
  return d;
}

}  // namespace nimbrel::desktop
