// A payload's text: its value, and the position of each part in the text. Any thread.
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
#include "lint/document/edit.h"

namespace quorvantis::lint {

/// The key that names the application in files for the iOS simulator; not part of the payload.
inline constexpr std::string_view kSimulatorKey = "Simulator Target Bundle";

/// `key` as a part of a JSON Pointer, with its slash.
std::string pointerPart(std::string_view key);

class PayloadDocument {
 public:
  explicit PayloadDocument(std::string text);

  /// Why the text is not JSON; nothing when it is.
  [[nodiscard]] const std::optional<json::Problem>& problem() const { return problem_; }

  /// Null when the text is not JSON. Of repeated keys the last one counts. Without kSimulatorKey.
  [[nodiscard]] const json::Value& value() const { return value_; }

  /// The size for Apple's service: of the text as given or, if it had a kSimulatorKey, of the rest as compact
  /// JSON.
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] bool isForSimulator() const { return isForSimulator_; }

  struct Repeated {
    std::string pointer;  ///< shortened when it is long, like the key
    std::string key;
    std::size_t offset = 0;
  };
  /// The second and later uses of a key in an object, up to a limit.
  [[nodiscard]] const std::vector<Repeated>& repeated() const { return repeated_; }
  [[nodiscard]] std::size_t repeatedCount() const { return repeatedCount_; }

  /// The text as it was given.
  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] json::Place placeOf(std::size_t offset) const { return json::placeOf(text_, offset); }

  /// The range that an editor marks for a part, on a single line: from its key, or from the value if it has
  /// none, to the end of a scalar value; for an object or an array only the key, or the bracket. For parts
  /// that the library does not look at, that of the nearest enclosing known part.
  [[nodiscard]] TextRange markOf(std::string_view pointer) const;
  /// The same for what begins at this byte: a quoted string, or one character.
  [[nodiscard]] TextRange markAt(std::size_t offset) const;

  // Changes to the text. The parts must be keys that the library looks at.
  [[nodiscard]] Edit replaceKey(std::string_view pointer, std::string_view key) const;
  [[nodiscard]] Edit replaceValue(std::string_view pointer, const json::Value& value) const;
  [[nodiscard]] Edit remove(std::string_view pointer) const;
  /// Inserts `member` as the first one of the object.
  [[nodiscard]] Edit insert(std::string_view object, const std::string& member) const;
  /// Moves the key and its value to the beginning of another object.
  [[nodiscard]] Edits move(std::string_view pointer, std::string_view object) const;

  /// `pointer` is one of an extra's, "/aps/extra1/": the first null that lies deeper in it,
  /// or nullptr.
  [[nodiscard]] const std::string* firstNullIn(const std::string& pointer) const;

  /// The first nested "aps"; empty if there is none.
  [[nodiscard]] const std::string& nestedAps() const { return nestedAps_; }

 private:
  class Reader;
  struct Part {
    std::size_t begin = 0;  ///< the key, or the value where there is none
    bool hasKey = false;
  };

  [[nodiscard]] const Part& partAt(std::string_view pointer) const;
  [[nodiscard]] std::size_t valueOf(const Part& part) const;

  std::string text_;
  json::Value value_;
  std::optional<json::Problem> problem_;
  std::size_t size_ = 0;
  bool isForSimulator_ = false;
  std::vector<Repeated> repeated_;
  std::size_t repeatedCount_ = 0;
  std::map<std::string, Part, std::less<>> parts_;
  std::string nestedAps_;
};

}  // namespace quorvantis::lint
