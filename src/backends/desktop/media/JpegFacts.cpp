#include "backends/desktop/media/JpegFacts.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace nimbrel::desktop {

namespace {

// A TIFF structure inside the EXIF segment, every read bounds-checked.
class Tiff {
 public:
  explicit Tiff(std::string_view data) : d_(data) {}

  bool header(std::uint32_t& ifd0) {
    if (d_.size() < 8) return false;
    if (d_.substr(0, 2) == "II") {
      big_ = false;
    } else if (d_.substr(0, 2) == "MM") {
      big_ = true;
    } else {
      return false;
    }
    std::uint32_t magic = 0;
    return u16(2, magic) && magic == 42 && u32(4, ifd0);
  }

  bool u16(std::size_t at, std::uint32_t& v) const {
    if (at > d_.size() || d_.size() - at < 2) return false;
    auto b = reinterpret_cast<const unsigned char*>(d_.data() + at);
    v = big_ ? (b[0] << 8 | b[1]) : (b[1] << 8 | b[0]);
    return true;
  }
  bool u32(std::size_t at, std::uint32_t& v) const {
    std::uint32_t hi = 0, lo = 0;
    if (!u16(at, big_ ? hi : lo) || !u16(at + 2, big_ ? lo : hi)) return false;
    v = hi << 16 | lo;
    return true;
  }

  struct Entry {
    std::uint32_t tag = 0, type = 0, count = 0;
    std::string_view value;  // the value's bytes, inline or at their offset
  };

