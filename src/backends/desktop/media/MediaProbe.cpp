#include "backends/desktop/media/MediaProbe.h"

#include "backends/desktop/media/JpegFacts.h"

#include <exiv2/exiv2.hpp>
#ifdef EXV_ENABLE_VIDEO
#include <exiv2/matroskavideo.hpp>
#include <exiv2/quicktimevideo.hpp>
#include <exiv2/riffvideo.hpp>
#endif
#include <libheif/heif.h>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/mem.h>
}

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <cerrno>
#include <memory>
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

std::tm calendarTime(int year, int month, int day, int hour, int minute, int second) {
  std::tm tm{};
  tm.tm_year = year - 1900;
  tm.tm_mon = month - 1;
  tm.tm_mday = day;
  tm.tm_hour = hour;
  tm.tm_min = minute;
  tm.tm_sec = second;
  return tm;
}

std::optional<double> videoTagDate(const char* text) {
  // "2023-05-01T10:00:00.000000Z" or "2023-05-01T12:00:00+0200"
  int y, mo, d, h, mi, s;
  if (std::sscanf(text, "%d-%d-%dT%d:%d:%d", &y, &mo, &d, &h, &mi, &s) != 6) return std::nullopt;
  std::tm tm = calendarTime(y, mo, d, h, mi, s);
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

// The numbers of `text` when it starts with exactly `shape` ('d' a digit, anything else itself).
std::optional<std::array<int, 6>> fixedFields(std::string_view text, std::string_view shape) {
  if (text.size() < shape.size()) return std::nullopt;
  std::array<int, 6> fields{};
  std::size_t field = 0;
  bool inNumber = false;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    if (shape[i] != 'd') {
      if (text[i] != shape[i]) return std::nullopt;
      inNumber = false;
      continue;
    }
    if (text[i] < '0' || text[i] > '9') return std::nullopt;
    if (!inNumber && field++ == fields.size()) return std::nullopt;
    inNumber = true;
    fields[field - 1] = fields[field - 1] * 10 + (text[i] - '0');
  }
  // What follows must not extend the last number, or sscanf would read it on.
  if (text.size() > shape.size() && text[shape.size()] >= '0' && text[shape.size()] <= '9') return std::nullopt;
  return fields;
}

}  // namespace

