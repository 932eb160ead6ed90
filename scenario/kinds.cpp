#include "scenario/kinds.h"

#include <algorithm>
#include <cmath>

#include "base/hexadecimal.h"
#include "device/settings.h"

namespace quorvantis::scenario {

namespace {

using json::Value;

template <class T>
std::optional<T> copyOf(const Value& value) {
  const T* held = value.get<T>();
  return held == nullptr ? std::nullopt : std::optional(*held);
}

/// The elements of an array, when each can be read.
template <class T, class Read>
std::optional<std::vector<T>> elementsOf(const Value& value, Read read) {
  const auto* array = value.get<json::Array>();
  if (array == nullptr) return std::nullopt;
  std::vector<T> elements;
  for (const Value& element : *array) {
    std::optional<T> one = read(element);
    if (!one) return std::nullopt;
    elements.push_back(*std::move(one));
  }
  return elements;
}

std::optional<std::vector<std::string>> textsOf(const Value& value) {
  return elementsOf<std::string>(value, copyOf<std::string>);
}

std::optional<json::Dictionary> storableOf(const Value& value) {
  return device::isPropertyList(value) ? copyOf<json::Dictionary>(value) : std::nullopt;
}

std::optional<std::string> bytesOf(const Value& value) {
  const auto* digits = value.get<std::string>();
  return digits == nullptr ? std::nullopt : base::bytesFromHexadecimal(*digits);
}

std::optional<std::int64_t> wholeNumber(const Value& value, std::int64_t least, std::int64_t most) {
  const auto* number = value.get<std::int64_t>();
  return number == nullptr || *number < least || *number > most ? std::nullopt : std::optional(*number);
}

std::optional<std::uint8_t> byteOf(const Value& value) {
  if (const bool* truth = value.get<bool>()) return *truth ? 1 : 0;
  const auto number = wholeNumber(value, 0, 255);
  return number ? std::optional(static_cast<std::uint8_t>(*number)) : std::nullopt;
}

std::optional<std::chrono::nanoseconds> durationOf(const Value& value) {
  using std::chrono::nanoseconds;
  constexpr double kSecond = 1e9;
  constexpr double kMost = 9.2e9;  // seconds; practically forever
  if (const auto* whole = value.get<std::int64_t>()) {
    if (*whole < 0) return std::nullopt;
    return static_cast<double>(*whole) > kMost ? nanoseconds::max()
                                               : nanoseconds(std::chrono::seconds(*whole));
  }
  const auto* real = value.get<double>();
  if (real == nullptr || *real < 0) return std::nullopt;
  return *real > kMost ? nanoseconds::max() : nanoseconds(std::llround(*real * kSecond));
}

/// {"status", "body"}, {"status", "bodyHex"} or {"fault"}, and nothing else beside them.
std::optional<QueuedAnswer> answerOf(const Value& value) {
  const auto* answer = value.get<json::Dictionary>();
  if (answer == nullptr) return std::nullopt;
  if (const Value* fault = value.find("fault")) {
    const auto* name = fault->get<std::string>();
    const std::optional<Fault> known = name == nullptr ? std::nullopt : valueOf<Fault>(*name);
    return known && answer->size() == 1 ? std::optional<QueuedAnswer>(*known) : std::nullopt;
  }
  const Value* status = value.find("status");
  const auto number = status == nullptr ? std::nullopt : wholeNumber(*status, 200, 599);
  if (!number || *number == 204 || *number == 304 || answer->size() != 2) return std::nullopt;
  std::optional<std::string> bytes;
  if (const Value* body = value.find("body")) bytes = copyOf<std::string>(*body);
  if (const Value* bodyHex = value.find("bodyHex")) bytes = bytesOf(*bodyHex);
  if (!bytes) return std::nullopt;
  return server::Answer{.status = static_cast<int>(*number), .body = *std::move(bytes)};
}

}  // namespace

Kind<std::string> text() {
  return {{.name = "string", .description = "a string"}, copyOf<std::string>};
}

Kind<std::vector<std::string>> texts() {
  return {{.name = "strings", .description = "an array of strings"}, textsOf};
}

Kind<bool> boolean() {
  return {{.name = "boolean", .description = "true or false"}, copyOf<bool>};
}

Kind<json::Dictionary> object() {
  return {{.name = "object", .description = "an object"}, copyOf<json::Dictionary>};
}

Kind<json::Dictionary> storable() {
  return {{.name = "object", .description = "an object without null at any depth"}, storableOf};
}

Kind<std::string> hexadecimal() {
  return {{.name = "hexadecimal", .description = "a string of an even count of hexadecimal digits"}, bytesOf};
}

Kind<std::uint8_t> byte() {
  return {{.name = "byte", .description = "true, false or a whole number from 0 to 255"}, byteOf};
}

Kind<std::int64_t> count() {
  return {{.name = "count", .description = "a whole number, 1 or more"},
          [](const Value& value) { return wholeNumber(value, 1, INT64_MAX); }};
}

Kind<std::int64_t> integer() {
  return {{.name = "integer", .description = "a whole number"}, copyOf<std::int64_t>};
}

Kind<std::chrono::nanoseconds> seconds() {
  return {{.name = "seconds", .description = "a number, 0 or more"}, durationOf};
}

Kind<std::vector<std::string>> someOf(const std::vector<std::string_view>& choices,
                                      const std::string& description) {
  return {{.name = "choices", .description = description, .choices = choices}, [choices](const Value& value) {
            return elementsOf<std::string>(value, [&](const Value& element) {
              const auto* name = element.get<std::string>();
              const bool isKnown =
                  name != nullptr && std::find(choices.begin(), choices.end(), *name) != choices.end();
              return isKnown ? std::optional(*name) : std::nullopt;
            });
          }};
}

Kind<std::vector<QueuedAnswer>> answers() {
  KindFacts facts{.name = "answers"};
  for (const auto& fault : kNamed<Fault>) facts.choices.push_back(fault.name);
  facts.description =
      "an array of answers, each {\"status\": a whole number from 200 to 599 except 204 and 304, \"body\": a "
      "string}, "
      "{\"status\", \"bodyHex\": a string of an even count of hexadecimal digits} or {\"fault\": " +
      console::listed(facts.choices, " or ") + "}";
  return {facts, [](const Value& value) { return elementsOf<QueuedAnswer>(value, answerOf); }};
}

}  // namespace quorvantis::scenario
