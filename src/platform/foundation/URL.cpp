#include "platform/foundation/URL.h"

#include <uriparser/Uri.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <mutex>
#include <string>
#include <system_error>
#include <unordered_map>

#include "platform/foundation/FatalError.h"

namespace {

// uriparser's escaper keeps only the unreserved characters; Foundation's path set also keeps the
// sub-delimiters, ':', '@' and '/', and absolute strings must match what the platform produced.
constexpr std::array<bool, 256> makePathAllowed() {
  std::array<bool, 256> allowed{};
  for (int c = 'a'; c <= 'z'; ++c) allowed[c] = true;
  for (int c = 'A'; c <= 'Z'; ++c) allowed[c] = true;
  for (int c = '0'; c <= '9'; ++c) allowed[c] = true;
  for (unsigned char c : std::string_view("-._~!$&'()*+,;=:@/")) allowed[c] = true;
  return allowed;
}
constexpr std::array<bool, 256> kPathAllowed = makePathAllowed();

// `keepColon` false for the first segment of a scheme-less reference, where a ':' would read as
// the end of a scheme.
void appendEncoded(std::string& out, std::string_view text, bool keepColon = true) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  out.reserve(out.size() + text.size());
  std::size_t run = 0;  // start of the pending run of characters kept as they are
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<unsigned char>(text[i]);
    if (kPathAllowed[c] && (keepColon || c != ':')) continue;
    out.append(text, run, i - run);
    const char escape[] = {'%', kHex[c >> 4], kHex[c & 0xF]};
    out.append(escape, 3);
    run = i + 1;
  }
  out.append(text, run);
}

// Only ever applied to text that is known to hold well-formed escapes.
std::string decoded(std::string_view text) {
  std::string out(text);
  if (out.find('%') == std::string::npos) return out;
  const char* end = uriUnescapeInPlaceExA(out.data(), URI_FALSE, URI_BR_DONT_TOUCH);
  out.resize(static_cast<std::size_t>(end - out.data()));
  return out;
}

std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

bool isExistingDirectory(const std::string& path) {
  std::error_code ec;
  return std::filesystem::is_directory(path, ec);
}

// Joins a relative path to the working directory and folds runs of '/' into one.
std::string absoluteFilePath(std::string_view path) {
  std::string out;
  if (path.empty() || path.front() != '/') {
    std::error_code ec;
    std::filesystem::path cwd = std::filesystem::current_path(ec);
    if (ec) fatalError("no working directory to resolve a relative path against: " + ec.message());
    out = cwd.string();
    if (out.empty() || out.back() != '/') out.push_back('/');
  }
  out.reserve(out.size() + path.size());
  while (!path.empty()) {
    if (path.front() == '/' && !out.empty() && out.back() == '/') {
      path.remove_prefix(1);
      continue;
    }
    std::size_t next = path.find("//");
    std::size_t take = next == std::string_view::npos ? path.size() : next + 1;
    out.append(path.substr(0, take));
    path.remove_prefix(take);
  }
  return out;
}

}  // namespace

namespace {

// Stored lists are read again at every appearance of the home screen, so the same address texts
// come back time and again; parsing one costs several allocations in uriparser. Texts already
// found valid keep their layout here. Bounded: emptied when full.
template <class Layout>
class ParsedTexts {
 public:
  std::optional<Layout> find(std::string_view text) {
    std::lock_guard lock(mutex_);
    auto it = entries_.find(text);
    if (it == entries_.end()) return std::nullopt;
    return it->second;
  }
  void remember(std::string_view text, const Layout& layout) {
    std::lock_guard lock(mutex_);
    if (entries_.size() >= kCapacity) entries_.clear();
    entries_.emplace(std::string(text), layout);
  }

 private:
  static constexpr std::size_t kCapacity = 1u << 17;
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>()(s); }
  };
  std::mutex mutex_;
  std::unordered_map<std::string, Layout, Hash, std::equal_to<>> entries_;
};

}  // namespace

std::optional<URL> URL::withString(std::string_view text) {
  static ParsedTexts<Layout> cache;
  if (auto layout = cache.find(text)) return URL(std::string(text), *layout);
  auto url = parse(text);
  if (url) cache.remember(text, url->layout_);
  return url;
}

