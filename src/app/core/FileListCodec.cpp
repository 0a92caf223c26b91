#include "app/core/FileListCodec.h"

#include <bit>
#include <cstring>
#include <functional>
#include <limits>
#include <string_view>

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/PlistValue.h"
#include "platform/foundation/PropertyListDecoder.h"
#include "platform/foundation/PropertyListEncoder.h"

// Why not only the generic codec: a list of records is a fixed shape, and going through a tree
// of values costs an allocation per key, string and dictionary, which for the long recent
// list is most of the time spent at every launch and every open.

namespace nimbrel {

namespace {

constexpr std::uint8_t kMagic[8] = {'b', 'p', 'l', 'i', 's', 't', '0', '0'};
constexpr size_t kHeaderSize = 8;
constexpr size_t kTrailerSize = 32;
constexpr std::uint8_t kDate = 0x33;
constexpr std::uint8_t kAscii = 0x50;
constexpr std::uint8_t kArray = 0xA0;
constexpr std::uint8_t kRecordDict = 0xD3;
constexpr std::uint8_t kUrlDict = 0xD1;

constexpr std::string_view kUrlKey = "url";
constexpr std::string_view kDateKey = "openingDate";
constexpr std::string_view kTypeKey = "filetype";
constexpr std::string_view kRelativeKey = "relative";

std::uint8_t bytesToHold(std::uint64_t value) {
  std::uint8_t n = 1;
  while (n < 8 && (value >> (8 * n)) != 0) ++n;
  return n;
}

size_t markerSize(size_t count) {
  if (count < 15) return 1;
  return count <= 0xFF ? 3 : count <= 0xFFFF ? 4 : count <= 0xFFFFFFFFull ? 6 : 10;
}

bool isAscii(const char* p, size_t n) {
  std::uint64_t high = 0;
  for (; n >= 8; p += 8, n -= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    high |= w;
  }
  if (high & 0x8080808080808080ull) return false;
  for (size_t i = 0; i < n; ++i) {
    if (static_cast<unsigned char>(p[i]) >= 0x80) return false;
  }
  return true;
}

std::uint64_t readBE(const std::uint8_t* p, size_t n) {
  std::uint64_t v = 0;
  for (size_t i = 0; i < n; ++i) v = (v << 8) | p[i];
  return v;
}

// The generic writer shares equal strings, keys included, and numbers objects in the order it
// meets them; this table gives the same numbers.
class StringIds {
 public:
  struct Slot {
    const char* text = nullptr;
    std::uint32_t size = 0;
    std::uint32_t id = 0;
  };

  StringIds(std::vector<Slot>& slots, size_t expected) : slots_(slots) {
    size_t size = 64;
    while (size < 2 * expected + 16) size *= 2;
    slots_.assign(size, Slot{});
  }

  // The number of an equal string met before, or `fresh` when `s` is new.
  std::uint32_t intern(std::string_view s, std::uint32_t fresh, bool& inserted) {
    size_t h = std::hash<std::string_view>()(s);
    size_t mask = slots_.size() - 1;
    for (size_t i = h & mask;; i = (i + 1) & mask) {
      Slot& slot = slots_[i];
      if (!slot.text) {
        slot = Slot{s.data(), static_cast<std::uint32_t>(s.size()), fresh};
        inserted = true;
        return fresh;
      }
      if (std::string_view(slot.text, slot.size) == s) {
        inserted = false;
        return slot.id;
      }
    }
  }

 private:
  std::vector<Slot>& slots_;
};

struct RecordIds {
  std::uint32_t record, urlKey, dateKey, typeKey, urlDict, relativeKey, url, date, type;
};

// Kept per thread between calls: fresh pages for a long list's tables cost as much as the encoding.
struct WriterScratch {
  std::vector<StringIds::Slot> slots;
  std::vector<RecordIds> ids;
};

class Writer {
 public:
  Writer(const std::vector<File>& files, WriterScratch& scratch)
      : files_(files), strings_(scratch.slots, files.size() + 8), ids_(scratch.ids) {
    ids_.clear();
  }

  // False when a string is not ASCII: the generic writer then writes it in UTF-16.
  bool run(Data& out) {
    ids_.reserve(files_.size());
    bytes_ = markerSize(files_.size());
    count_ = 1;
    for (const File& f : files_) {
      const std::string& url = f.url.absoluteString();
      if (!isAscii(url.data(), url.size())) return false;
      RecordIds ids{};
      ids.record = object(1);
      ids.urlKey = string(kUrlKey);
      ids.dateKey = string(kDateKey);
      ids.typeKey = string(kTypeKey);
      ids.urlDict = object(1);
      ids.relativeKey = string(kRelativeKey);
      ids.url = string(url);
      ids.date = object(9);
      ids.type = string(rawValue(f.filetype));
      ids_.push_back(ids);
    }
    emit(out);
    return true;
  }

