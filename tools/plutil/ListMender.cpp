#include "plutil/ListMender.h"

#include <algorithm>
#include <variant>

#include "app/core/BasicMethod.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "plutil/PlistPrinter.h"

using nimbrel::DecodingError;
using nimbrel::File;

namespace {

bool isListKey(const std::string& key) {
  return key == nimbrel::kRecentFilesKey || key == nimbrel::kFavFilesKey;
}

// The records of a stored list, each read or with the reason it cannot be; an error when the value
// holds no list at all.
struct Reading {
  std::string error;
  std::vector<std::variant<File, DecodingError>> records;
};

Reading read(const PlistValue& value) {
  if (!value.isData()) return {"not data but " + std::string(plistTypeName(value.type())), {}};
  auto root = BinaryPropertyList::read(value.data());
  if (!root) return {"not a property list (" + root.error() + ")", {}};
  if (!root->isArray()) return {"not a list but " + std::string(plistTypeName(root->type())), {}};
  Reading reading;
  for (const auto& element : root->array()) reading.records.push_back(File::decode(element));
  return reading;
}

}  // namespace

std::string ListMender::describe(const PlistValue::Dictionary& values) {
  std::string out;
  for (const auto& [key, value] : values) {
    if (!isListKey(key)) continue;
    auto reading = read(value);
    out += "\"" + key + "\" => ";
    if (!reading.error.empty()) {
      out += reading.error + "\n";
      continue;
    }
    auto unreadable = std::count_if(reading.records.begin(), reading.records.end(),
                                    [](const auto& r) { return std::holds_alternative<DecodingError>(r); });
    out += std::to_string(reading.records.size()) + " records, " + std::to_string(unreadable) + " unreadable\n";
    for (size_t i = 0; i < reading.records.size(); ++i) {
      out += "  " + std::to_string(i) + " => ";
      if (const auto* file = std::get_if<File>(&reading.records[i])) {
        out += file->url.absoluteString() + " (" + std::string(nimbrel::rawValue(file->filetype)) + ", opened " +
               PlistPrinter::formatDate(file->openingDate) + ")\n";
      } else {
        out += "unreadable: " + std::get<DecodingError>(reading.records[i]).debugDescription + "\n";
      }
    }
  }
  return out.empty() ? "no lists\n" : out;
}

std::vector<ListMender::Outcome> ListMender::mend(PlistValue::Dictionary& values) {
  std::vector<Outcome> outcomes;
  for (auto it = values.begin(); it != values.end();) {
    if (!isListKey(it->first)) {
      ++it;
      continue;
    }
    Outcome outcome{it->first};
    auto reading = read(it->second);
    std::vector<File> files;
    for (auto& record : reading.records) {
      if (auto* file = std::get_if<File>(&record)) files.push_back(std::move(*file));
    }
    outcome.kept = files.size();
    outcome.dropped = reading.records.size() - files.size();
    auto bytes = reading.error.empty() ? nimbrel::encodeFiles(files) : std::nullopt;
    if (bytes) {
      it->second = PlistValue(std::move(*bytes));
      ++it;
    } else {
      outcome.removed = true;
      it = values.erase(it);
    }
    outcomes.push_back(outcome);
  }
  return outcomes;
}
