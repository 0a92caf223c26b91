// Arbitrary text into the strict URL parser, and what the product does with a URL it accepted:
// the accessors, appending and deleting a component, resolving against a base, and file URLs
// made from paths. Whatever comes out as text must parse again to the same URL.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/foundation/URL.h"

namespace {

[[noreturn]] void broken(const char* what, std::string_view detail) {
  std::fprintf(stderr, "url_fuzzer: %s: %.*s\n", what, static_cast<int>(detail.size()), detail.data());
  std::abort();
}

void reparses(const URL& url, const char* how) {
  auto again = URL::withString(url.absoluteString());
  if (!again) broken(how, "gave text that does not parse: " + url.absoluteString());
  if (!(*again == url)) broken(how, "changed on the way through: " + url.absoluteString());
}

void exercise(const URL& url, std::string_view component) {
  (void)url.scheme();
  (void)url.host();
  (void)url.query();
  (void)url.isFileURL();
  (void)url.lastPathComponent();
  (void)url.pathExtension();
  std::string path = url.path();
  // Only the bool forms: the others ask the file system about whatever path came in.
  reparses(url.appendingPathComponent(component, false), "appendingPathComponent");
  reparses(url.appendingPathComponent(component, true), "appendingPathComponent (directory)");
  reparses(url.deletingLastPathComponent(), "deletingLastPathComponent");
  if (!path.empty() && path.front() == '/') reparses(URL::fileURLWithPath(path, false), "fileURLWithPath(path)");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  // "reference\nbase": the first line alone is parsed; both make a relative resolution.
  size_t split = input.find('\n');
  std::string_view first = input.substr(0, split);
  std::string_view second = split == std::string_view::npos ? std::string_view{} : input.substr(split + 1);

  if (auto url = URL::withString(first)) {
    reparses(*url, "withString");
    exercise(*url, second);
  }
  if (auto base = URL::withString(second)) {
    if (auto resolved = URL::withStringRelativeTo(first, *base)) {
      reparses(*resolved, "withStringRelativeTo");
      exercise(*resolved, first);
    }
  }
  std::string absolute = "/" + std::string(first);
  URL file = URL::fileURLWithPath(absolute, false);
  reparses(file, "fileURLWithPath");
  if (!file.isFileURL()) broken("fileURLWithPath gave no file URL", file.absoluteString());
  return 0;
}