 private:
  std::uint32_t object(size_t bytes) {
    bytes_ += bytes;
    return count_++;
  }

  std::uint32_t string(std::string_view s) {
    bool inserted;
    std::uint32_t id = strings_.intern(s, count_, inserted);
    if (inserted) object(markerSize(s.size()) + s.size());
    return id;
  }

  void putBE(std::uint64_t v, size_t n) {
    if (n == 2) {
      p_[0] = static_cast<std::uint8_t>(v >> 8);
      p_[1] = static_cast<std::uint8_t>(v);
      p_ += 2;
      return;
    }
    if (n == 8) {
      v = __builtin_bswap64(v);
      std::memcpy(p_, &v, 8);
      p_ += 8;
      return;
    }
    for (size_t i = n; i > 0; --i) {
      p_[i - 1] = static_cast<std::uint8_t>(v);
      v >>= 8;
    }
    p_ += n;
  }

  void putCount(std::uint8_t kind, size_t count) {
    if (count < 15) {
      *p_++ = static_cast<std::uint8_t>(kind | count);
      return;
    }
    *p_++ = kind | 0x0F;
    int width = count <= 0xFF ? 0 : count <= 0xFFFF ? 1 : count <= 0xFFFFFFFFull ? 2 : 3;
    *p_++ = static_cast<std::uint8_t>(0x10 | width);
    putBE(count, size_t{1} << width);
  }

  void start() {
    std::uint8_t* saved = p_;
    p_ = table_ + static_cast<size_t>(written_++) * offsetSize_;
    putBE(static_cast<std::uint64_t>(saved - begin_), offsetSize_);
    p_ = saved;
  }

  void putString(std::string_view s, std::uint32_t id) {
    if (id != written_) return;  // written before
    start();
    putCount(kAscii, s.size());
    std::memcpy(p_, s.data(), s.size());
    p_ += s.size();
  }

  void emit(Data& out) {
    refSize_ = bytesToHold(count_);
    size_t tableOffset = kHeaderSize + bytes_ + 9 * files_.size() * refSize_;
    offsetSize_ = bytesToHold(tableOffset);
    out.resize(tableOffset + static_cast<size_t>(count_) * offsetSize_ + kTrailerSize);
    begin_ = p_ = out.data();
    table_ = begin_ + tableOffset;
    std::memcpy(p_, kMagic, sizeof kMagic);
    p_ += sizeof kMagic;
    start();
    putCount(kArray, files_.size());
    for (const RecordIds& ids : ids_) putBE(ids.record, refSize_);
    for (size_t i = 0; i < files_.size(); ++i) {
      const RecordIds& ids = ids_[i];
      const File& f = files_[i];
      start();
      *p_++ = kRecordDict;
      for (auto ref : {ids.urlKey, ids.dateKey, ids.typeKey, ids.urlDict, ids.date, ids.type}) putBE(ref, refSize_);
      putString(kUrlKey, ids.urlKey);
      putString(kDateKey, ids.dateKey);
      putString(kTypeKey, ids.typeKey);
      start();
      *p_++ = kUrlDict;
      putBE(ids.relativeKey, refSize_);
      putBE(ids.url, refSize_);
      putString(kRelativeKey, ids.relativeKey);
      putString(f.url.absoluteString(), ids.url);
      start();
      *p_++ = kDate;
      putBE(std::bit_cast<std::uint64_t>(f.openingDate.timeIntervalSinceReferenceDate), 8);
      putString(rawValue(f.filetype), ids.type);
    }
    p_ = table_ + static_cast<size_t>(count_) * offsetSize_;
    std::memset(p_, 0, 6);
    p_ += 6;
    *p_++ = offsetSize_;
    *p_++ = refSize_;
    putBE(count_, 8);
    putBE(0, 8);
    putBE(tableOffset, 8);
  }

  const std::vector<File>& files_;
  StringIds strings_;
  std::vector<RecordIds>& ids_;
  size_t bytes_ = 0;  // every object but its references
  std::uint32_t count_ = 0;
  std::uint32_t written_ = 0;
  std::uint8_t refSize_ = 1, offsetSize_ = 1;
  std::uint8_t *begin_ = nullptr, *table_ = nullptr, *p_ = nullptr;
};

// Reads only the shape the writer above gives (any key order, any sharing of strings) and
// declines everything else, leaving the verdict on it to the generic decoder. It accepts no
// file that the generic reader refuses: it makes the same checks of the trailer, the offsets
// and the output budget.
class Reader {
 public:
  explicit Reader(const Data& bytes) : b_(bytes.data()), size_(bytes.size()) {}

