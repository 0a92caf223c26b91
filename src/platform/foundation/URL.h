#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// An absolute or relative URL, parsed strictly (RFC 3986). Two URLs are equal when their
// absolute strings are.
class URL {
 public:
  // `URL(string:)`: no value for text that is no valid URL (a blank, a bad percent escape, ...).
  static std::optional<URL> withString(std::string_view text);
  // `URL(string:relativeTo:)`, made whole: the reference resolved against `base`.
  static std::optional<URL> withStringRelativeTo(std::string_view text, const URL& base);
  // A file URL for an absolute path (a relative one is taken from the working directory);
  // characters outside the path set are percent-encoded. A path naming an existing directory, or
  // ending in "/", gets a trailing slash.
  static URL fileURLWithPath(std::string_view path);
  // Takes the caller's word: a trailing slash exactly when `isDirectory`.
  static URL fileURLWithPath(std::string_view path, bool isDirectory);

  const std::string& absoluteString() const { return absolute_; }
  // "" when absent; as written, case kept.
  std::string scheme() const;
  // Decoded, without the brackets of an IP literal; "" when absent.
  std::string host() const;
  // The decoded path, without a trailing slash (except for "/" itself).
  std::string path() const;
  // As written (still percent-encoded); no value without "?", "" for a "?" with nothing after.
  std::optional<std::string> query() const;
  bool isFileURL() const;
  // The last component of the decoded path ("" for none; "/" for the root).
  std::string lastPathComponent() const;
  // The text after the last "." of the last component, "" when there is none or the only dot
  // starts the name (".hidden").
  std::string pathExtension() const;
  // Appends one component (percent-encoded) to the path, keeping query and fragment out of it.
  // For a file URL the one-argument form adds a trailing slash when the result names an existing
  // directory; other URLs keep the component as given.
  URL appendingPathComponent(std::string_view component) const;
  URL appendingPathComponent(std::string_view component, bool isDirectory) const;
  // The parent directory, with a trailing slash. The root and an empty path stay as they are.
  URL deletingLastPathComponent() const;

  friend bool operator==(const URL& a, const URL& b) { return a.absolute_ == b.absolute_; }

 private:
  // Offsets into absolute_ of the pieces of [scheme:][//authority]path[?query][#fragment], found
  // once when the URL is made so that no accessor parses again.
  struct Layout {
    std::size_t schemeLength = 0;  // a scheme is never empty, so 0 means none
    bool hasHost = false;
    std::size_t hostBegin = 0, hostEnd = 0;  // without the brackets of an IP literal
    std::size_t pathBegin = 0, pathEnd = 0;
    std::size_t queryEnd = 0;  // == pathEnd when there is no query; '#' starts here otherwise
  };

  URL(std::string absolute, Layout layout) : absolute_(std::move(absolute)), layout_(layout) {}
  static std::optional<URL> parse(std::string_view text);
  static URL fileURLWithAbsolutePath(std::string absolute, bool isDirectory);
  std::string_view rawPath() const;
  // This URL with its (still encoded) path replaced; scheme, authority, query and fragment stay.
  URL replacingRawPath(std::string_view path) const;
  // No value for isDirectory: a file URL asks the file system.
  URL appendingComponent(std::string_view component, std::optional<bool> isDirectory) const;

  std::string absolute_;
  Layout layout_;
};

template <>
struct std::hash<URL> {
  size_t operator()(const URL& u) const noexcept {
    return std::hash<std::string>()(u.absoluteString());
  }
};
