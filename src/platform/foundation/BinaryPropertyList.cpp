#include "platform/foundation/BinaryPropertyList.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/foundation/FatalError.h"

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

// The fewest bytes that hold `value`. References are sized to hold the object count and
// offsets to hold the offset table's position, not just the largest of each actually
// written: CoreFoundation's reader refuses files where those limits do not fit.
std::uint8_t bytesToHold(std::uint64_t value) {
  std::uint8_t n = 1;
  while (n < 8 && (value >> (8 * n)) != 0)
    ++n;
  return n;
}

std::uint64_t readBE(const std::uint8_t* p, size_t n) {
  switch (n) {
    case 1:
      return p[0];
    case 2:
      return (std::uint64_t{p[0]} << 8) | p[1];
    case 4: {
      std::uint32_t v;
      std::memcpy(&v, p, 4);
      return __builtin_bswap32(v);
    }
    case 8: {
      std::uint64_t v;
      std::memcpy(&v, p, 8);
      return __builtin_bswap64(v);
    }
    default: {
      std::uint64_t v = 0;
      for (size_t i = 0; i < n; ++i)
        v = (v << 8) | p[i];
      return v;
    }
  }
}

std::string hexByte(std::uint8_t b) {
  constexpr char kDigits[] = "0123456789abcdef";
  return std::string("0x") + kDigits[b >> 4] + kDigits[b & 15];
}

bool isAscii(const void* bytes, size_t n) {
  const auto* p = static_cast<const char*>(bytes);
  while (n >= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    if (w & 0x8080808080808080ull)
      return false;
    p += 8;
    n -= 8;
  }
  for (; n > 0; --n, ++p) {
    if (static_cast<unsigned char>(*p) >= 0x80)
      return false;
  }
  return true;
}