  bool run(std::vector<File>& files) {
    if (!trailer()) return false;
    size_t pos = offsetOf(top_);
    std::uint8_t m = b_[pos++];
    std::uint64_t n;
    if ((m & 0xF0) != kArray || !count(m, pos, n) || n > (tableOffset_ - pos) / refSize_) return false;
    if (!charge(sizeof(PlistValue)) || !charge(n * sizeof(PlistValue))) return false;
    files.reserve(n);
    for (std::uint64_t i = 0; i < n; ++i) {
      std::uint64_t r = ref(b_ + pos + i * refSize_);
      if (r >= count_ || r == top_ || !record(r, files)) return false;
    }
    return true;
  }

 private:
  bool trailer() {
    if (size_ < kHeaderSize + kTrailerSize || std::memcmp(b_, kMagic, sizeof kMagic) != 0) return false;
    const std::uint8_t* t = b_ + size_ - kTrailerSize;
    offsetSize_ = t[6];
    refSize_ = t[7];
    count_ = readBE(t + 8, 8);
    top_ = readBE(t + 16, 8);
    tableOffset_ = readBE(t + 24, 8);
    if (offsetSize_ < 1 || offsetSize_ > 8 || refSize_ < 1 || refSize_ > 8) return false;
    if (count_ == 0 || top_ >= count_) return false;
    if (refSize_ < 8 && count_ - 1 > (std::uint64_t{1} << (8 * refSize_)) - 1) return false;
    size_t tableEnd = size_ - kTrailerSize;
    if (tableOffset_ < kHeaderSize + 1 || tableOffset_ > tableEnd) return false;
    if (count_ > (tableEnd - tableOffset_) / offsetSize_) return false;
    offsetShift_ = 64 - 8 * offsetSize_;
    refShift_ = 64 - 8 * refSize_;
    for (std::uint64_t i = 0; i < count_; ++i) {
      std::uint64_t off = offsetOf(i);
      if (off < kHeaderSize || off >= tableOffset_) return false;
    }
    constexpr size_t floor = BinaryPropertyList::kOutputBudgetFloor;
    constexpr size_t factor = BinaryPropertyList::kOutputBudgetFactor;
    budget_ = size_ > (std::numeric_limits<size_t>::max() - floor) / factor ? std::numeric_limits<size_t>::max()
                                                                           : floor + factor * size_;
    return true;
  }

  // Offsets and references are followed at least by the 32-byte trailer, so a full 8-byte load
  // from any of them stays inside the file.
  static std::uint64_t sized(const std::uint8_t* p, unsigned shift) {
    std::uint64_t v;
    std::memcpy(&v, p, 8);
    return __builtin_bswap64(v) >> shift;
  }
  std::uint64_t offsetOf(std::uint64_t obj) const { return sized(b_ + tableOffset_ + obj * offsetSize_, offsetShift_); }
  std::uint64_t ref(const std::uint8_t* p) const { return sized(p, refShift_); }

  bool charge(std::uint64_t n) {
    if (n > budget_) return false;
    budget_ -= n;
    return true;
  }

  bool count(std::uint8_t m, size_t& pos, std::uint64_t& n) const {
    n = m & 0x0F;
    if (n != 0x0F) return true;
    if (pos >= tableOffset_) return false;
    std::uint8_t c = b_[pos];
    if ((c & 0xF0) != 0x10 || (c & 0x0F) > 3) return false;
    size_t len = size_t{1} << (c & 0x0F);
    if (tableOffset_ - pos - 1 < len) return false;
    n = readBE(b_ + pos + 1, len);
    if (len == 8 && (n >> 63) != 0) return false;
    pos += 1 + len;
    return true;
  }

  // Keys are shared by every record; each key object is read once.
  bool key(std::uint64_t obj, std::string_view& out) {
    KeySlot& slot = keys_[obj % kKeySlots];
    if (slot.object == obj) {
      out = slot.text;
      return charge(out.size());
    }
    if (!ascii(obj, out)) return false;
    slot = KeySlot{obj, out};
    return true;
  }

  // An ASCII string object's text, charged as the generic reader charges it.
  bool ascii(std::uint64_t obj, std::string_view& out) {
    if (obj >= count_) return false;
    size_t pos = offsetOf(obj);
    std::uint8_t m = b_[pos++];
    std::uint64_t n;
    if ((m & 0xF0) != kAscii || !count(m, pos, n) || n > tableOffset_ - pos) return false;
    const char* p = reinterpret_cast<const char*>(b_ + pos);
    if (!isAscii(p, n) || !charge(n)) return false;
    out = std::string_view(p, n);
    return true;
  }

