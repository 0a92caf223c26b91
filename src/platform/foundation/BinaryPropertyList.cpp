#include "platform/foundation/BinaryPropertyList.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr char kMagic[8] = {'b', 'p', 'l', 'i', 's', 't', '0', '0'};
constexpr size_t kHeaderSize = 8;
constexpr size_t kTrailerSize = 32;

constexpr std::uint8_t kFalse = 0x08;
constexpr std::uint8_t kTrue = 0x09;
constexpr std::uint8_t kInt = 0x10;
constexpr std::uint8_t kReal64 = 0x23;
constexpr std::uint8_t kDate = 0x33;
constexpr std::uint8_t kData = 0x40;
constexpr std::uint8_t kAscii = 0x50;
constexpr std::uint8_t kUtf16 = 0x60;
constexpr std::uint8_t kArray = 0xA0;
constexpr std::uint8_t kDict = 0xD0;

// Bytes needed so that every value below `limit` fits; CoreFoundation's reader wants
// the object count and the offset table's position themselves to be out of reach.
std::uint8_t bytesToExceed(std::uint64_t value) {
  std::uint8_t n = 1;
  while (n < 8 && (value >> (8 * n)) != 0) ++n;
  return n;
}

std::uint64_t readBE(const std::uint8_t* p, size_t n) {
  std::uint64_t v = 0;
  for (size_t i = 0; i < n; ++i) v = (v << 8) | p[i];
  return v;
}

std::string hexByte(std::uint8_t b) {
  constexpr char kDigits[] = "0123456789abcdef";
  return std::string("0x") + kDigits[b >> 4] + kDigits[b & 15];
}

bool isAscii(const std::string& s) {
  const char* p = s.data();
  size_t n = s.size();
  while (n >= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    if (w & 0x8080808080808080ull) return false;
    p += 8;
    n -= 8;
  }
  for (; n > 0; --n, ++p) {
    if (static_cast<unsigned char>(*p) >= 0x80) return false;
  }
  return true;
}

// Strict UTF-8 (no overlongs, no surrogates, nothing past U+10FFFF) to UTF-16 code units.
bool utf8ToUtf16(const std::string& s, std::vector<std::uint16_t>& out) {
  out.clear();
  const auto* p = reinterpret_cast<const std::uint8_t*>(s.data());
  const auto* end = p + s.size();
  while (p < end) {
    std::uint32_t c = *p++;
    if (c < 0x80) {
      out.push_back(static_cast<std::uint16_t>(c));
      continue;
    }
    int extra;
    std::uint32_t min;
    if (c >= 0xC2 && c <= 0xDF) {
      extra = 1, min = 0x80, c &= 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      extra = 2, min = 0x800, c &= 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      extra = 3, min = 0x10000, c &= 0x07;
    } else {
      return false;
    }
    if (end - p < extra) return false;
    for (int i = 0; i < extra; ++i) {
      if ((p[i] & 0xC0) != 0x80) return false;
      c = (c << 6) | (p[i] & 0x3F);
    }
    p += extra;
    if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
    if (c >= 0x10000) {
      c -= 0x10000;
      out.push_back(static_cast<std::uint16_t>(0xD800 | (c >> 10)));
      out.push_back(static_cast<std::uint16_t>(0xDC00 | (c & 0x3FF)));
    } else {
      out.push_back(static_cast<std::uint16_t>(c));
    }
  }
  return true;
}

std::uint64_t hashBytes(const char* p, size_t n) {
  constexpr std::uint64_t kMul = 0xbf58476d1ce4e5b9ull;
  std::uint64_t h = 0x9e3779b97f4a7c15ull ^ (n * kMul);
  while (n >= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    h = (h ^ w) * kMul;
    h ^= h >> 31;
    p += 8;
    n -= 8;
  }
  if (n > 0) {
    std::uint64_t w = 0;
    std::memcpy(&w, p, n);
    h = (h ^ w) * kMul;
    h ^= h >> 31;
  }
  h *= 0x94d049bb133111ebull;
  return h ^ (h >> 32);
}