  // The entries of the IFD at `offset`; false on anything out of bounds or of an unknown type.
  template <typename Visit>
  bool entries(std::uint32_t offset, Visit visit) const {
    std::uint32_t n = 0;
    if (!u16(offset, n)) return false;
    for (std::uint32_t i = 0; i < n; ++i) {
      std::size_t at = offset + 2 + 12 * static_cast<std::size_t>(i);
      Entry e;
      if (!u16(at, e.tag) || !u16(at + 2, e.type) || !u32(at + 4, e.count)) return false;
      static constexpr std::uint8_t kSize[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
      if (e.type == 0 || e.type >= std::size(kSize)) return false;
      std::uint64_t bytes = static_cast<std::uint64_t>(kSize[e.type]) * e.count;
      std::size_t from = at + 8;
      if (bytes > 4) {
        std::uint32_t o = 0;
        if (!u32(at + 8, o)) return false;
        from = o;
      }
      if (from > d_.size() || d_.size() - from < bytes) return false;
      e.value = d_.substr(from, static_cast<std::size_t>(bytes));
      if (!visit(e)) return false;
    }
    return true;
  }

  std::uint32_t at(const Entry& e, std::size_t i) const {
    std::uint32_t v = 0;
    u32(static_cast<std::size_t>(e.value.data() - d_.data()) + i, v);
    return v;
  }
  std::uint32_t short0(const Entry& e) const {
    std::uint32_t v = 0;
    u16(static_cast<std::size_t>(e.value.data() - d_.data()), v);
    return v;
  }

 private:
  std::string_view d_;
  bool big_ = false;
};

// Text of an ASCII tag as Exiv2 gives it: up to the first NUL, trailing NULs and spaces dropped.
std::optional<std::string_view> asciiText(const Tiff::Entry& e) {
  if (e.type != 2 || e.count == 0) return std::nullopt;
  std::string_view v = e.value.substr(0, e.value.find('\0'));
  while (!v.empty() && v.back() == ' ') v.remove_suffix(1);
  return v.empty() ? std::nullopt : std::optional(v);
}

bool containsFolded(std::string_view text, std::string_view word) {
  for (std::size_t i = 0; i + word.size() <= text.size(); ++i) {
    std::size_t k = 0;
    while (k < word.size() && (text[i + k] | 0x20) == word[k]) ++k;
    if (k == word.size()) return true;
  }
  return false;
}

// The EXIF segment's tags; false sends the file to Exiv2.
bool readExif(std::string_view tiffData, JpegFacts& out) {
  Tiff tiff(tiffData);
  std::uint32_t ifd0 = 0, exifIfd = 0, gpsIfd = 0;
  if (!tiff.header(ifd0)) return false;
  bool sawOrientation = false;
  bool ok = tiff.entries(ifd0, [&](const Tiff::Entry& e) {
    switch (e.tag) {
      case 0x0112:  // Orientation
        if (e.type != 3 || e.count != 1 || sawOrientation) return false;
        sawOrientation = true;
        if (auto v = tiff.short0(e); v >= 1 && v <= 8) out.facts.orientation = static_cast<int>(v);
        return true;
      case 0x8769:  // the Exif IFD
      case 0x8825: {  // the GPS IFD
        std::uint32_t& ifd = e.tag == 0x8769 ? exifIfd : gpsIfd;
        // A second pointer to either: which one Exiv2 follows is its business.
        if (e.type != 4 || e.count != 1 || ifd != 0) return false;
        ifd = tiff.at(e, 0);
        return ifd != 0;
      }
      case 0x02bc:  // XMP inside the EXIF: Exiv2 reads it as XMP
        return false;
      default:
        return true;
    }
  });
  // Exiv2 reads no directory twice.
  if (!ok || (exifIfd != 0 && (exifIfd == gpsIfd || exifIfd == ifd0)) || (gpsIfd != 0 && gpsIfd == ifd0)) return false;
  if (exifIfd != 0) {
    bool sawDate = false, sawOffset = false, sawLens = false, sawComment = false;
    ok = tiff.entries(exifIfd, [&](const Tiff::Entry& e) {
      auto once = [&](bool& seen) { return !std::exchange(seen, true); };
      switch (e.tag) {
        case 0x9003:
          if (e.type != 2 || !once(sawDate)) return false;
          out.dateOriginal = asciiText(e);
          return true;
        case 0x9011:
          if (e.type != 2 || !once(sawOffset)) return false;
          out.offsetOriginal = asciiText(e);
          return true;
        case 0xa434:  // phones name the lens they used: "... front camera ..."
          if (e.type != 2 || !once(sawLens)) return false;
          out.facts.selfie = containsFolded(asciiText(e).value_or(""), "front");
          return true;
        case 0x9286:  // only the ASCII comment is read here; other character sets are Exiv2's
          if (e.type != 7 || !once(sawComment)) return false;
          if (e.count == 0) return true;
          if (e.value.size() < 8 || e.value.substr(0, 8) != std::string_view("ASCII\0\0\0", 8)) return false;
          // Exiv2 ends an ASCII comment at its first NUL.
          out.facts.screenshot = containsFolded(e.value.substr(8, e.value.find('\0', 8) - 8), "screenshot");
          return true;
        default:
          return true;
      }
    });
    if (!ok) return false;
  }
  if (gpsIfd != 0) {
    std::optional<double> coordinate[2];
    bool negative[2] = {};
    int seen[5] = {};
    ok = tiff.entries(gpsIfd, [&](const Tiff::Entry& e) {
      if (e.tag < 1 || e.tag > 4) return true;
      if (seen[e.tag]++) return false;
      if (e.tag == 1 || e.tag == 3) {
        if (e.type != 2) return false;
        // Either side letter turns either coordinate, as Exiv2's readers always have here.
        auto side = asciiText(e);
        negative[e.tag == 1 ? 0 : 1] = side && (side->front() == 'S' || side->front() == 'W');
        return true;
      }
      if (e.type != 5) return false;
      if (e.count < 3) return true;
      double value = 0, unit = 1;
      for (std::size_t i = 0; i < 3; ++i) {
        // Exiv2 hands unsigned rationals over as signed ones.
        auto num = static_cast<std::int32_t>(tiff.at(e, 8 * i)), den = static_cast<std::int32_t>(tiff.at(e, 8 * i + 4));
        if (den == 0) return true;
        value += static_cast<double>(num) / den / unit;
        unit *= 60;
      }
      coordinate[e.tag == 2 ? 0 : 1] = value;
      return true;
    });
    if (!ok) return false;
    if (coordinate[0] && coordinate[1]) {
      double lat = negative[0] ? -*coordinate[0] : *coordinate[0], lon = negative[1] ? -*coordinate[1] : *coordinate[1];
      if (std::fabs(lat) <= 90 && std::fabs(lon) <= 180) {
        out.facts.latitude = lat;
        out.facts.longitude = lon;
      }
    }
  }
  return true;
}

}  // namespace

std::optional<JpegFacts> readJpegFacts(std::string_view head) {
  auto byte = [&](std::size_t i) { return static_cast<unsigned char>(head[i]); };
  if (head.size() < 4 || byte(0) != 0xff || byte(1) != 0xd8) return std::nullopt;
  JpegFacts out;
  out.facts.kind = PHAssetMediaType::image;
  bool sawExif = false;
  std::size_t at = 2;
  // Segments up to the picture data, as Exiv2 walks them.
  while (true) {
    if (at + 4 > head.size() || byte(at) != 0xff) return std::nullopt;
    unsigned marker = byte(at + 1);
    if (marker == 0xda) break;  // start of scan: the picture data follow
    // Fill bytes, stand-alone markers and the end of the picture before the data are not plain.
    if (marker == 0xff || marker == 0xd9 || marker == 0x01 || (marker >= 0xd0 && marker <= 0xd7)) return std::nullopt;
    std::size_t length = byte(at + 2) << 8 | byte(at + 3);
    if (length < 2 || head.size() - at - 2 < length) return std::nullopt;
    std::string_view data = head.substr(at + 4, length - 2);
    if (marker == 0xe1) {
      if (data.substr(0, 6) == std::string_view("Exif\0\0", 6)) {
        if (!sawExif && (data.size() <= 6 || !readExif(data.substr(6), out))) return std::nullopt;
        sawExif = true;
      } else if (data.substr(0, 29) == std::string_view("http://ns.adobe.com/xap/1.0/\0", 29) ||
                 data.substr(0, 35) == "http://ns.adobe.com/xmp/extension/") {
        return std::nullopt;
      }
    } else if (marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc) {
      // Frames other than the common ones, or a height given later in the data, are Exiv2's.
      if (marker > 0xc2 || out.facts.height != 0 || data.size() < 6) return std::nullopt;
      out.facts.height = byte(at + 5) << 8 | byte(at + 6);
      out.facts.width = byte(at + 7) << 8 | byte(at + 8);
      if (out.facts.height == 0 || out.facts.width == 0) return std::nullopt;
    }
    at += 2 + length;
  }
  if (out.facts.width == 0) return std::nullopt;
  return out;
}

}  // namespace nimbrel::desktop
