#include "app/core/File.h"

namespace nimbrel {

std::string DecodingError::localizedDescription() const {
  if (kind == Kind::keyNotFound) return "The data couldn\u2019t be read because it is missing.";
  return "The data couldn\u2019t be read because it isn\u2019t in the correct format.";
}

PlistValue File::encode() const {
  // Built by moves: an initializer list would copy every nested value once more.
  PlistValue::Dictionary urlForm;
  urlForm.reserve(1);
  urlForm.emplace_back("relative", PlistValue(url.absoluteString()));
  PlistValue::Dictionary record;
  record.reserve(3);
  record.emplace_back("url", PlistValue(std::move(urlForm)));
  record.emplace_back("openingDate", PlistValue(openingDate));
  record.emplace_back("filetype", PlistValue(std::string(rawValue(filetype))));
  return PlistValue(std::move(record));
}

namespace {

DecodingError missing(const std::string& key) {
  return {DecodingError::Kind::keyNotFound, "No value associated with key CodingKeys(stringValue: \"" +
                                                key + "\", intValue: nil) (\"" + key + "\")."};
}

DecodingError mismatch(const char* expected, const PlistValue& found) {
  return {DecodingError::Kind::typeMismatch, std::string("Expected to decode ") + expected +
                                                 " but found " + plistTypeName(found.type()) +
                                                 " instead."};
}

std::variant<URL, DecodingError> decodeURL(const PlistValue& value) {
  if (!value.isDictionary()) return mismatch("Dictionary<String, Any>", value);
  const PlistValue* relative = value.find("relative");
  if (!relative) return missing("relative");
  if (!relative->isString()) return mismatch("String", *relative);
  std::optional<URL> url;
  if (const PlistValue* base = value.find("base")) {
    auto baseURL = decodeURL(*base);
    if (auto* error = std::get_if<DecodingError>(&baseURL)) return *error;
    url = URL::withStringRelativeTo(relative->string(), std::get<URL>(baseURL));
  } else {
    url = URL::withString(relative->string());
  }
  if (!url) return DecodingError{DecodingError::Kind::dataCorrupted, "Invalid URL string."};
  return *url;
}

}  // namespace

std::variant<File, DecodingError> File::decode(const PlistValue& value) {
  if (!value.isDictionary()) return mismatch("Dictionary<String, Any>", value);
  const PlistValue* url = value.find("url");
  if (!url) return missing("url");
  auto decodedURL = decodeURL(*url);
  if (auto* error = std::get_if<DecodingError>(&decodedURL)) return *error;

  const PlistValue* date = value.find("openingDate");
  if (!date) return missing("openingDate");
  if (!date->isDate()) return mismatch("Date", *date);

  const PlistValue* type = value.find("filetype");
  if (!type) return missing("filetype");
  if (!type->isString()) return mismatch("String", *type);
  auto kind = fileTypeFromRawValue(type->string());
  if (!kind) {
    return DecodingError{DecodingError::Kind::dataCorrupted,
                         "Cannot initialize FileType from invalid String value " + type->string()};
  }
  return File{std::get<URL>(std::move(decodedURL)), date->date(), *kind};
}

std::string assetAddress(const std::string& localIdentifier, FileType kind) {
  std::string id = localIdentifier.substr(0, localIdentifier.find('/'));
  if (kind == FileType::video) return "assets-library://asset/asset.MOV?id=" + id + "&extMOV";
  return "assets-library://asset/asset.JPG?id=" + id + "&extJPG";
}

}  // namespace nimbrel
