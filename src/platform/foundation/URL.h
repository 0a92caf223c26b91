#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// An absolute or relative URL, parsed strictly (RFC 3986). Two URLs are equal when their
// absolute strings are.
class URL {
 public:
  // `URL(string:)`: no value for text that is no valid URL (a blank, a bad percent escape, ...).
  static std::optional<URL> withString(std::string_view text);
  // A file URL for an absolute path (a relative one is taken from the working directory);
  // characters outside the path set are percent-encoded. A path naming an existing directory, or
  // ending in "/", gets a trailing slash.
  static URL fileURLWithPath(std::string_view path);
  static URL fileURLWithPath(std::string_view path, bool isDirectory);

  const std::string& absoluteString() const { return absolute_; }
  std::string scheme() const;
  std::string host() const;
  // The decoded path, without a trailing slash (except for "/" itself).
  std::string path() const;
  std::optional<std::string> query() const;
  bool isFileURL() const;
  // The last component of the decoded path ("" for none; "/" for the root).
  std::string lastPathComponent() const;
  // The text after the last "." of the last component, "" when there is none.
  std::string pathExtension() const;
  // Appends one component (percent-encoded) to the path, keeping query and fragment out of it.
  URL appendingPathComponent(std::string_view component) const;
  URL appendingPathComponent(std::string_view component, bool isDirectory) const;
  URL deletingLastPathComponent() const;

  friend bool operator==(const URL& a, const URL& b) { return a.absolute_ == b.absolute_; }

 private:
  explicit URL(std::string absolute) : absolute_(std::move(absolute)) {}
  std::string absolute_;
};

template <>
struct std::hash<URL> {
  size_t operator()(const URL& u) const noexcept { return std::hash<std::string>()(u.absoluteString()); }
};
