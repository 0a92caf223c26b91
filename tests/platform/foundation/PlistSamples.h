#pragma once

// Property lists in the shape the app keeps its recently opened items in, shared by the
// codec's tests and benchmarks so that both measure the same thing.

#include <cstdint>
#include <string>

#include "platform/foundation/PlistValue.h"

namespace plist_samples {

class Rng {
 public:
  explicit Rng(std::uint64_t seed) : s_(seed) {}
  std::uint64_t next() {
    std::uint64_t z = (s_ += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
  }
  std::uint64_t below(std::uint64_t n) { return next() % n; }

 private:
  std::uint64_t s_;
};

inline std::string uuid(Rng& rng) {
  constexpr char kHex[] = "0123456789ABCDEF";
  std::string s;
  for (int i = 0; i < 32; ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20)
      s += '-';
    s += kHex[rng.below(16)];
  }
  return s;
}

// Varied the way real entries are: imported documents with escaped names, photo-library
// assets, music-library items, and with `nonAscii` some names in other scripts.
inline std::string url(Rng& rng, std::size_t i, const char*& filetype, bool nonAscii) {
  static const char* const kWords[] = {"report", "Invoice", "holiday", "scan",  "notes",
                                       "draft",  "budget",  "IMG",     "Track", "minutes"};
  static const char* const kForeign[] = {
      "Grüße", "Überweisung März", "写真", "отчёт", "😀 party", "naïve café", "日本語のファイル"};
  static const char* const kDocExt[] = {"pdf", "docx", "txt", "pages", "xlsx", "key"};
  std::string word = kWords[rng.below(10)];
  switch (rng.below(4)) {
    case 0: {
      filetype = "photo";
      return "assets-library://asset/asset.JPG?id=" + uuid(rng) + "&ext=JPG";
    }
    case 1: {
      filetype = "video";
      return "assets-library://asset/asset.MOV?id=" + uuid(rng) + "&ext=MOV";
    }
    case 2: {
      filetype = "music";
      return "ipod-library://item/item.m4a?id=" + std::to_string(rng.next() >> 4);
    }
    default: {
      filetype = "docs";
      std::string name = nonAscii && i % 3 == 0 ? std::string(kForeign[rng.below(7)])
                                                : word + "%20" + std::to_string(rng.below(100));
      return "file:///home/u/Documents/Nimbrel/importedFiles/" + name + "." + kDocExt[rng.below(6)];
    }
  }
}

inline PlistValue record(std::string url, double openingDate, const char* filetype) {
  PlistValue::Dictionary urlDict{{"relative", PlistValue(std::move(url))}};
  return PlistValue(PlistValue::Dictionary{
      {"url", PlistValue(std::move(urlDict))},
      {"openingDate", PlistValue(Date{openingDate})},
      {"filetype", PlistValue(filetype)},
  });
}

// `microsecondDates` keeps every date on a whole microsecond, which is all a Python
// datetime can hold; otherwise dates use the double's full precision.
inline PlistValue records(std::size_t n,
                          std::uint64_t seed = 1,
                          bool nonAscii = false,
                          bool microsecondDates = false) {
  Rng rng(seed);
  PlistValue::Array items;
  items.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const char* filetype = "docs";
    std::string u = url(rng, i, filetype, nonAscii);
    double date;
    if (microsecondDates) {
      auto us = static_cast<std::int64_t>(785'000'000'000'000 + rng.below(60'000'000'000'000));
      date = static_cast<double>(us) / 1e6;
    } else {
      date = 785'000'000.0 + static_cast<double>(rng.below(60'000'000)) +
             static_cast<double>(rng.next() >> 11) / 9007199254740992.0;
    }
    items.push_back(record(std::move(u), date, filetype));
  }
  return PlistValue(std::move(items));
}

}  // namespace plist_samples