// Open addressing keyed by content: the writer looks up every string it meets, keys included,
// so a node-based map's allocation per entry would dominate encoding time.
class StringIds {
 public:
  StringIds() : slots_(64) {}

  // The id already given to an equal string, or `fresh` after recording it.
  std::uint32_t intern(const std::string* s, std::uint32_t fresh, bool& inserted) {
    if ((count_ + 1) * 2 > slots_.size()) grow();
    std::uint64_t h = hashBytes(s->data(), s->size());
    size_t mask = slots_.size() - 1;
    for (size_t i = h & mask;; i = (i + 1) & mask) {
      Slot& slot = slots_[i];
      if (!slot.s) {
        slot = Slot{h, s, fresh};
        ++count_;
        inserted = true;
        return fresh;
      }
      if (slot.hash == h && *slot.s == *s) {
        inserted = false;
        return slot.id;
      }
    }
  }

 private:
  struct Slot {
    std::uint64_t hash = 0;
    const std::string* s = nullptr;
    std::uint32_t id = 0;
  };

  void grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
      if (!slot.s) continue;
      size_t i = slot.hash & mask;
      while (slots_[i].s) i = (i + 1) & mask;
      slots_[i] = slot;
    }
  }

  std::vector<Slot> slots_;
  size_t count_ = 0;
};

class Writer {
 public:
  Result<Data> run(const PlistValue& root) {
    std::uint32_t top;
    if (!collect(root, 0, top)) return Result<Data>::failure(std::move(error_));
    return emit();
  }

 private:
  // An object of the file in id order; strings point at their text, which may be a key.
  struct Object {
    const PlistValue* value;
    const std::string* text;
    size_t firstRef;
  };

  bool fail(std::string message) {
    error_ = std::move(message);
    return false;
  }

  bool newObject(const PlistValue* value, const std::string* text, std::uint32_t& id) {
    if (objects_.size() >= std::numeric_limits<std::uint32_t>::max()) {
      return fail("too many objects");
    }
    id = static_cast<std::uint32_t>(objects_.size());
    objects_.push_back(Object{value, text, refs_.size()});
    return true;
  }

  bool string(const std::string& s, std::uint32_t& id) {
    bool inserted;
    id = strings_.intern(&s, static_cast<std::uint32_t>(objects_.size()), inserted);
    return !inserted || newObject(nullptr, &s, id);
  }

  // Gives ids in preorder and lays each container's references out contiguously in refs_,
  // so that writing is then one pass over objects_ without recursion.
  bool collect(const PlistValue& v, size_t depth, std::uint32_t& id) {
    switch (v.type()) {
      case PlistValue::Type::string:
        return string(v.string(), id);
      case PlistValue::Type::array: {
        if (depth >= BinaryPropertyList::kMaxNesting) return fail(nestingError());
        if (!newObject(&v, nullptr, id)) return false;
        const auto& array = v.array();
        size_t base = refs_.size();
        refs_.resize(base + array.size());
        for (size_t i = 0; i < array.size(); ++i) {
          std::uint32_t child;
          if (!collect(array[i], depth + 1, child)) return false;
          refs_[base + i] = child;
        }
        return true;
      }
      case PlistValue::Type::dictionary: {
        if (depth >= BinaryPropertyList::kMaxNesting) return fail(nestingError());
        if (!newObject(&v, nullptr, id)) return false;
        const auto& dict = v.dictionary();
        size_t n = dict.size();
        size_t base = refs_.size();
        refs_.resize(base + 2 * n);
        for (size_t i = 0; i < n; ++i) {
          std::uint32_t key;
          if (!string(dict[i].first, key)) return false;
          refs_[base + i] = key;
        }
        if (!distinctKeys(base, n)) return false;
        for (size_t i = 0; i < n; ++i) {
          std::uint32_t child;
          if (!collect(dict[i].second, depth + 1, child)) return false;
          refs_[base + n + i] = child;
        }
        return true;
      }
      default:
        return newObject(&v, nullptr, id);
    }
  }

