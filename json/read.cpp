#include "json/read.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/real.h"
#include "base/utf8.h"

// The parser's assertions also throw in release builds.
#define RAPIDJSON_ASSERT(condition) \
  ((condition) ? static_cast<void>(0) : throw std::logic_error("JSON parser: " #condition))

#if defined(__clang__)
// The parser's empty stack does arithmetic on a null pointer.
#pragma clang attribute push(__attribute__((no_sanitize("pointer-overflow"))), apply_to = function)
#endif
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#if defined(__clang__)
#pragma clang attribute pop
#endif

namespace quorvantis::json {
namespace {

bool isHighSurrogate(unsigned unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(unsigned unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Whether decoded text contains a surrogate, which only an escape can produce.
bool holdsSurrogate(std::string_view text) {
  for (auto at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
    if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) return true;
  }
  return false;
}

/// Where in the literal, whose escapes are well formed, the first low surrogate without a high one stands.
std::size_t loneSurrogate(std::string_view literal) {
  for (std::size_t at = 0; at < literal.size();) {
    if (literal[at] != '\\') {
      ++at;
    } else if (literal[at + 1] != 'u') {
      at += 2;
    } else {
      unsigned unit = 0;
      std::from_chars(literal.data() + at + 2, literal.data() + at + 6, unit, 16);
      if (isLowSurrogate(unit)) return at;
      at += isHighSurrogate(unit) ? 12 : 6;
    }
  }
  return 0;
}

Problem halfOfAPair(std::size_t offset) {
  return {offset, "half of a surrogate pair", "Write both halves of the pair, or the character itself."};
}

Problem wideInteger(std::size_t offset) {
  return {offset, "the whole number is beyond 64 bits", "Write a smaller number, or a string.", true};
}

Problem outOfRange(std::size_t offset) {
  return {offset, "the number is beyond a real's range", "Write a smaller number, or a string.", true};
}

/// Builds the value from the parser's events. Open values are kept on an explicit stack.
class Builder {
 public:
  Builder(std::string_view text, const rapidjson::MemoryStream& stream, ReadOptions options,
          Observer& observer)
      : text_(text), stream_(stream), options_(options), observer_(observer) {}

  // The parser's events; false stops it.
  bool Null() { return addScalar(nullptr); }
  bool Bool(bool boolean) { return addScalar(boolean); }
  bool RawNumber(const char* digits, rapidjson::SizeType length, bool) { return addNumber({digits, length}); }
  bool String(const char* bytes, rapidjson::SizeType length, bool) {
    const std::string_view string(bytes, length);
    return isWhole(string) && addScalar(string);
  }
  bool Key(const char* bytes, rapidjson::SizeType length, bool);
  bool StartObject() { return begin(Dictionary()); }
  bool StartArray() { return begin(Array()); }
  bool EndObject(rapidjson::SizeType) { return end(); }
  bool EndArray(rapidjson::SizeType) { return end(); }

  // The parser needs these to compile; with numbers as strings it never calls them.
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }

  [[nodiscard]] const std::optional<Problem>& problem() const { return problem_; }
  Value takeRoot() { return std::move(root_); }

 private:
  struct Open {
    Value container;
    std::string key;
  };

  [[nodiscard]] std::size_t tokenStart() const { return text_.find_first_not_of(" \t\r\n,:", tokenEnd_); }

  bool refuse(Problem problem) {
    problem_ = std::move(problem);
    return false;
  }

  bool isWhole(std::string_view string);
  bool addNumber(std::string_view digits);
  bool addScalar(Value value);
  void place(Value value);
  bool begin(Value container);
  bool end();

  const std::string_view text_;
  const rapidjson::MemoryStream& stream_;
  const ReadOptions options_;
  Observer& observer_;
  std::size_t tokenEnd_ = 0;
  std::vector<Open> open_;
  Value root_;
  std::optional<Problem> problem_;
};

bool Builder::isWhole(std::string_view string) {
  if (!holdsSurrogate(string)) return true;
  const std::size_t start = tokenStart();
  return refuse(halfOfAPair(start + loneSurrogate(text_.substr(start, stream_.Tell() - start))));
}

bool Builder::Key(const char* bytes, rapidjson::SizeType length, bool) {
  const std::string_view key(bytes, length);
  if (!isWhole(key)) return false;
  const std::size_t start = tokenStart();
  Open& object = open_.back();
  const bool repeated = object.container.find(key) != nullptr;
  observer_.key(key, start, repeated);
  if (repeated && options_.refuseDuplicateKeys) {
    return refuse({start, "the object already has this key", "Keep only one of them."});
  }
  object.key = key;
  tokenEnd_ = stream_.Tell();
  return true;
}

bool Builder::addNumber(std::string_view digits) {
  const char* const last = digits.data() + digits.size();
  if (digits.find_first_of(".eE") == std::string_view::npos) {
    std::int64_t whole = 0;
    if (std::from_chars(digits.data(), last, whole).ec == std::errc()) return addScalar(whole);
    if (options_.refuseWideIntegers) return refuse(wideInteger(tokenStart()));
    std::uint64_t wide = 0;
    const bool isUnsigned = std::from_chars(digits.data(), last, wide).ec == std::errc();
    if (isUnsigned && options_.keepUnsignedIntegers) return addScalar(wide);
  }
  const double real = base::realFrom(digits).value_or(0);
  if (std::isinf(real)) return refuse(outOfRange(tokenStart()));
  return addScalar(real);
}

bool Builder::addScalar(Value value) {
  observer_.scalar(tokenStart(), value);
  tokenEnd_ = stream_.Tell();
  place(std::move(value));
  return true;
}

void Builder::place(Value value) {
  if (open_.empty()) {
    root_ = std::move(value);
    return;
  }
  Open& parent = open_.back();
  if (auto* array = parent.container.get<Array>()) {
    array->push_back(std::move(value));
  } else {
    parent.container.get<Dictionary>()->insert_or_assign(std::move(parent.key), std::move(value));
  }
}

bool Builder::begin(Value container) {
  const std::size_t start = stream_.Tell();
  if (open_.size() == options_.deepest) {
    return refuse({start, "the value is nested deeper than " + std::to_string(options_.deepest) + " levels",
                   "Nest the values less deeply."});
  }
  observer_.begin(start, container.get<Dictionary>() != nullptr);
  open_.push_back({std::move(container), {}});
  tokenEnd_ = start + 1;
  return true;
}

bool Builder::end() {
  observer_.end();
  tokenEnd_ = stream_.Tell() + 1;
  Value container = std::move(open_.back().container);
  open_.pop_back();
  place(std::move(container));
  return true;
}

Problem moreText(std::size_t offset) {
  return {offset, "there is more text after the value", "Remove what follows the value."};
}

Problem explain(const rapidjson::ParseResult& result, std::string_view text, bool refuseWideIntegers) {
  const std::size_t offset = result.Offset();
  if (result.Code() == rapidjson::kParseErrorDocumentEmpty && offset == text.size()) {
    return {offset, "there is no value", "Write a value."};
  }
  if (offset == text.size()) {
    return {offset, "the text ends too early", "Close what is open: quotation marks, brackets, braces."};
  }

  switch (result.Code()) {
    case rapidjson::kParseErrorDocumentRootNotSingular:
      return moreText(offset);
    case rapidjson::kParseErrorObjectMissName:
      return {offset, "a key in quotation marks is missing", "Write a key here, or remove the comma before."};
    case rapidjson::kParseErrorObjectMissColon:
      return {offset, "the colon after a key is missing", "Write a colon and a value after the key."};
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
      return {offset, "a comma or a closing brace is missing", "Write a comma or a closing brace here."};
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
      return {offset, "a comma or a closing bracket is missing", "Write a comma or a closing bracket here."};
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
      return {offset, "the escape lacks its four hexadecimal digits", "Write four digits after \\u."};
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
      return halfOfAPair(offset);
    case rapidjson::kParseErrorStringEscapeInvalid:
      if (text[offset] == '\\') {
        return {offset, "there is no such escape", "Write \\\\ for a literal backslash."};
      }
      [[fallthrough]];
    case rapidjson::kParseErrorStringMissQuotationMark:
      return {offset, "a control character in a string is not escaped",
              "Write an escape: \\n for a line feed, \\t for a tab."};
    case rapidjson::kParseErrorStringInvalidEncoding:
      return {offset, "the text is not UTF-8", "Save the text as UTF-8."};
    case rapidjson::kParseErrorNumberTooBig: {
      const auto length = std::min(text.find_first_not_of("-0123456789", offset), text.size());
      const bool whole =
          length == text.size() || std::string_view(".eE").find(text[length]) == std::string_view::npos;
      return refuseWideIntegers && whole ? wideInteger(offset) : outOfRange(offset);
    }
    case rapidjson::kParseErrorNumberMissFraction:
      return {offset, "the digits after the decimal point are missing", "Write at least one digit here."};
    case rapidjson::kParseErrorNumberMissExponent:
      return {offset, "the digits of the exponent are missing", "Write at least one digit here."};
    default:
      return {
          offset, "this is not a value",
          "Write a value: a string in quotation marks, a number, true, false, null, an object or an array."};
  }
}

}  // namespace

std::variant<Value, Problem> read(std::string_view text, ReadOptions options, Observer* observer) {
  if (text.size() > std::numeric_limits<rapidjson::SizeType>::max()) {
    return Problem{0, "the text is larger than the reader accepts", "Write a shorter text."};
  }
  if (text.empty()) return Problem{0, "there is no value", "Write a value."};

  Observer nobody;
  rapidjson::MemoryStream stream(text.data(), text.size());
  Builder builder(text, stream, options, observer != nullptr ? *observer : nobody);
  rapidjson::Reader reader;
  constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                              rapidjson::kParseNumbersAsStringsFlag;
  const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, builder);
  if (builder.problem()) return *builder.problem();
  if (result.IsError()) return explain(result, text, options.refuseWideIntegers);
  // A NUL ends the parser's input.
  if (stream.Tell() != text.size()) return moreText(stream.Tell());
  return builder.takeRoot();
}

Place placeOf(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t lineStart = before.rfind('\n') + 1;
  const std::string_view line = before.substr(lineStart);
  Place place;
  place.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  place.column = 1 + static_cast<std::size_t>(
                         std::count_if(line.begin(), line.end(), std::not_fn(base::isContinuation)));
  return place;
}

}  // namespace quorvantis::json