std::optional<URL> URL::parse(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const char* first = text.data();
  const char* afterLast = first + text.size();
  UriUriA uri;
  const char* errorPos = nullptr;
  if (uriParseSingleUriExA(&uri, first, afterLast, &errorPos) != URI_SUCCESS) return std::nullopt;

  // uriparser points empty parts at a static "" rather than into the text, so positions come from
  // the delimiters, which a valid reference only holds at these places: ':' after the scheme, "//"
  // before the authority, the first '/', '?' or '#' after it, the first '?' and the first '#'.
  Layout layout;
  if (uri.scheme.first != nullptr)
    layout.schemeLength = static_cast<std::size_t>(uri.scheme.afterLast - first);
  std::size_t cursor = layout.schemeLength == 0 ? 0 : layout.schemeLength + 1;
  if (uri.hostText.first != nullptr) {
    layout.hasHost = true;
    cursor += 2;
    if (uri.hostText.first == uri.hostText.afterLast) {
      layout.hostBegin = layout.hostEnd = cursor;  // only its emptiness matters
    } else {
      layout.hostBegin = static_cast<std::size_t>(uri.hostText.first - first);
      layout.hostEnd = static_cast<std::size_t>(uri.hostText.afterLast - first);
    }
    cursor = std::min(text.find_first_of("/?#", cursor), text.size());
  }
  layout.pathBegin = cursor;
  layout.queryEnd = std::min(text.find('#', cursor), text.size());
  layout.pathEnd = std::min(text.find('?', cursor), layout.queryEnd);
  uriFreeUriMembersA(&uri);
  return URL(std::string(text), layout);
}

std::optional<URL> URL::withStringRelativeTo(std::string_view text, const URL& base) {
  if (!withString(text)) return std::nullopt;
  UriUriA reference, baseUri, resolved;
  const char* errorPos = nullptr;
  if (uriParseSingleUriExA(&reference, text.data(), text.data() + text.size(), &errorPos) !=
      URI_SUCCESS) {
    return std::nullopt;
  }
  const std::string& b = base.absoluteString();
  if (uriParseSingleUriExA(&baseUri, b.data(), b.data() + b.size(), &errorPos) != URI_SUCCESS) {
    uriFreeUriMembersA(&reference);
    return std::nullopt;
  }
  std::optional<URL> out;
  if (uriAddBaseUriA(&resolved, &reference, &baseUri) == URI_SUCCESS) {
    int length = 0;
    if (uriToStringCharsRequiredA(&resolved, &length) == URI_SUCCESS) {
      std::string whole(static_cast<size_t>(length) + 1, '\0');
      if (uriToStringA(whole.data(), &resolved, length + 1, nullptr) == URI_SUCCESS) {
        whole.resize(static_cast<size_t>(length));
        out = withString(whole);
      }
    }
    uriFreeUriMembersA(&resolved);
  }
  uriFreeUriMembersA(&reference);
  uriFreeUriMembersA(&baseUri);
  return out;
}

URL URL::fileURLWithPath(std::string_view path) {
  std::string absolute = absoluteFilePath(path);
  bool isDirectory = absolute.back() == '/' || isExistingDirectory(absolute);
  return fileURLWithAbsolutePath(std::move(absolute), isDirectory);
}

URL URL::fileURLWithPath(std::string_view path, bool isDirectory) {
  return fileURLWithAbsolutePath(absoluteFilePath(path), isDirectory);
}

URL URL::fileURLWithAbsolutePath(std::string absolute, bool isDirectory) {
  if (isDirectory) {
    if (absolute.back() != '/') absolute.push_back('/');
  } else if (absolute.size() > 1 && absolute.back() == '/') {
    absolute.pop_back();  // runs of '/' are already one
  }
  static constexpr std::string_view kPrefix = "file://";
  std::string text;
  text.reserve(kPrefix.size() + absolute.size() + absolute.size() / 4);
  text.append(kPrefix);
  appendEncoded(text, absolute);
  Layout layout;
  layout.schemeLength = 4;
  layout.hasHost = true;
  layout.hostBegin = layout.hostEnd = kPrefix.size();
  layout.pathBegin = kPrefix.size();
  layout.pathEnd = layout.queryEnd = text.size();
  return URL(std::move(text), layout);
}