std::optional<double> parseExifDateTime(std::string_view text, std::string_view offset) {
  int y, mo, d, h, mi, s;
  // The usual "YYYY:MM:DD HH:MM:SS" without sscanf, which showed in profiles of a first index.
  if (auto f = fixedFields(text, "dddd:dd:dd dd:dd:dd")) {
    std::tie(y, mo, d, h, mi, s) = std::tuple(f->at(0), f->at(1), f->at(2), f->at(3), f->at(4), f->at(5));
  } else if (std::sscanf(std::string(text).c_str(), "%d:%d:%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s) != 6) {
    return std::nullopt;
  }
  if (y < 1800) return std::nullopt;
  std::tm tm = calendarTime(y, mo, d, h, mi, s);
  int oh, om;
  char sign;
  bool zoned = false;
  if (auto f = fixedFields(offset.substr(std::min<std::size_t>(offset.size(), 1)), "dd:dd")) {
    sign = offset[0];
    oh = f->at(0);
    om = f->at(1);
    zoned = true;
  } else {
    zoned = std::sscanf(std::string(offset).c_str(), "%c%d:%d", &sign, &oh, &om) == 3;
  }
  // An offset beyond a day is no offset (and its seconds would not fit an int).
  if (zoned && (sign == '+' || sign == '-') && oh >= 0 && oh < 24 && om >= 0 && om < 60) {
    int delta = (oh * 3600 + om * 60) * (sign == '-' ? -1 : 1);
    return static_cast<double>(::timegm(&tm) - delta);
  }
  // A camera's clock is the wall clock where it was: read it in the local zone. mktime would do,
  // but it looks at the zone file again on every call; localtime_r reads it once.
  const time_t asUtc = ::timegm(&tm);
  struct tm local {};
  ::localtime_r(&asUtc, &local);
  time_t guess = asUtc - local.tm_gmtoff;
  // Across a change of offset, the offset at the guess is the one that applies.
  ::localtime_r(&guess, &local);
  return static_cast<double>(asUtc - local.tm_gmtoff);
}

std::optional<std::pair<double, double>> parseIso6709(std::string_view text) {
  double lat, lon;
  std::string t(text);
  if (std::sscanf(t.c_str(), "%lf%lf", &lat, &lon) != 2) return std::nullopt;
  if (std::fabs(lat) > 90 || std::fabs(lon) > 180) return std::nullopt;
  return std::make_pair(lat, lon);
}

namespace {

std::optional<std::string> datumText(const Exiv2::Exifdatum* datum) {
  if (!datum || datum->count() == 0) return std::nullopt;
  std::string v = datum->toString();
  while (!v.empty() && (v.back() == '\0' || v.back() == ' ')) v.pop_back();
  return v.empty() ? std::nullopt : std::optional<std::string>(v);
}

std::optional<double> datumCoordinate(const Exiv2::Exifdatum* datum, const Exiv2::Exifdatum* ref) {
  if (!datum || datum->count() < 3) return std::nullopt;
  double value = 0, unit = 1;
  for (long i = 0; i < 3; ++i) {
    auto r = datum->toRational(i);
    if (r.second == 0) return std::nullopt;
    value += static_cast<double>(r.first) / r.second / unit;
    unit *= 60;
  }
  auto side = datumText(ref);
  if (side && (side->front() == 'S' || side->front() == 'W')) value = -value;
  return value;
}

// The tags a picture is read for, met in one pass: looking each up by its key text builds a key
// string per tag in the picture, which on a large library costs more than the parse itself.
struct WantedTags {
  const Exiv2::Exifdatum *orientation = nullptr, *pixelX = nullptr, *pixelY = nullptr, *dateOriginal = nullptr,
                         *offsetOriginal = nullptr, *lensModel = nullptr, *userComment = nullptr,
                         *latitude = nullptr, *latitudeRef = nullptr, *longitude = nullptr, *longitudeRef = nullptr;

  explicit WantedTags(const Exiv2::ExifData& exif) {
    static const int image = Exiv2::ExifKey("Exif.Image.Orientation").ifdId();
    static const int photo = Exiv2::ExifKey("Exif.Photo.DateTimeOriginal").ifdId();
    static const int gps = Exiv2::ExifKey("Exif.GPSInfo.GPSLatitude").ifdId();
    for (const auto& datum : exif) {
      const int ifd = datum.ifdId();
      const auto tag = datum.tag();
      if (ifd == image) {
        if (tag == 0x0112) orientation = &datum;
      } else if (ifd == photo) {
        switch (tag) {
          case 0xa002: pixelX = &datum; break;
          case 0xa003: pixelY = &datum; break;
          case 0x9003: dateOriginal = &datum; break;
          case 0x9011: offsetOriginal = &datum; break;
          case 0xa434: lensModel = &datum; break;
          case 0x9286: userComment = &datum; break;
        }
      } else if (ifd == gps) {
        switch (tag) {
          case 0x0001: latitudeRef = &datum; break;
          case 0x0002: latitude = &datum; break;
          case 0x0003: longitudeRef = &datum; break;
          case 0x0004: longitude = &datum; break;
        }
      }
    }
  }
};

// Exiv2 knows a picture by its content, so a damaged or misnamed file can reach its movie readers,
// which can loop for a very long time over a box that claims gigabytes. Movies are libavformat's.
bool isMovieContainer(const Exiv2::Image& image) {
#ifdef EXV_ENABLE_VIDEO
  // asfvideo.hpp does not compile on its own (Exiv2 0.27); 24 is the number it gives ASF.
  constexpr int asf = 24;
  int type = image.imageType();
  return type == Exiv2::ImageType::qtime || type == Exiv2::ImageType::riff || type == Exiv2::ImageType::mkv ||
         type == asf;
#else
  return false;
#endif
}

// What a picture's metadata says, into `facts`; false for no picture at all.
bool readImageFacts(Exiv2::Image& image, MediaFacts& facts) {
  if (isMovieContainer(image)) return false;
  image.readMetadata();
  facts.width = image.pixelWidth();
  facts.height = image.pixelHeight();
  WantedTags tags(image.exifData());
  if (facts.width <= 0 || facts.height <= 0) {
    auto w = datumText(tags.pixelX);
    auto h = datumText(tags.pixelY);
    if (w && h) {
      facts.width = std::atoi(w->c_str());
      facts.height = std::atoi(h->c_str());
    }
  }
  if (auto o = datumText(tags.orientation)) {
    int v = std::atoi(o->c_str());
    if (v >= 1 && v <= 8) facts.orientation = v;
  }
  if (auto when = datumText(tags.dateOriginal)) {
    facts.created = parseExifDateTime(*when, datumText(tags.offsetOriginal).value_or(""));
  }
  auto lat = datumCoordinate(tags.latitude, tags.latitudeRef);
  auto lon = datumCoordinate(tags.longitude, tags.longitudeRef);
  if (lat && lon && std::fabs(*lat) <= 90 && std::fabs(*lon) <= 180) {
    facts.latitude = lat;
    facts.longitude = lon;
  }
  // Phones name the lens they used: "... front camera ...".
  auto lens = lower(datumText(tags.lensModel).value_or(""));
  if (lens.find("front") != std::string::npos) facts.selfie = true;
  const auto& xmp = image.xmpData();
  if (!xmp.empty()) {
    auto projection = xmp.findKey(Exiv2::XmpKey("Xmp.GPano.ProjectionType"));
    if (projection != xmp.end() && !projection->toString().empty()) facts.panorama = true;
  }
  auto user = lower(datumText(tags.userComment).value_or(""));
  if (user.find("screenshot") != std::string::npos) facts.screenshot = true;
  return true;
}

// A JPEG's metadata and size come before its picture data. Handing Exiv2 the file's head read in
// one call saves the several calls its own file reading makes: on a large library the first index
// spends more time in the kernel than in parsing. The whole flag says the head is the whole file.
constexpr std::size_t kJpegHeadBytes = 256 * 1024;

// A plain JPEG's segments fit in its first few kilobytes; one with a large EXIF thumbnail needs
// more. So the head is read in two steps, the second only when the plain reader asks for it.
constexpr std::size_t kJpegFirstBytes = 8 * 1024;

// The head lands in a buffer kept by the thread (zeroing a fresh one per file showed in profiles).
class HeadReader {
 public:
  explicit HeadReader(const std::string& path) : fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    thread_local std::unique_ptr<char[]> buffer;
    if (!buffer) buffer.reset(new char[kJpegHeadBytes]);
    buffer_ = buffer.get();
  }
  ~HeadReader() {
    if (fd_ >= 0) ::close(fd_);
  }
  HeadReader(const HeadReader&) = delete;
  HeadReader& operator=(const HeadReader&) = delete;

  // Reads on until `limit` bytes or the end of the file.
  std::string_view extend(std::size_t limit) {
    while (fd_ >= 0 && !whole_ && got_ < limit) {
      ssize_t n = ::read(fd_, buffer_ + got_, limit - got_);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) {
        whole_ = n == 0;
        break;
      }
      got_ += static_cast<std::size_t>(n);
    }
    return {buffer_, got_};
  }
  bool whole() const { return whole_; }

 private:
  int fd_;
  char* buffer_;
  std::size_t got_ = 0;
  bool whole_ = false;
};