  bool record(std::uint64_t obj, std::vector<File>& files) {
    size_t pos = offsetOf(obj);
    if (b_[pos] != kRecordDict || 6 > (tableOffset_ - pos - 1) / refSize_) return false;
    if (!charge(3 * sizeof(PlistValue::Dictionary::value_type))) return false;
    const std::uint8_t* refs = b_ + pos + 1;
    std::uint64_t url = count_, date = count_, type = count_;
    for (int i = 0; i < 3; ++i) {
      std::string_view key;
      if (!this->key(ref(refs + i * refSize_), key)) return false;
      std::uint64_t value = ref(refs + (3 + i) * refSize_);
      std::uint64_t* slot = key == kUrlKey ? &url : key == kDateKey ? &date : key == kTypeKey ? &type : nullptr;
      if (!slot || *slot != count_ || value >= count_) return false;
      *slot = value;
    }
    std::optional<URL> address;
    double when;
    std::string_view raw;
    if (!urlValue(url, address) || !dateValue(date, when) || !this->key(type, raw)) return false;
    auto kind = fileTypeFromRawValue(raw);
    if (!kind) return false;
    files.push_back(File{std::move(*address), Date{when}, *kind});
    return true;
  }

  bool urlValue(std::uint64_t obj, std::optional<URL>& out) {
    size_t pos = offsetOf(obj);
    if (b_[pos] != kUrlDict || 2 > (tableOffset_ - pos - 1) / refSize_) return false;
    if (!charge(sizeof(PlistValue::Dictionary::value_type))) return false;
    std::string_view key, text;
    if (!this->key(ref(b_ + pos + 1), key) || key != kRelativeKey) return false;
    if (!ascii(ref(b_ + pos + 1 + refSize_), text)) return false;
    out = URL::withString(text);
    return out.has_value();
  }

  bool dateValue(std::uint64_t obj, double& out) const {
    size_t pos = offsetOf(obj);
    if (b_[pos] != kDate || tableOffset_ - pos - 1 < 8) return false;
    out = std::bit_cast<double>(readBE(b_ + pos + 1, 8));
    return true;
  }

  const std::uint8_t* b_;
  size_t size_;
  std::uint8_t offsetSize_ = 0, refSize_ = 0;
  unsigned offsetShift_ = 0, refShift_ = 0;
  std::uint64_t count_ = 0, top_ = 0, tableOffset_ = 0;
  size_t budget_ = 0;
  static constexpr size_t kKeySlots = 8;
  struct KeySlot {
    std::uint64_t object = ~std::uint64_t{0};
    std::string_view text;
  };
  KeySlot keys_[kKeySlots];
};

}  // namespace

std::optional<Data> FileListCodec::encode(const std::vector<File>& files) {
  thread_local WriterScratch scratch;
  Data out;
  if (Writer(files, scratch).run(out)) return out;
  return encodeGeneric(files);
}

std::variant<std::vector<File>, DecodingError> FileListCodec::decode(const Data& bytes) {
  std::vector<File> files;
  if (Reader(bytes).run(files)) return files;
  return decodeGeneric(bytes);
}

std::optional<Data> FileListCodec::encodeGeneric(const std::vector<File>& files) {
  PlistValue::Array array;
  array.reserve(files.size());
  for (const auto& f : files) array.push_back(f.encode());
  auto bytes = PropertyListEncoder().encode(PlistValue(std::move(array)));
  if (!bytes) return std::nullopt;
  return std::move(bytes).value();
}

std::variant<std::vector<File>, DecodingError> FileListCodec::decodeGeneric(const Data& bytes) {
  auto root = PropertyListDecoder().decode(bytes);
  if (!root) {
    return DecodingError{DecodingError::Kind::dataCorrupted,
                         "The given data was not a valid property list. (" + root.error() + ")"};
  }
  if (!root->isArray()) {
    return DecodingError{DecodingError::Kind::typeMismatch,
                         std::string("Expected to decode Array<Any> but found ") + plistTypeName(root->type()) +
                             " instead."};
  }
  std::vector<File> files;
  files.reserve(root->array().size());
  for (const auto& element : root->array()) {
    auto file = File::decode(element);
    if (auto* error = std::get_if<DecodingError>(&file)) return *error;
    files.push_back(std::get<File>(std::move(file)));
  }
  return files;
}

}  // namespace nimbrel