  static std::string nestingError() {
    return "nesting deeper than " + std::to_string(BinaryPropertyList::kMaxNesting) + " levels";
  }

  // Equal keys were given one id, so a repeated key is a repeated id.
  bool distinctKeys(size_t base, size_t n) {
    const std::uint32_t* keys = refs_.data() + base;
    std::uint32_t repeated = 0;
    bool found = false;
    if (n <= 16) {
      for (size_t i = 1; i < n && !found; ++i) {
        for (size_t j = 0; j < i; ++j) {
          if (keys[i] == keys[j]) {
            repeated = keys[i];
            found = true;
            break;
          }
        }
      }
    } else {
      scratch_.assign(keys, keys + n);
      std::sort(scratch_.begin(), scratch_.end());
      auto it = std::adjacent_find(scratch_.begin(), scratch_.end());
      if (it != scratch_.end()) {
        repeated = *it;
        found = true;
      }
    }
    if (!found) return true;
    return fail("dictionary has the key \"" + *objects_[repeated].text + "\" more than once");
  }

  void put(std::uint8_t b) { out_.push_back(b); }

  void putBE(std::uint64_t v, size_t n) {
    size_t pos = out_.size();
    out_.resize(pos + n);
    for (size_t i = n; i > 0; --i) {
      out_[pos + i - 1] = static_cast<std::uint8_t>(v);
      v >>= 8;
    }
  }

  // Non-negative values take the fewest of 1, 2 or 4 bytes; the rest are signed 8-byte.
  void putInt(std::int64_t v) {
    if (v >= 0 && v <= 0xFF) {
      put(kInt | 0);
      put(static_cast<std::uint8_t>(v));
    } else if (v >= 0 && v <= 0xFFFF) {
      put(kInt | 1);
      putBE(static_cast<std::uint64_t>(v), 2);
    } else if (v >= 0 && v <= 0xFFFFFFFFll) {
      put(kInt | 2);
      putBE(static_cast<std::uint64_t>(v), 4);
    } else {
      put(kInt | 3);
      putBE(static_cast<std::uint64_t>(v), 8);
    }
  }

  void putMarker(std::uint8_t kind, size_t count) {
    if (count < 15) {
      put(static_cast<std::uint8_t>(kind | count));
    } else {
      put(kind | 0x0F);
      putInt(static_cast<std::int64_t>(count));
    }
  }

  void putRefs(size_t first, size_t n) {
    const std::uint32_t* refs = refs_.data() + first;
    size_t pos = out_.size();
    out_.resize(pos + n * refSize_);
    std::uint8_t* p = out_.data() + pos;
    for (size_t i = 0; i < n; ++i) {
      std::uint32_t r = refs[i];
      for (size_t k = refSize_; k > 0; --k) {
        p[k - 1] = static_cast<std::uint8_t>(r);
        r >>= 8;
      }
      p += refSize_;
    }
  }

  bool putString(const std::string& s) {
    if (isAscii(s)) {
      putMarker(kAscii, s.size());
      out_.insert(out_.end(), s.begin(), s.end());
      return true;
    }
    if (!utf8ToUtf16(s, units_)) return fail("string is not valid UTF-8");
    putMarker(kUtf16, units_.size());
    size_t pos = out_.size();
    out_.resize(pos + 2 * units_.size());
    std::uint8_t* p = out_.data() + pos;
    for (std::uint16_t u : units_) {
      *p++ = static_cast<std::uint8_t>(u >> 8);
      *p++ = static_cast<std::uint8_t>(u);
    }
    return true;
  }

