#include "backends/desktop/index/FileUri.h"

#include <cstring>

namespace nimbrel::desktop {

namespace {

bool isUnreserved(unsigned char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~';
}

std::string escape(std::string_view text, const char* alsoAllowed) {
  static const char* hex = "0123456789ABCDEF";
  std::string out;
  out.reserve(text.size());
  for (unsigned char c : text) {
    if (isUnreserved(c) || (c != 0 && std::strchr(alsoAllowed, c))) {
      out += static_cast<char>(c);
    } else {
      out += '%';
      out += hex[c >> 4];
      out += hex[c & 15];
    }
  }
  return out;
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

// uriparser escapes a different set of characters than GLib and Qt do for file URIs; the
// thumbnail cache is only shared when the bytes match theirs, so the set is kept here: the path
// characters RFC 3986 lets stand unescaped, less ';' which GLib escapes.
std::string fileUriForPath(std::string_view absolutePath) {
  return "file://" + escape(absolutePath, "!$&'()*+,/:=@");
}

std::string escapeTrashPath(std::string_view path) {
  return escape(path, "/");
}

std::string unescapeUri(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size()) {
      int hi = hexValue(text[i + 1]), lo = hexValue(text[i + 2]);
      if (hi >= 0 && lo >= 0) {
        out += static_cast<char>(hi * 16 + lo);
        i += 2;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

}  // namespace nimbrel::desktop