std::string_view URL::rawPath() const {
  return std::string_view(absolute_).substr(layout_.pathBegin, layout_.pathEnd - layout_.pathBegin);
}

std::string URL::scheme() const {
  return absolute_.substr(0, layout_.schemeLength);
}

std::string URL::host() const {
  if (!layout_.hasHost) return {};
  return decoded(
      std::string_view(absolute_).substr(layout_.hostBegin, layout_.hostEnd - layout_.hostBegin));
}

std::string URL::path() const {
  return decoded(withoutTrailingSlashes(rawPath()));
}

std::optional<std::string> URL::query() const {
  if (layout_.pathEnd == absolute_.size() || absolute_[layout_.pathEnd] != '?') return std::nullopt;
  return absolute_.substr(layout_.pathEnd + 1, layout_.queryEnd - layout_.pathEnd - 1);
}

bool URL::isFileURL() const {
  if (layout_.schemeLength != 4) return false;
  static constexpr std::string_view kFile = "file";
  for (std::size_t i = 0; i < 4; ++i) {
    char c = absolute_[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != kFile[i]) return false;
  }
  return true;
}

std::string URL::lastPathComponent() const {
  std::string_view path = withoutTrailingSlashes(rawPath());
  if (path == "/") return "/";
  // Split before decoding so that an escaped "%2F" stays inside its component.
  std::size_t slash = path.rfind('/');
  return decoded(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string URL::pathExtension() const {
  std::string_view path = withoutTrailingSlashes(rawPath());
  std::string_view name = path.substr(path.rfind('/') + 1);  // npos + 1 == 0
  // Most names carry no escapes; a '.' can only be escaped in a parsed URL.
  std::string decodedName;
  if (name.find('%') != std::string_view::npos) name = decodedName = decoded(name);
  std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return {};
  return std::string(name.substr(dot + 1));
}

URL URL::replacingRawPath(std::string_view path) const {
  std::string text;
  text.reserve(absolute_.size() - rawPath().size() + path.size());
  text.append(absolute_, 0, layout_.pathBegin);
  text.append(path);
  text.append(absolute_, layout_.pathEnd);
  Layout layout = layout_;
  layout.pathEnd = layout.pathBegin + path.size();
  layout.queryEnd = layout.queryEnd - layout_.pathEnd + layout.pathEnd;
  return URL(std::move(text), layout);
}

URL URL::appendingPathComponent(std::string_view component) const {
  return appendingComponent(component, std::nullopt);
}

URL URL::appendingPathComponent(std::string_view component, bool isDirectory) const {
  return appendingComponent(component, isDirectory);
}

URL URL::appendingComponent(std::string_view component, std::optional<bool> isDirectory) const {
  if (component.empty()) return *this;
  std::string path(rawPath());
  bool bareReference = path.empty() && layout_.schemeLength == 0 && !layout_.hasHost;
  if (path.empty() ? layout_.hasHost : path.back() != '/') path.push_back('/');
  // Leading slashes would double the separator or, on an empty path, read as an authority.
  while (!component.empty() && component.front() == '/') component.remove_prefix(1);
  if (bareReference) {
    std::size_t slash = component.find('/');
    appendEncoded(path, component.substr(0, slash), false);
    if (slash != std::string_view::npos) appendEncoded(path, component.substr(slash));
  } else {
    appendEncoded(path, component);
  }
  // Only slashes onto an empty path without a host ("?q", "file:?q") append nothing.
  if (path.empty()) return *this;
  if (!isDirectory.has_value() && isFileURL()) {
    isDirectory = path.back() == '/' || isExistingDirectory(decoded(path));
  }
  if (isDirectory.value_or(false) && path.back() != '/') path.push_back('/');
  return replacingRawPath(path);
}

URL URL::deletingLastPathComponent() const {
  std::string_view path = withoutTrailingSlashes(rawPath());
  if (path.empty() || path == "/") return *this;
  std::size_t slash = path.rfind('/');
  if (slash != std::string_view::npos) return replacingRawPath(path.substr(0, slash + 1));
  // A single relative segment: what is left is the directory it is relative to.
  if (layout_.schemeLength == 0 && !layout_.hasHost) return replacingRawPath("./");
  return *this;
}
