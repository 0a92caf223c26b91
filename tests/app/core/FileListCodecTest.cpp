#include "app/core/FileListCodec.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>

#include "platform/foundation/BinaryPropertyList.h"

namespace nimbrel {
namespace {

File record(const std::string& url, double date, FileType kind) {
  return File{*URL::withString(url), Date{date}, kind};
}

// Records of every kind, with shared addresses, addresses that equal a key or a kind's name,
// strings of every length class and dates that are no ordinary numbers.
std::vector<File> varied(size_t n) {
  const FileType kinds[] = {FileType::docs, FileType::photo, FileType::video, FileType::music};
  const double odd[] = {-0.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::denorm_min(), -1e12};
  std::vector<File> files;
  for (size_t i = 0; i < n; ++i) {
    std::string url;
    switch (i % 7) {
      case 0: url = "assets-library://asset/asset.JPG?id=" + std::to_string(i) + "&extJPG"; break;
      case 1: url = "file:///home/u/importedFiles/" + std::string(i % 300, 'a') + ".pdf"; break;
      case 2: url = "ipod-library://item/item.mp3?id=" + std::to_string(i % 40); break;
      case 3: url = i % 2 ? "url" : "photo"; break;
      case 4: url = "x"; break;
      default: url = "assets-library://asset/asset.MOV?id=" + std::to_string(i / 3) + "&extMOV";
    }
    double date = i % 11 == 0 ? odd[(i / 11) % 5] : 785000000.0 + static_cast<double>(i) / 7;
    files.push_back(record(url, date, kinds[i % 4]));
  }
  return files;
}

void expectSameOutcome(const std::variant<std::vector<File>, DecodingError>& a,
                       const std::variant<std::vector<File>, DecodingError>& b, const std::string& context) {
  ASSERT_EQ(a.index(), b.index()) << context;
  if (auto* error = std::get_if<DecodingError>(&a)) {
    EXPECT_EQ(error->kind, std::get<DecodingError>(b).kind) << context;
    EXPECT_EQ(error->debugDescription, std::get<DecodingError>(b).debugDescription) << context;
    return;
  }
  const auto& x = std::get<std::vector<File>>(a);
  const auto& y = std::get<std::vector<File>>(b);
  ASSERT_EQ(x.size(), y.size()) << context;
  for (size_t i = 0; i < x.size(); ++i) {
    EXPECT_EQ(x[i].url.absoluteString(), y[i].url.absoluteString()) << context << " record " << i;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(x[i].openingDate.timeIntervalSinceReferenceDate),
              std::bit_cast<std::uint64_t>(y[i].openingDate.timeIntervalSinceReferenceDate))
        << context << " record " << i;
    EXPECT_EQ(x[i].filetype, y[i].filetype) << context << " record " << i;
  }
}

// Sizes cross the widths of references and offsets (1, 2 and 3 bytes) and of counts.
TEST(FileListCodec, WritesTheGenericEncodersBytesAndReadsThemBack) {
  for (size_t n : {0, 1, 14, 15, 40, 300, 14000}) {
    auto files = varied(n);
    auto direct = FileListCodec::encode(files);
    auto generic = FileListCodec::encodeGeneric(files);
    ASSERT_TRUE(direct && generic);
    EXPECT_TRUE(*direct == *generic) << n << " records";
    expectSameOutcome(FileListCodec::decode(*generic), FileListCodec::decodeGeneric(*generic),
                      std::to_string(n) + " records");
  }
}

TEST(FileListCodec, ReadsWhatItDoesNotWriteAsTheGenericDecoderDoes) {
  auto keyed = [](PlistValue::Dictionary record) {
    return *BinaryPropertyList::write(PlistValue(PlistValue::Array{PlistValue(std::move(record))}));
  };
  PlistValue url(PlistValue::Dictionary{{"relative", "file:///a/b.pdf"}});
  const Data lists[] = {
      keyed({{"filetype", "docs"}, {"url", url}, {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"url", url}, {"openingDate", Date{3}}, {"extra", 1}}),
      keyed({{"filetype", "Docs"}, {"url", url}, {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"url", url}, {"openingDate", 3.0}}),
      keyed({{"filetype", "docs"}, {"url", "file:///a"}, {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"url", PlistValue::Dictionary{{"relative", "b"}, {"base", url}}},
             {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"url", PlistValue::Dictionary{{"relative", "a b"}}}, {"openingDate", Date{3}}}),
      keyed({{"filetype", "docs"}, {"url", PlistValue::Dictionary{{"relative", "file:///Grüße"}}},
             {"openingDate", Date{3}}}),
      *BinaryPropertyList::write(PlistValue(PlistValue::Dictionary{})),
  };
  for (const Data& list : lists) {
    expectSameOutcome(FileListCodec::decode(list), FileListCodec::decodeGeneric(list), "hand-made list");
  }
  // Every damaged byte and every cut of a small list: the same records or the same error.
  const Data good = *FileListCodec::encode(varied(9));
  for (size_t i = 0; i < good.size(); ++i) {
    for (std::uint8_t flip : {0x01, 0x10, 0x80, 0xFF}) {
      Data bad = good;
      bad[i] ^= flip;
      expectSameOutcome(FileListCodec::decode(bad), FileListCodec::decodeGeneric(bad),
                        "byte " + std::to_string(i) + " ^ " + std::to_string(flip));
    }
    Data cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(i));
    expectSameOutcome(FileListCodec::decode(cut), FileListCodec::decodeGeneric(cut), "cut at " + std::to_string(i));
  }
}

}  // namespace
}  // namespace nimbrel