// Calls `unit` with each UTF-16 code unit of strict UTF-8 text (no overlongs, no surrogates,
// nothing past U+10FFFF); false, part way, at the first malformed sequence.
template <class Unit>
bool forEachUtf16Unit(const std::string& s, Unit&& unit) {
  const auto* p = reinterpret_cast<const std::uint8_t*>(s.data());
  const auto* end = p + s.size();
  while (p < end) {
    std::uint32_t c = *p++;
    if (c < 0x80) {
      unit(static_cast<std::uint16_t>(c));
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
    if (end - p < extra)
      return false;
    for (int i = 0; i < extra; ++i) {
      if ((p[i] & 0xC0) != 0x80)
        return false;
      c = (c << 6) | (p[i] & 0x3F);
    }
    p += extra;
    if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
      return false;
    if (c >= 0x10000) {
      c -= 0x10000;
      unit(static_cast<std::uint16_t>(0xD800 | (c >> 10)));
      unit(static_cast<std::uint16_t>(0xDC00 | (c & 0x3FF)));
    } else {
      unit(static_cast<std::uint16_t>(c));
    }
  }
  return true;
}

bool utf16Length(const std::string& s, size_t& units) {
  units = 0;
  return forEachUtf16Unit(s, [&units](std::uint16_t) { ++units; });
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
// so a node-based map's allocation per entry would dominate encoding.
class StringIds {
 public:
  struct Slot;
  struct Entry;
  StringIds(std::vector<Slot>& slots, std::vector<Entry>& entries)
      : slots_(slots), entries_(entries) {
    slots_.assign(1024, Slot{});
    entries_.clear();
  }

  // The id of an equal string met before, or `fresh` after recording `s` under it.
  std::uint32_t intern(const std::string& s, std::uint32_t fresh, bool& inserted) {
    if ((entries_.size() + 1) * 2 > slots_.size())
      grow();
    auto h = static_cast<std::uint32_t>(hashBytes(s.data(), s.size()));
    size_t mask = slots_.size() - 1;
    for (size_t i = h & mask;; i = (i + 1) & mask) {
      Slot& slot = slots_[i];
      if (slot.entry == kEmpty) {
        slot = Slot{h, static_cast<std::uint32_t>(entries_.size())};
        entries_.push_back(Entry{&s, fresh});
        inserted = true;
        return fresh;
      }
      if (slot.hash == h && *entries_[slot.entry].text == s) {
        inserted = false;
        return entries_[slot.entry].id;
      }
    }
  }

  // For messages only: a linear search.
  std::string textOf(std::uint32_t id) const {
    for (const Entry& e : entries_) {
      if (e.id == id)
        return *e.text;
    }
    return {};
  }

 private:
  static constexpr std::uint32_t kEmpty = std::numeric_limits<std::uint32_t>::max();

 public:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t entry = kEmpty;
  };
  struct Entry {
    const std::string* text;
    std::uint32_t id;
  };

 private:
  void grow() {
    size_t mask = slots_.size() * 2 - 1;
    slots_.resize(slots_.size() * 2);
    // Entries keep their order, so the table is rebuilt from them in place.
    std::fill(slots_.begin(), slots_.end(), Slot{});
    for (size_t e = 0; e < entries_.size(); ++e) {
      const std::string& s = *entries_[e].text;
      auto h = static_cast<std::uint32_t>(hashBytes(s.data(), s.size()));
      size_t i = h & mask;
      while (slots_[i].entry != kEmpty)
        i = (i + 1) & mask;
      slots_[i] = Slot{h, static_cast<std::uint32_t>(e)};
    }
  }

  std::vector<Slot>& slots_;
  std::vector<Entry>& entries_;
};

// The writer's working memory, kept per thread between calls: for a large list it is
// megabytes, and fresh pages for it each time cost more than the encoding itself.
struct WriterScratch {
  std::vector<std::uint32_t> refs;
  std::vector<StringIds::Slot> slots;
  std::vector<StringIds::Entry> entries;

  // Past this, memory is handed back rather than held for the next call.
  static constexpr size_t kKeepBytes = 16u << 20;
  void trim() {
    size_t bytes = refs.capacity() * sizeof(refs[0]) + slots.capacity() * sizeof(slots[0]) +
                   entries.capacity() * sizeof(entries[0]);
    if (bytes > kKeepBytes)
      *this = WriterScratch();
  }
};

class Writer {
 public:
  explicit Writer(WriterScratch& scratch)
      : refs_(scratch.refs), strings_(scratch.slots, scratch.entries) {
    refs_.clear();
  }

  Result<Data> run(const PlistValue& root) {
    std::uint32_t top;
    if (!collect(root, 0, top))
      return Result<Data>::failure(std::move(error_));
    return emit(root);
  }

 private:
  static constexpr std::uint32_t kMaxObjects = std::numeric_limits<std::uint32_t>::max() - 1;

  bool fail(std::string message) {
    error_ = std::move(message);
    return false;
  }

  static size_t markerSize(size_t count) {
    if (count < 15)
      return 1;
    return count <= 0xFF ? 3 : count <= 0xFFFF ? 4 : count <= 0xFFFFFFFFull ? 6 : 10;
  }

  bool newObject(std::uint32_t& id, size_t bytes) {
    if (count_ >= kMaxObjects || refs_.size() >= kMaxObjects)
      return fail("too many objects");
    id = count_++;
    bytes_ += bytes;
    return true;
  }

  bool string(const std::string& s, std::uint32_t& id) {
    bool inserted;
    id = strings_.intern(s, count_, inserted);
    if (!inserted)
      return true;
    if (isAscii(s.data(), s.size()))
      return newObject(id, markerSize(s.size()) + s.size());
    size_t units;
    if (!utf16Length(s, units))
      return fail("string is not valid UTF-8");
    return newObject(id, markerSize(units) + 2 * units);
  }

  // Gives ids in preorder and lays each container's references out contiguously in refs_.
  // emit() walks the tree again in the same order, so ids are also the order of writing.
  bool collect(const PlistValue& v, size_t depth, std::uint32_t& id) {
    switch (v.type()) {
      case PlistValue::Type::string:
        return string(v.string(), id);
      case PlistValue::Type::array: {
        if (depth >= BinaryPropertyList::kMaxNesting)
          return fail(nestingError());
        const auto& array = v.array();
        if (!newObject(id, markerSize(array.size())))
          return false;
        size_t base = refs_.size();
        refs_.resize(base + array.size());
        for (size_t i = 0; i < array.size(); ++i) {
          std::uint32_t child;
          if (!collect(array[i], depth + 1, child))
            return false;
          refs_[base + i] = child;
        }
        return true;
      }
      case PlistValue::Type::dictionary: {
        if (depth >= BinaryPropertyList::kMaxNesting)
          return fail(nestingError());
        const auto& dict = v.dictionary();
        size_t n = dict.size();
        if (!newObject(id, markerSize(n)))
          return false;
        size_t base = refs_.size();
        refs_.resize(base + 2 * n);
        for (size_t i = 0; i < n; ++i) {
          std::uint32_t key;
          if (!string(dict[i].first, key))
            return false;
          refs_[base + i] = key;
        }
        if (!distinctKeys(base, n))
          return false;
        for (size_t i = 0; i < n; ++i) {
          std::uint32_t child;
          if (!collect(dict[i].second, depth + 1, child))
            return false;
          refs_[base + n + i] = child;
        }
        return true;
      }
      case PlistValue::Type::boolean:
        return newObject(id, 1);
      case PlistValue::Type::integer: {
        std::int64_t i = v.integer();
        return newObject(id, i < 0               ? 9
                             : i <= 0xFF         ? 2
                             : i <= 0xFFFF       ? 3
                             : i <= 0xFFFFFFFFll ? 5
                                                 : 9);
      }
      case PlistValue::Type::data:
        return newObject(id, markerSize(v.data().size()) + v.data().size());
      case PlistValue::Type::real:
      case PlistValue::Type::date:
        return newObject(id, 9);
    }
    return fail("unknown value type");
  }

  static std::string nestingError() {
    return "nesting deeper than " + std::to_string(BinaryPropertyList::kMaxNesting) + " levels";
  }

  // Equal keys were given one id, so a repeated key is a repeated id.
  bool distinctKeys(size_t base, size_t n) {
    const std::uint32_t* keys = refs_.data() + base;
    if (n <= 16) {
      for (size_t i = 1; i < n; ++i) {
        for (size_t j = 0; j < i; ++j) {
          if (keys[i] == keys[j])
            return repeatedKey(keys[i]);
        }
      }
      return true;
    }
    std::vector<std::uint32_t> sorted(keys, keys + n);
    std::sort(sorted.begin(), sorted.end());
    auto it = std::adjacent_find(sorted.begin(), sorted.end());
    return it == sorted.end() || repeatedKey(*it);
  }

  bool repeatedKey(std::uint32_t id) {
    return fail("dictionary has the key \"" + strings_.textOf(id) + "\" more than once");
  }

  void putBE(std::uint64_t v, size_t n) {
    for (size_t i = n; i > 0; --i) {
      p_[i - 1] = static_cast<std::uint8_t>(v);
      v >>= 8;
    }
    p_ += n;
  }

  // Non-negative values take the fewest of 1, 2 or 4 bytes; the rest are signed 8-byte.
  void putInt(std::int64_t v) {
    if (v >= 0 && v <= 0xFF) {
      *p_++ = kInt | 0;
      *p_++ = static_cast<std::uint8_t>(v);
    } else if (v >= 0 && v <= 0xFFFF) {
      *p_++ = kInt | 1;
      putBE(static_cast<std::uint64_t>(v), 2);
    } else if (v >= 0 && v <= 0xFFFFFFFFll) {
      *p_++ = kInt | 2;
      putBE(static_cast<std::uint64_t>(v), 4);
    } else {
      *p_++ = kInt | 3;
      putBE(static_cast<std::uint64_t>(v), 8);
    }
  }

  void putMarker(std::uint8_t kind, size_t count) {
    if (count < 15) {
      *p_++ = static_cast<std::uint8_t>(kind | count);
    } else {
      *p_++ = kind | 0x0F;
      putInt(static_cast<std::int64_t>(count));
    }
  }

  void putBytes(const void* bytes, size_t n) {
    if (n == 0)
      return;
    std::memcpy(p_, bytes, n);
    p_ += n;
  }

  void putRefs(size_t first, size_t n) {
    const std::uint32_t* refs = refs_.data() + first;
    switch (refSize_) {
      case 1:
        for (size_t i = 0; i < n; ++i)
          *p_++ = static_cast<std::uint8_t>(refs[i]);
        break;
      case 2:
        for (size_t i = 0; i < n; ++i) {
          *p_++ = static_cast<std::uint8_t>(refs[i] >> 8);
          *p_++ = static_cast<std::uint8_t>(refs[i]);
        }
        break;
      default:
        for (size_t i = 0; i < n; ++i)
          putBE(refs[i], refSize_);
    }
  }

  // Records where object `id` starts; ids come in order, so this is also a check of that.
  void startObject(std::uint32_t id) {
    std::uint8_t* saved = p_;
    p_ = table_ + static_cast<size_t>(id) * offsetSize_;
    putBE(static_cast<std::uint64_t>(saved - start_), offsetSize_);
    p_ = saved;
    ++written_;
  }

  void putString(const std::string& s, std::uint32_t id) {
    if (id != written_)
      return;  // met before
    startObject(id);
    if (isAscii(s.data(), s.size())) {
      putMarker(kAscii, s.size());
      putBytes(s.data(), s.size());
      return;
    }
    size_t units = 0;
    utf16Length(s, units);
    putMarker(kUtf16, units);
    forEachUtf16Unit(s, [this](std::uint16_t u) {
      *p_++ = static_cast<std::uint8_t>(u >> 8);
      *p_++ = static_cast<std::uint8_t>(u);
    });
  }

  void put(const PlistValue& v, std::uint32_t id) {
    if (v.isString())
      return putString(v.string(), id);
    startObject(id);
    switch (v.type()) {
      case PlistValue::Type::boolean:
        *p_++ = v.boolean() ? kTrue : kFalse;
        break;
      case PlistValue::Type::integer:
        putInt(v.integer());
        break;
      case PlistValue::Type::real:
        *p_++ = kReal64;
        putBE(std::bit_cast<std::uint64_t>(v.real()), 8);
        break;
      case PlistValue::Type::date:
        *p_++ = kDate;
        putBE(std::bit_cast<std::uint64_t>(v.date().timeIntervalSinceReferenceDate), 8);
        break;
      case PlistValue::Type::data:
        putMarker(kData, v.data().size());
        putBytes(v.data().data(), v.data().size());
        break;
      case PlistValue::Type::array: {
        const auto& array = v.array();
        size_t base = cursor_;
        cursor_ += array.size();
        putMarker(kArray, array.size());
        putRefs(base, array.size());
        for (size_t i = 0; i < array.size(); ++i)
          put(array[i], refs_[base + i]);
        break;
      }
      case PlistValue::Type::dictionary: {
        const auto& dict = v.dictionary();
        size_t n = dict.size();
        size_t base = cursor_;
        cursor_ += 2 * n;
        putMarker(kDict, n);
        putRefs(base, 2 * n);
        for (size_t i = 0; i < n; ++i)
          putString(dict[i].first, refs_[base + i]);
        for (size_t i = 0; i < n; ++i)
          put(dict[i].second, refs_[base + n + i]);
        break;
      }
      case PlistValue::Type::string:
        break;
    }
  }

  Result<Data> emit(const PlistValue& root) {
    refSize_ = bytesToHold(count_);
    size_t tableOffset = kHeaderSize + bytes_ + refs_.size() * refSize_;
    offsetSize_ = bytesToHold(tableOffset);
    Data out(tableOffset + count_ * offsetSize_ + kTrailerSize);
    start_ = p_ = out.data();
    table_ = start_ + tableOffset;
    putBytes(kMagic, sizeof kMagic);
    put(root, 0);
    if (p_ != table_ || written_ != count_)
      fatalError("property list writer miscounted its output");
    p_ += count_ * offsetSize_;
    for (int i = 0; i < 6; ++i)
      *p_++ = 0;
    *p_++ = offsetSize_;
    *p_++ = refSize_;
    putBE(count_, 8);
    putBE(0, 8);  // the root is the first object collected
    putBE(tableOffset, 8);
    return out;
  }

  std::vector<std::uint32_t>& refs_;
  StringIds strings_;
  std::string error_;
  std::uint32_t count_ = 0;
  size_t bytes_ = 0;  // every object but its references
  size_t cursor_ = 0;
  std::uint32_t written_ = 0;
  std::uint8_t* start_ = nullptr;
  std::uint8_t* table_ = nullptr;
  std::uint8_t* p_ = nullptr;
  std::uint8_t refSize_ = 1;
  std::uint8_t offsetSize_ = 1;
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
    auto toRoot = [&root](auto&& v) -> PlistValue& {
      root = PlistValue(std::forward<decltype(v)>(v));
      return root;
    };
    if (!trailer() || !charge(sizeof(PlistValue)) || !object(top_, 0, toRoot)) {
      return Result<PlistValue>::failure(std::move(error_));
    }
    return root;
  }

 private:
  [[gnu::noinline]] bool fail(std::string message) {
    error_ = std::move(message);
    return false;
  }

  [[gnu::noinline]] bool failObject(std::uint64_t obj, const std::string& what) {
    return fail("object " + std::to_string(obj) + " " + what);
  }

  bool trailer() {
    if (size_ < kHeaderSize)
      return fail("truncated header");
    if (std::memcmp(b_, kMagic, 6) != 0)
      return fail("not a binary property list");
    if (std::memcmp(b_ + 6, kMagic + 6, 2) != 0) {
      return fail("unsupported format version \"" + std::string(b_ + 6, b_ + 8) + "\"");
    }
    if (size_ < kHeaderSize + kTrailerSize)
      return fail("truncated trailer");
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
    if (count_ == 0)
      return fail("trailer claims no objects");
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
    offsetShift_ = 64 - 8 * offsetSize_;
    refShift_ = 64 - 8 * refSize_;
    for (std::uint64_t i = 0; i < count_; ++i) {
      std::uint64_t off = offsetOf(i);
      if (off < kHeaderSize || off >= tableOffset_) {
        return failObject(i, "has offset " + std::to_string(off) + " outside the object area");
      }
    }
    onPath_.assign(count_, 0);
    return true;
  }

  // Offsets and references are followed at least by the 32-byte trailer, so a full 8-byte
  // load from any of them stays inside the file.
  static std::uint64_t sized(const std::uint8_t* p, unsigned shift) {
    std::uint64_t v;
    std::memcpy(&v, p, 8);
    return __builtin_bswap64(v) >> shift;
  }
  std::uint64_t offsetOf(std::uint64_t obj) const {
    return sized(b_ + tableOffset_ + obj * offsetSize_, offsetShift_);
  }
  std::uint64_t refAt(const std::uint8_t* p) const { return sized(p, refShift_); }

  bool charge(size_t n) {
    if (n > budget_) [[unlikely]] {
      return overBudget();
    }
    budget_ -= n;
    return true;
  }

  [[gnu::noinline]] bool overBudget() {
    return fail("decoded values would exceed " +
                std::to_string(BinaryPropertyList::kOutputBudgetFactor) + " times the file's size");
  }

  // The length of the object's payload, in the units its kind counts, from the low nibble or
  // the integer that follows. `pos` moves past the marker and any count.
  [[gnu::always_inline]] bool count(std::uint64_t obj,
                                    std::uint8_t marker,
                                    size_t& pos,
                                    std::uint64_t& n) {
    n = marker & 0x0F;
    if (n != 0x0F)
      return true;
    if (pos >= tableOffset_)
      return failObject(obj, "is truncated");
    std::uint8_t m = b_[pos];
    if ((m & 0xF0) != kInt || (m & 0x0F) > 3)
      return failObject(obj, "has a malformed count");
    size_t len = size_t{1} << (m & 0x0F);
    if (tableOffset_ - pos - 1 < len)
      return failObject(obj, "is truncated");
    n = readBE(b_ + pos + 1, len);
    if (len == 8 && (n >> 63) != 0)
      return failObject(obj, "has a negative count");
    pos += 1 + len;
    return true;
  }

  // Whether `n` items of `width` bytes each are present from `pos` on.
  bool present(size_t pos, std::uint64_t n, size_t width) const {
    return n <= (tableOffset_ - pos) / width;
  }

  // Decodes object `obj` and hands it to `emit`, which builds it in its place in the parent
  // and returns it there, so that containers can be filled where they will stay.
  template <class Emit>
  bool object(std::uint64_t obj, size_t depth, Emit&& emit) {
    size_t pos = offsetOf(obj);
    std::uint8_t m = b_[pos++];
    switch (m >> 4) {
      case 0x0:
        if (m != kFalse && m != kTrue)
          break;
        emit(m == kTrue);
        return true;
      case 0x1: {
        std::int64_t v;
        if (!integer(obj, m, pos, v))
          return false;
        emit(v);
        return true;
      }
      case 0x2: {
        double v;
        if (!real(obj, m, pos, v))
          return false;
        emit(v);
        return true;
      }
      case 0x3:
        if (m != kDate)
          break;
        if (!present(pos, 1, 8))
          return failObject(obj, "is truncated");
        emit(Date{std::bit_cast<double>(readBE(b_ + pos, 8))});
        return true;
      case 0x4: {
        std::uint64_t n;
        if (!count(obj, m, pos, n))
          return false;
        if (!present(pos, n, 1))
          return failObject(obj, "is truncated");
        if (!charge(n))
          return false;
        emit(Data(b_ + pos, b_ + pos + n));
        return true;
      }
      case 0x5:
      case 0x6: {
        std::string s;
        if (!string(obj, m, pos, s))
          return false;
        emit(std::move(s));
        return true;
      }
      case 0xA: {
        std::uint64_t n;
        if (!count(obj, m, pos, n) || !refs(obj, pos, n, depth))
          return false;
        if (!charge(n * sizeof(PlistValue)))
          return false;
        return array(obj, pos, n, depth, emit(PlistValue::Array{}).array());
      }
      case 0xD: {
        std::uint64_t n;
        if (!count(obj, m, pos, n))
          return false;
        // Keys then values: twice as many references as entries.
        if (n > std::numeric_limits<std::uint64_t>::max() / 2) {
          return failObject(obj, "is truncated");
        }
        if (!refs(obj, pos, 2 * n, depth))
          return false;
        if (!charge(n * sizeof(PlistValue::Dictionary::value_type)))
          return false;
        return dictionary(obj, pos, n, depth, emit(PlistValue::Dictionary{}).dictionary());
      }
      default:
        break;
    }
    return failObject(obj, "has unsupported marker " + hexByte(m));
  }

  bool integer(std::uint64_t obj, std::uint8_t m, size_t pos, std::int64_t& v) {
    if ((m & 0x0F) > 4)
      return failObject(obj, "has unsupported marker " + hexByte(m));
    size_t len = size_t{1} << (m & 0x0F);
    if (!present(pos, len, 1))
      return failObject(obj, "is truncated");
    const std::uint8_t* p = b_ + pos;
    if (len == 16) {
      // Signed 128-bit; only the values a 64-bit integer can hold are taken.
      std::uint64_t high = readBE(p, 8);
      std::uint64_t low = readBE(p + 8, 8);
      std::uint64_t signFill = (low >> 63) ? ~std::uint64_t{0} : 0;
      if (high != signFill)
        return failObject(obj, "is an integer too large for 64 bits");
      v = static_cast<std::int64_t>(low);
    } else {
      // 1, 2 and 4 bytes are unsigned; 8 bytes are signed.
      v = static_cast<std::int64_t>(readBE(p, len));
    }
    return true;
  }

  bool real(std::uint64_t obj, std::uint8_t m, size_t pos, double& v) {
    if (m == 0x22) {
      if (!present(pos, 1, 4))
        return failObject(obj, "is truncated");
      v = std::bit_cast<float>(static_cast<std::uint32_t>(readBE(b_ + pos, 4)));
      return true;
    }
    if (m == kReal64) {
      if (!present(pos, 1, 8))
        return failObject(obj, "is truncated");
      v = std::bit_cast<double>(readBE(b_ + pos, 8));
      return true;
    }
    return failObject(obj, "has unsupported marker " + hexByte(m));
  }

  bool string(std::uint64_t obj, std::uint8_t m, size_t pos, std::string& out) {
    std::uint64_t n;
    if (!count(obj, m, pos, n))
      return false;
    const std::uint8_t* p = b_ + pos;
    if ((m & 0xF0) == kAscii) {
      if (!present(pos, n, 1))
        return failObject(obj, "is truncated");
      if (!isAscii(p, n))
        return failObject(obj, "is an ASCII string with a byte above 0x7f");
      if (!charge(n))
        return false;
      out.assign(reinterpret_cast<const char*>(p), n);
      return true;
    }
    if (!present(pos, n, 2))
      return failObject(obj, "is truncated");
    out.clear();
    out.reserve(n);
    for (std::uint64_t i = 0; i < n; ++i) {
      std::uint32_t c = (std::uint32_t{p[2 * i]} << 8) | p[2 * i + 1];
      if (c >= 0xD800 && c <= 0xDFFF) {
        std::uint32_t low = 0;
        if (i + 1 < n)
          low = (std::uint32_t{p[2 * i + 2]} << 8) | p[2 * i + 3];
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

  // Whether a container's `n` references are all there; each is checked as it is followed.
  bool refs(std::uint64_t obj, size_t pos, std::uint64_t n, size_t depth) {
    if (depth >= BinaryPropertyList::kMaxNesting) {
      return fail("nesting deeper than " + std::to_string(BinaryPropertyList::kMaxNesting) +
                  " levels");
    }
    if (!present(pos, n, refSize_))
      return failObject(obj, "is truncated");
    return true;
  }

  // Whether container `obj` may contain object `r`: it exists and is not `obj` or one of the
  // containers `obj` sits in.
  [[gnu::always_inline]] bool child(std::uint64_t obj, std::uint64_t r) {
    if (r >= count_) [[unlikely]] {
      return failObject(obj, "refers to object " + std::to_string(r) + ", which does not exist");
    }
    if (r == obj) [[unlikely]] {
      return failObject(obj, "refers to itself");
    }
    if (onPath_[r]) [[unlikely]] {
      return failObject(r, "contains itself");
    }
    return true;
  }

  // Keys repeat in every record of a list; their text is taken from here after the first time.
  bool key(std::uint64_t obj, std::uint64_t k, std::string& out) {
    if (k >= count_) [[unlikely]] {
      return failObject(obj, "refers to object " + std::to_string(k) + ", which does not exist");
    }
    KeyCacheEntry& cached = keyCache_[k % kKeyCacheSize];
    if (cached.object != k) {
      size_t kpos = offsetOf(k);
      std::uint8_t km = b_[kpos++];
      if ((km & 0xF0) != kAscii && (km & 0xF0) != kUtf16) {
        return failObject(obj, "has a key that is not a string (object " + std::to_string(k) + ")");
      }
      cached.object = kNoObject;
      if (!string(k, km, kpos, cached.text))
        return false;
      cached.object = k;
    } else if (!charge(cached.text.size())) {
      return false;
    }
    out = cached.text;
    return true;
  }

  bool array(std::uint64_t obj,
             size_t pos,
             std::uint64_t n,
             size_t depth,
             PlistValue::Array& items) {
    items.reserve(n);
    auto append = [&items](auto&& v) -> PlistValue& {
      return items.emplace_back(std::forward<decltype(v)>(v));
    };
    onPath_[obj] = 1;
    const std::uint8_t* p = b_ + pos;
    for (std::uint64_t i = 0; i < n; ++i, p += refSize_) {
      std::uint64_t r = refAt(p);
      if (!child(obj, r) || !object(r, depth + 1, append))
        return false;
    }
    onPath_[obj] = 0;
    return true;
  }

  bool dictionary(std::uint64_t obj,
                  size_t pos,
                  std::uint64_t n,
                  size_t depth,
                  PlistValue::Dictionary& entries) {
    entries.reserve(n);
    std::string key;
    auto append = [&entries, &key](auto&& v) -> PlistValue& {
      return entries
          .emplace_back(std::piecewise_construct, std::forward_as_tuple(std::move(key)),
                        std::forward_as_tuple(std::forward<decltype(v)>(v)))
          .second;
    };
    onPath_[obj] = 1;
    const std::uint8_t* keys = b_ + pos;
    const std::uint8_t* values = keys + n * refSize_;
    for (std::uint64_t i = 0; i < n; ++i) {
      if (!this->key(obj, refAt(keys + i * refSize_), key))
        return false;
      std::uint64_t r = refAt(values + i * refSize_);
      if (!child(obj, r) || !object(r, depth + 1, append))
        return false;
    }
    onPath_[obj] = 0;
    return distinctKeys(obj, entries);
  }

  bool distinctKeys(std::uint64_t obj, const PlistValue::Dictionary& entries) {
    size_t n = entries.size();
    if (n <= 16) {
      for (size_t i = 1; i < n; ++i) {
        for (size_t j = 0; j < i; ++j) {
          if (entries[i].first == entries[j].first)
            return repeatedKey(obj, entries[i].first);
        }
      }
      return true;
    }
    std::vector<std::string_view> keys;
    keys.reserve(n);
    for (const auto& e : entries)
      keys.emplace_back(e.first);
    std::sort(keys.begin(), keys.end());
    auto it = std::adjacent_find(keys.begin(), keys.end());
    return it == keys.end() || repeatedKey(obj, *it);
  }

  bool repeatedKey(std::uint64_t obj, std::string_view key) {
    return failObject(obj, "has the key \"" + std::string(key) + "\" twice");
  }

  const std::uint8_t* b_;
  size_t size_;
  std::uint8_t offsetSize_ = 0;
  std::uint8_t refSize_ = 0;
  unsigned offsetShift_ = 0;
  unsigned refShift_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t top_ = 0;
  std::uint64_t tableOffset_ = 0;
  size_t budget_ = 0;
  std::vector<std::uint8_t> onPath_;
  std::string error_;

  static constexpr std::uint64_t kNoObject = ~std::uint64_t{0};
  static constexpr size_t kKeyCacheSize = 64;
  struct KeyCacheEntry {
    std::uint64_t object = kNoObject;
    std::string text;
  };
  KeyCacheEntry keyCache_[kKeyCacheSize];
};

}  // namespace

Result<Data> BinaryPropertyList::write(const PlistValue& root) {
  thread_local WriterScratch scratch;
  auto result = Writer(scratch).run(root);
  scratch.trim();
  return result;
}

Result<PlistValue> BinaryPropertyList::read(const std::uint8_t* bytes, size_t size) {
  if (!bytes)
    size = 0;
  return Reader(bytes, size).run();
}
