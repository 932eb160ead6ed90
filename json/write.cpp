#include "json/write.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "base/hexadecimal.h"

namespace quorvantis::json {
namespace {

void writeText(std::string_view text, std::string& out) {
  out += '"';
  for (const char character : text) {
    switch (character) {
      case '"':
      case '\\':
        out += {'\\', character};
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
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
        if (static_cast<unsigned char>(character) < 0x20) {
          out += "\\u00";
          out += base::hexadecimal({&character, 1});
        } else {
          out += character;
        }
    }
  }
  out += '"';
}

/// Appends the value. Reading bounds the depth of values, so this may recurse.
struct Writer {
  std::string& out;

  void operator()(std::nullptr_t) const { out += "null"; }
  void operator()(bool boolean) const { out += boolean ? "true" : "false"; }
  void operator()(std::int64_t number) const { out += std::to_string(number); }
  void operator()(std::uint64_t number) const { out += std::to_string(number); }
  void operator()(double number) const {
    if (!std::isfinite(number)) {
      out += "null";
      return;
    }
    const std::string digits = shortest(number);
    out += digits;
    if (digits.find_first_of(".e") == std::string::npos) out += ".0";
  }
  void operator()(const std::string& text) const { writeText(text, out); }
  void operator()(const Data& data) const { writeText(base::hexadecimal(data.bytes), out); }
  void operator()(const Array& array) const {
    out += '[';
    const char* separator = "";
    for (const Value& element : array) {
      out += separator;
      std::visit(*this, element.variant());
      separator = ",";
    }
    out += ']';
  }
  void operator()(const Dictionary& dictionary) const {
    out += '{';
    const char* separator = "";
    for (const auto& [key, value] : dictionary) {
      out += separator;
      writeText(key, out);
      out += ':';
      std::visit(*this, value.variant());
      separator = ",";
    }
    out += '}';
  }
};

}  // namespace

std::string write(const Value& value) {
  std::string out;
  std::visit(Writer{out}, value.variant());
  return out;
}

std::string shortest(double number) {
  std::array<char, 32> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific);
  std::string text(buffer.data(), end.ptr);
  if (!std::isfinite(number)) return text;

  // "-d.ddde+xx" is taken apart into sign, digits and exponent.
  const std::size_t mark = text.find('e');
  const int exponent = std::atoi(text.c_str() + mark + 1);
  if (exponent < -4 || exponent >= 16) return text;

  std::string sign;
  std::string digits = text.substr(0, mark);
  if (digits.front() == '-') {
    sign = "-";
    digits.erase(0, 1);
  }
  if (digits.size() > 1) digits.erase(1, 1);
  if (exponent < 0) return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;

  const std::size_t whole = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= whole) return sign + digits + std::string(whole - digits.size(), '0');
  return sign + digits.insert(whole, 1, '.');
}

}  // namespace quorvantis::json
