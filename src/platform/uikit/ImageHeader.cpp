#include "platform/uikit/ImageHeader.h"

#include <array>
#include <cstring>

namespace {

std::uint32_t be32(const Data& b, size_t at) {
  return (std::uint32_t{b[at]} << 24) | (std::uint32_t{b[at + 1]} << 16) | (std::uint32_t{b[at + 2]} << 8) | b[at + 3];
}
std::uint16_t be16(const Data& b, size_t at) { return static_cast<std::uint16_t>((b[at] << 8) | b[at + 1]); }
std::uint16_t le16(const Data& b, size_t at) { return static_cast<std::uint16_t>(b[at] | (b[at + 1] << 8)); }
std::int32_t le32(const Data& b, size_t at) {
  return static_cast<std::int32_t>(b[at] | (b[at + 1] << 8) | (b[at + 2] << 16) | (std::uint32_t{b[at + 3]} << 24));
}

std::uint32_t crc32(const std::uint8_t* data, size_t size) {
  std::uint32_t crc = 0xFFFFFFFFu;
  for (size_t i = 0; i < size; ++i) {
    crc ^= data[i];
    for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

void putBe32(Data& out, std::uint32_t v) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(v >> shift));
}

void chunk(Data& out, const char* type, const Data& body) {
  putBe32(out, static_cast<std::uint32_t>(body.size()));
  Data typed(type, type + 4);
  typed.insert(typed.end(), body.begin(), body.end());
  out.insert(out.end(), typed.begin(), typed.end());
  putBe32(out, crc32(typed.data(), typed.size()));
}

}  // namespace

std::optional<ImageHeader> ImageHeader::read(const Data& b) {
  static const std::uint8_t kPng[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (b.size() >= 24 && std::memcmp(b.data(), kPng, 8) == 0 && std::memcmp(b.data() + 12, "IHDR", 4) == 0) {
    return ImageHeader{static_cast<int>(be32(b, 16)), static_cast<int>(be32(b, 20)), "png"};
  }
  if (b.size() >= 10 && (std::memcmp(b.data(), "GIF87a", 6) == 0 || std::memcmp(b.data(), "GIF89a", 6) == 0)) {
    return ImageHeader{le16(b, 6), le16(b, 8), "gif"};
  }
  if (b.size() >= 26 && b[0] == 'B' && b[1] == 'M') {
    int h = le32(b, 22);
    return ImageHeader{le32(b, 18), h < 0 ? -h : h, "bmp"};
  }
  if (b.size() >= 4 && b[0] == 0xFF && b[1] == 0xD8) {
    // Walk the markers to the first start-of-frame.
    size_t at = 2;
    while (at + 4 <= b.size()) {
      if (b[at] != 0xFF) return std::nullopt;
      std::uint8_t marker = b[at + 1];
      if (marker == 0xD8 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {
        at += 2;
        continue;
      }
      std::uint16_t length = be16(b, at + 2);
      bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
      if (frame) {
        if (at + 9 > b.size()) return std::nullopt;
        return ImageHeader{be16(b, at + 7), be16(b, at + 5), "jpeg"};
      }
      if (length < 2) return std::nullopt;
      at += 2 + length;
    }
  }
  return std::nullopt;
}

Data ImageHeader::placeholderPNG(int width, int height) {
  Data out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  Data header;
  putBe32(header, static_cast<std::uint32_t>(width));
  putBe32(header, static_cast<std::uint32_t>(height));
  header.insert(header.end(), {8, 0, 0, 0, 0});  // 8-bit greyscale
  chunk(out, "IHDR", header);
  chunk(out, "IEND", {});
  return out;
}