  Result<Data> emit() {
    size_t count = objects_.size();
    refSize_ = bytesToExceed(count);
    std::vector<std::uint64_t> offsets(count);
    out_.reserve(kHeaderSize + kTrailerSize + count * 16 + refs_.size() * refSize_);
    out_.insert(out_.end(), kMagic, kMagic + sizeof kMagic);
    for (size_t i = 0; i < count; ++i) {
      offsets[i] = out_.size();
      const Object& o = objects_[i];
      if (o.text) {
        if (!putString(*o.text)) return Result<Data>::failure(std::move(error_));
        continue;
      }
      const PlistValue& v = *o.value;
      switch (v.type()) {
        case PlistValue::Type::boolean:
          put(v.boolean() ? kTrue : kFalse);
          break;
        case PlistValue::Type::integer:
          putInt(v.integer());
          break;
        case PlistValue::Type::real:
          put(kReal64);
          putBE(std::bit_cast<std::uint64_t>(v.real()), 8);
          break;
        case PlistValue::Type::date:
          put(kDate);
          putBE(std::bit_cast<std::uint64_t>(v.date().timeIntervalSinceReferenceDate), 8);
          break;
        case PlistValue::Type::data:
          putMarker(kData, v.data().size());
          out_.insert(out_.end(), v.data().begin(), v.data().end());
          break;
        case PlistValue::Type::array:
          putMarker(kArray, v.array().size());
          putRefs(o.firstRef, v.array().size());
          break;
        case PlistValue::Type::dictionary:
          putMarker(kDict, v.dictionary().size());
          putRefs(o.firstRef, 2 * v.dictionary().size());
          break;
        case PlistValue::Type::string:
          break;  // collected as text
      }
    }
    std::uint64_t tableOffset = out_.size();
    std::uint8_t offsetSize = bytesToExceed(tableOffset);
    out_.reserve(out_.size() + count * offsetSize + kTrailerSize);
    for (std::uint64_t off : offsets) putBE(off, offsetSize);
    for (int i = 0; i < 6; ++i) put(0);
    put(offsetSize);
    put(refSize_);
    putBE(count, 8);
    putBE(0, 8);  // the root is the first object collected
    putBE(tableOffset, 8);
    return std::move(out_);
  }

  std::vector<Object> objects_;
  std::vector<std::uint32_t> refs_;
  std::vector<std::uint32_t> scratch_;
  std::vector<std::uint16_t> units_;
  StringIds strings_;
  std::string error_;
  Data out_;
  std::uint8_t refSize_ = 1;
};

class Reader {
 public:
  Reader(const std::uint8_t* bytes, size_t size) : b_(bytes), size_(size) {
    constexpr size_t floor = BinaryPropertyList::kOutputBudgetFloor;
    constexpr size_t factor = BinaryPropertyList::kOutputBudgetFactor;
    budget_ = size > (std::numeric_limits<size_t>::max() - floor) / factor
                  ? std::numeric_limits<size_t>::max()
                  : floor + factor * size;
  }

  Result<PlistValue> run() {
    PlistValue root;
    if (!trailer() || !charge(sizeof(PlistValue)) || !object(top_, 0, root)) {
      return Result<PlistValue>::failure(std::move(error_));
    }
    return root;
  }

 private:
  bool fail(std::string message) {
    error_ = std::move(message);
    return false;
  }

  bool failObject(std::uint64_t obj, const std::string& what) {
    return fail("object " + std::to_string(obj) + " " + what);
  }

