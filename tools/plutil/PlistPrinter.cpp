#include "plutil/PlistPrinter.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace {

std::string realText(double d) {
  char buf[64];
  auto end = std::to_chars(buf, buf + sizeof buf, d).ptr;
  return std::string(buf, end);
}

void quoted(const std::string& s, std::string& out) {
  out += '"';
  for (char c : s) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", static_cast<unsigned char>(c));
          out += buf;
        } else {
          out += c;
        }
    }
  }
  out += '"';
}

void print(const PlistValue& v, size_t indent, std::string& out) {
  std::string pad(indent, ' ');
  switch (v.type()) {
    case PlistValue::Type::boolean:
      out += v.boolean() ? "true" : "false";
      break;
    case PlistValue::Type::integer:
      out += std::to_string(v.integer());
      break;
    case PlistValue::Type::real: {
      // A real keeps a fraction or exponent, so it is never mistaken for an integer.
      std::string text = realText(v.real());
      if (text.find_first_of(".eEn") == std::string::npos)
        text += ".0";
      out += text;
      break;
    }
    case PlistValue::Type::date:
      out += PlistPrinter::formatDate(v.date());
      break;
    case PlistValue::Type::data: {
      constexpr char kHex[] = "0123456789abcdef";
      out += "{length = " + std::to_string(v.data().size()) + ", bytes = 0x";
      for (std::uint8_t b : v.data()) {
        out += kHex[b >> 4];
        out += kHex[b & 15];
      }
      out += '}';
      break;
    }
    case PlistValue::Type::string:
      quoted(v.string(), out);
      break;
    case PlistValue::Type::array: {
      out += "[\n";
      size_t i = 0;
      for (const auto& item : v.array()) {
        out += pad + "  " + std::to_string(i++) + " => ";
        print(item, indent + 2, out);
        out += '\n';
      }
      out += pad + "]";
      break;
    }
    case PlistValue::Type::dictionary:
      out += "{\n";
      for (const auto& [key, value] : v.dictionary()) {
        out += pad + "  ";
        quoted(key, out);
        out += " => ";
        print(value, indent + 2, out);
        out += '\n';
      }
      out += pad + "}";
      break;
  }
}

// Days since 1970-01-01 to a proleptic Gregorian date (Howard Hinnant's method).
void civilFromDays(std::int64_t z, std::int64_t& y, unsigned& m, unsigned& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const auto doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  y = static_cast<std::int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  if (m <= 2)
    ++y;
}

}  // namespace

std::string PlistPrinter::print(const PlistValue& value) {
  std::string out;
  ::print(value, 0, out);
  out += '\n';
  return out;
}

std::string PlistPrinter::formatDate(Date date) {
  double unix = std::floor(date.timeIntervalSince1970());
  // Beyond some hundred billion years the calendar arithmetic would overflow.
  if (!std::isfinite(unix) || std::abs(unix) > 1e18) {
    return "(date " + realText(date.timeIntervalSinceReferenceDate) + ")";
  }
  auto secs = static_cast<std::int64_t>(unix);
  std::int64_t days = secs / 86400;
  std::int64_t rest = secs % 86400;
  if (rest < 0) {
    rest += 86400;
    --days;
  }
  std::int64_t y;
  unsigned m, d;
  civilFromDays(days, y, m, d);
  char buf[80];
  std::snprintf(buf, sizeof buf, "%04lld-%02u-%02u %02d:%02d:%02d +0000", static_cast<long long>(y),
                m, d, static_cast<int>(rest / 3600), static_cast<int>(rest / 60 % 60),
                static_cast<int>(rest % 60));
  return buf;
}
