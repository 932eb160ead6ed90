// A payload as it was written: its value, and where in the text each part of it stands. Any thread.
//
// Parts are named by JSON Pointers (RFC 6901): "" is the whole, "/aps/alert/title" a key's value.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/read.h"
#include "json/value.h"

namespace quorvantis::lint {

/// The most bytes of a payload that Apple's service carries to a phone.
inline constexpr std::size_t kLargestPayload = 4096;

/// The key that names the application in files for the iOS simulator; no part of the payload.
inline constexpr std::string_view kSimulatorKey = "Simulator Target Bundle";

/// `key` as a part of a JSON Pointer, with its slash.
std::string pointerPart(std::string_view key);

class PayloadDocument {
 public:
  explicit PayloadDocument(std::string text);

  /// Why the text is no JSON; nothing when it is.
  [[nodiscard]] const std::optional<json::Problem>& problem() const { return problem_; }

  /// Null when the text is no JSON. Of a key that is given twice the last one counts. Without kSimulatorKey.
  [[nodiscard]] const json::Value& value() const { return value_; }

  /// What Apple's service would carry: the text as given, or, when kSimulatorKey had to be left out, the rest
  /// as compact JSON.
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] bool isForSimulator() const { return isForSimulator_; }

  struct Repeated {
    std::string pointer;  ///< shortened when it is long, as the key
    std::string key;
    std::size_t offset = 0;
  };
  /// The second and later uses of a key in one object, at most as many as are worth showing.
  [[nodiscard]] const std::vector<Repeated>& repeated() const { return repeated_; }
  [[nodiscard]] std::size_t repeatedCount() const { return repeatedCount_; }

  /// Where the part begins: its key, or the value itself where it has none. Of parts that the library does
  /// not look at the nearest one around them that is known is taken.
  [[nodiscard]] json::Place placeOf(std::string_view pointer) const;
  [[nodiscard]] json::Place placeOf(std::size_t offset) const { return json::placeOf(text_, offset); }

  /// `pointer` is one of an extra's, "/aps/extra1/": the first null that lies deeper in it,
  /// or nullptr.
  [[nodiscard]] const std::string* firstNullIn(const std::string& pointer) const;

 private:
  class Reader;

  std::string text_;
  json::Value value_;
  std::optional<json::Problem> problem_;
  std::size_t size_ = 0;
  bool isForSimulator_ = false;
  std::vector<Repeated> repeated_;
  std::size_t repeatedCount_ = 0;
  std::map<std::string, std::size_t, std::less<>> places_;
};

}  // namespace quorvantis::lint