  bool trailer() {
    if (size_ < kHeaderSize) return fail("truncated header");
    if (std::memcmp(b_, kMagic, 6) != 0) return fail("not a binary property list");
    if (std::memcmp(b_ + 6, kMagic + 6, 2) != 0) {
      return fail("unsupported format version \"" + std::string(b_ + 6, b_ + 8) + "\"");
    }
    if (size_ < kHeaderSize + kTrailerSize) return fail("truncated trailer");
    const std::uint8_t* t = b_ + size_ - kTrailerSize;
    offsetSize_ = t[6];
    refSize_ = t[7];
    count_ = readBE(t + 8, 8);
    top_ = readBE(t + 16, 8);
    tableOffset_ = readBE(t + 24, 8);
    if (offsetSize_ < 1 || offsetSize_ > 8) {
      return fail("bad offset size " + std::to_string(offsetSize_) + " in trailer");
    }
    if (refSize_ < 1 || refSize_ > 8) {
      return fail("bad object reference size " + std::to_string(refSize_) + " in trailer");
    }
    if (count_ == 0) return fail("trailer claims no objects");
    if (top_ >= count_) {
      return fail("top object " + std::to_string(top_) + " out of range of " +
                  std::to_string(count_) + " objects");
    }
    if (refSize_ < 8 && count_ - 1 > (std::uint64_t{1} << (8 * refSize_)) - 1) {
      return fail(std::to_string(count_) + " objects cannot be named with " +
                  std::to_string(refSize_) + "-byte references");
    }
    size_t tableEnd = size_ - kTrailerSize;
    if (tableOffset_ < kHeaderSize + 1 || tableOffset_ > tableEnd) {
      return fail("offset table at " + std::to_string(tableOffset_) + " is outside the file");
    }
    if (count_ > (tableEnd - tableOffset_) / offsetSize_) {
      return fail("offset table of " + std::to_string(count_) + " entries runs past the trailer");
    }
    for (std::uint64_t i = 0; i < count_; ++i) {
      std::uint64_t off = offsetOf(i);
      if (off < kHeaderSize || off >= tableOffset_) {
        return failObject(i, "has offset " + std::to_string(off) + " outside the object area");
      }
    }
    onPath_.assign(count_, 0);
    return true;
  }

  std::uint64_t offsetOf(std::uint64_t obj) const {
    return readBE(b_ + tableOffset_ + obj * offsetSize_, offsetSize_);
  }

  bool charge(size_t n) {
    if (n > budget_) {
      return fail("decoded values would exceed " +
                  std::to_string(BinaryPropertyList::kOutputBudgetFactor) +
                  " times the file's size");
    }
    budget_ -= n;
    return true;
  }

  // The length of the object's payload, in the units its kind counts, from the low nibble or
  // the integer that follows. `pos` moves past the marker and any count.
  bool count(std::uint64_t obj, std::uint8_t marker, size_t& pos, std::uint64_t& n) {
    n = marker & 0x0F;
    if (n != 0x0F) return true;
    if (pos >= tableOffset_) return failObject(obj, "is truncated");
    std::uint8_t m = b_[pos];
    if ((m & 0xF0) != kInt || (m & 0x0F) > 3) return failObject(obj, "has a malformed count");
    size_t len = size_t{1} << (m & 0x0F);
    if (tableOffset_ - pos - 1 < len) return failObject(obj, "is truncated");
    n = readBE(b_ + pos + 1, len);
    if (len == 8 && (n >> 63) != 0) return failObject(obj, "has a negative count");
    pos += 1 + len;
    return true;
  }

  // Whether `n` items of `width` bytes each are present from `pos` on.
  bool present(size_t pos, std::uint64_t n, size_t width) const {
    return n <= (tableOffset_ - pos) / width;
  }

  bool object(std::uint64_t obj, size_t depth, PlistValue& out) {
    size_t pos = offsetOf(obj);
    std::uint8_t m = b_[pos++];
    switch (m >> 4) {
      case 0x0:
        if (m == kFalse || m == kTrue) {
          out = PlistValue(m == kTrue);
          return true;
        }
        break;
      case 0x1:
        return integer(obj, m, pos, out);
      case 0x2:
        return real(obj, m, pos, out);
      case 0x3:
        if (m != kDate) break;
        if (!present(pos, 1, 8)) return failObject(obj, "is truncated");
        out = PlistValue(Date{std::bit_cast<double>(readBE(b_ + pos, 8))});
        return true;
      case 0x4: {
        std::uint64_t n;
        if (!count(obj, m, pos, n)) return false;
        if (!present(pos, n, 1)) return failObject(obj, "is truncated");
        if (!charge(n)) return false;
        out = PlistValue(Data(b_ + pos, b_ + pos + n));
        return true;
      }
      case 0x5:
      case 0x6: {
        std::string s;
        if (!string(obj, m, pos, s)) return false;
        out = PlistValue(std::move(s));
        return true;
      }
      case 0xA:
        return array(obj, m, pos, depth, out);
      case 0xD:
        return dictionary(obj, m, pos, depth, out);
      default:
        break;
    }
    return failObject(obj, "has unsupported marker " + hexByte(m));
  }