bool fromPlainReader(std::string_view head, MediaFacts& facts) {
  auto plain = readJpegFacts(head);
  if (!plain) return false;
  facts = plain->facts;
  if (plain->dateOriginal) facts.created = parseExifDateTime(*plain->dateOriginal, plain->offsetOriginal.value_or(""));
  return true;
}

// True when the head told everything; false sends the caller to the file itself.
bool readJpegHead(const std::string& path, MediaFacts& facts, bool& broken) {
  HeadReader reader(path);
  if (fromPlainReader(reader.extend(kJpegFirstBytes), facts)) return true;
  std::string_view head = reader.extend(kJpegHeadBytes);
  const bool whole = reader.whole();
  if (head.empty()) return false;
  if (head.size() > kJpegFirstBytes && fromPlainReader(head, facts)) return true;
  try {
    auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(head.data()), static_cast<long>(head.size()));
    if (!image.get()) {
      broken = whole;
      return whole;
    }
    if (!readImageFacts(*image, facts)) {
      broken = true;
      return false;
    }
    return whole || (facts.width > 0 && facts.height > 0);
  } catch (const Exiv2::AnyError&) {
    broken = whole;
    return whole;
  }
}

}  // namespace

std::optional<MediaFacts> readJpegHeadWithExiv2(std::string_view head) {
  initialiseExiv2Once();
  MediaFacts facts;
  facts.kind = PHAssetMediaType::image;
  try {
    auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(head.data()), static_cast<long>(head.size()));
    if (!image.get() || !readImageFacts(*image, facts)) return std::nullopt;
    return facts;
  } catch (const Exiv2::AnyError&) {
    return std::nullopt;
  }
}

std::optional<MediaFacts> probeImage(const std::string& path) {
  initialiseExiv2Once();
  MediaFacts facts;
  facts.kind = PHAssetMediaType::image;
  std::string ext = lowercaseExtension(path);
  bool fromHead = false;
  if (ext == "jpg" || ext == "jpeg") {
    bool broken = false;
    fromHead = readJpegHead(path, facts, broken);
    if (broken) return std::nullopt;
    if (!fromHead) {
      facts = MediaFacts{};
      facts.kind = PHAssetMediaType::image;
    }
  }
  if (!fromHead) {
    try {
      auto image = Exiv2::ImageFactory::open(path);
      if (!image.get()) return std::nullopt;
      if (!readImageFacts(*image, facts) && ext != "heic" && ext != "heif") return std::nullopt;
    } catch (const Exiv2::AnyError&) {
      if (ext != "heic" && ext != "heif") return std::nullopt;
    } catch (const std::exception&) {
      return std::nullopt;
    }
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

// A damaged header can claim tables of any size: a fuzzed 1 KB movie had libavformat ask for
// 900 MB in one block. Neither a movie's metadata nor one decoded 8K frame needs a quarter of that.
void limitAvAllocationsOnce() {
  static std::once_flag once;
  std::call_once(once, [] { av_max_alloc(256u << 20); });
}

struct FormatContext {
  AVFormatContext* ctx = nullptr;
  explicit FormatContext(const std::string& path) {
    limitAvAllocationsOnce();
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