  bool integer(std::uint64_t obj, std::uint8_t m, size_t pos, PlistValue& out) {
    if ((m & 0x0F) > 4) return failObject(obj, "has unsupported marker " + hexByte(m));
    size_t len = size_t{1} << (m & 0x0F);
    if (!present(pos, len, 1)) return failObject(obj, "is truncated");
    const std::uint8_t* p = b_ + pos;
    std::int64_t v;
    if (len == 16) {
      // Signed 128-bit; only the values a 64-bit integer can hold are taken.
      std::uint64_t high = readBE(p, 8);
      std::uint64_t low = readBE(p + 8, 8);
      std::uint64_t signFill = (low >> 63) ? ~std::uint64_t{0} : 0;
      if (high != signFill) return failObject(obj, "is an integer too large for 64 bits");
      v = static_cast<std::int64_t>(low);
    } else {
      // 1, 2 and 4 bytes are unsigned; 8 bytes are signed.
      v = static_cast<std::int64_t>(readBE(p, len));
    }
    out = PlistValue(v);
    return true;
  }

  bool real(std::uint64_t obj, std::uint8_t m, size_t pos, PlistValue& out) {
    if (m == 0x22) {
      if (!present(pos, 1, 4)) return failObject(obj, "is truncated");
      auto bits = static_cast<std::uint32_t>(readBE(b_ + pos, 4));
      out = PlistValue(static_cast<double>(std::bit_cast<float>(bits)));
      return true;
    }
    if (m == kReal64) {
      if (!present(pos, 1, 8)) return failObject(obj, "is truncated");
      out = PlistValue(std::bit_cast<double>(readBE(b_ + pos, 8)));
      return true;
    }
    return failObject(obj, "has unsupported marker " + hexByte(m));
  }

  bool string(std::uint64_t obj, std::uint8_t m, size_t pos, std::string& out) {
    std::uint64_t n;
    if (!count(obj, m, pos, n)) return false;
    const std::uint8_t* p = b_ + pos;
    if ((m & 0xF0) == kAscii) {
      if (!present(pos, n, 1)) return failObject(obj, "is truncated");
      for (std::uint64_t i = 0; i < n; ++i) {
        if (p[i] >= 0x80) return failObject(obj, "is an ASCII string with a byte above 0x7f");
      }
      if (!charge(n)) return false;
      out.assign(reinterpret_cast<const char*>(p), n);
      return true;
    }
    if (!present(pos, n, 2)) return failObject(obj, "is truncated");
    out.clear();
    out.reserve(n);
    for (std::uint64_t i = 0; i < n; ++i) {
      std::uint32_t c = (std::uint32_t{p[2 * i]} << 8) | p[2 * i + 1];
      if (c >= 0xD800 && c <= 0xDFFF) {
        std::uint32_t low = 0;
        if (i + 1 < n) low = (std::uint32_t{p[2 * i + 2]} << 8) | p[2 * i + 3];
        if (c >= 0xDC00 || low < 0xDC00 || low > 0xDFFF) {
          return failObject(obj, "is malformed UTF-16");
        }
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
      appendUtf8(out, c);
    }
    return charge(out.size());
  }

  static void appendUtf8(std::string& out, std::uint32_t c) {
    if (c < 0x80) {
      out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (c >> 6)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (c >> 12)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (c >> 18)));
      out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }

  // Validates the references of a container before anything is built from them.
  bool refs(std::uint64_t obj, size_t pos, std::uint64_t n, size_t depth) {
    if (depth >= BinaryPropertyList::kMaxNesting) {
      return fail("nesting deeper than " + std::to_string(BinaryPropertyList::kMaxNesting) +
                  " levels");
    }
    if (!present(pos, n, refSize_)) return failObject(obj, "is truncated");
    const std::uint8_t* p = b_ + pos;
    for (std::uint64_t i = 0; i < n; ++i, p += refSize_) {
      std::uint64_t r = readBE(p, refSize_);
      if (r >= count_) {
        return failObject(obj, "refers to object " + std::to_string(r) + ", which does not exist");
      }
      if (r == obj) return failObject(obj, "refers to itself");
      if (onPath_[r]) return failObject(r, "contains itself");
    }
    return true;
  }

  bool array(std::uint64_t obj, std::uint8_t m, size_t pos, size_t depth, PlistValue& out) {
    std::uint64_t n;
    if (!count(obj, m, pos, n) || !refs(obj, pos, n, depth)) return false;
    if (!charge(n * sizeof(PlistValue))) return false;
    out = PlistValue(PlistValue::Array(n));
    auto& items = out.array();
    onPath_[obj] = 1;
    const std::uint8_t* p = b_ + pos;
    for (std::uint64_t i = 0; i < n; ++i, p += refSize_) {
      if (!object(readBE(p, refSize_), depth + 1, items[i])) return false;
    }
    onPath_[obj] = 0;
    return true;
  }

  bool dictionary(std::uint64_t obj, std::uint8_t m, size_t pos, size_t depth, PlistValue& out) {
    std::uint64_t n;
    if (!count(obj, m, pos, n)) return false;
    // Keys then values: twice as many references as entries.
    if (n > std::numeric_limits<std::uint64_t>::max() / 2) return failObject(obj, "is truncated");
    if (!refs(obj, pos, 2 * n, depth)) return false;
    using Entry = PlistValue::Dictionary::value_type;
    if (!charge(n * sizeof(Entry))) return false;
    out = PlistValue(PlistValue::Dictionary(n));
    auto& entries = out.dictionary();
    const std::uint8_t* keys = b_ + pos;
    for (std::uint64_t i = 0; i < n; ++i) {
      std::uint64_t k = readBE(keys + i * refSize_, refSize_);
      size_t kpos = offsetOf(k);
      std::uint8_t km = b_[kpos++];
      if ((km & 0xF0) != kAscii && (km & 0xF0) != kUtf16) {
        return failObject(obj, "has a key that is not a string (object " + std::to_string(k) + ")");
      }
      if (!string(k, km, kpos, entries[i].first)) return false;
    }
    if (!distinctKeys(obj, entries)) return false;
    onPath_[obj] = 1;
    const std::uint8_t* values = keys + n * refSize_;
    for (std::uint64_t i = 0; i < n; ++i) {
      if (!object(readBE(values + i * refSize_, refSize_), depth + 1, entries[i].second)) {
        return false;
      }
    }
    onPath_[obj] = 0;
    return true;
  }

  bool distinctKeys(std::uint64_t obj, const PlistValue::Dictionary& entries) {
    size_t n = entries.size();
    const std::string* repeated = nullptr;
    if (n <= 16) {
      for (size_t i = 1; i < n && !repeated; ++i) {
        for (size_t j = 0; j < i; ++j) {
          if (entries[i].first == entries[j].first) {
            repeated = &entries[i].first;
            break;
          }
        }
      }
    } else {
      std::vector<std::string_view> keys;
      keys.reserve(n);
      for (const auto& e : entries) keys.emplace_back(e.first);
      std::sort(keys.begin(), keys.end());
      auto it = std::adjacent_find(keys.begin(), keys.end());
      if (it != keys.end()) return failObject(obj, "has the key \"" + std::string(*it) + "\" twice");
    }
    if (repeated) return failObject(obj, "has the key \"" + *repeated + "\" twice");
    return true;
  }

  const std::uint8_t* b_;
  size_t size_;
  std::uint8_t offsetSize_ = 0;
  std::uint8_t refSize_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t top_ = 0;
  std::uint64_t tableOffset_ = 0;
  size_t budget_ = 0;
  std::vector<std::uint8_t> onPath_;
  std::string error_;
};

}  // namespace

Result<Data> BinaryPropertyList::write(const PlistValue& root) {
  return Writer().run(root);
}

Result<PlistValue> BinaryPropertyList::read(const std::uint8_t* bytes, size_t size) {
  if (!bytes) size = 0;
  return Reader(bytes, size).run();
}
