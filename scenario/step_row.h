// The parts of the rows in the table of steps. A row has a step's keys, and the functions that use their
// values: they get them with the types of the keys' kinds, or the row does not compile.
#pragma once

#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "json/write.h"
#include "scenario/kinds.h"
#include "scenario/step.h"
#include "scenario/world.h"

namespace quorvantis::scenario {

/// Why a step that sets the push server's answers is refused with an external server.
inline constexpr const char* kServerIsElsewhere =
    R"("server" only works with the embedded push server, not with --server)";

struct KeyFacts {
  std::string_view name;
  KindFacts kind;
  bool isRequired = false;
};

/// Keys that belong together, and what is done with their values.
struct Rule {
  std::vector<KeyFacts> keys;
  /// Reads the keys' values from a step. Throws StepError.
  std::function<Play(const json::Dictionary& step)> bind;
};

/// What a step requires.
enum class Needs { nothing, ownPushServer, runningApplication };

struct StepRow {
  /// A step may have a key whose value determines its other keys and what it does. It then has a row for each
  /// value.
  struct Variant {
    std::string_view key;
    const char* value;
  };

  const char* name;  ///< of "do"
  std::optional<Variant> variant;
  const char* about;  ///< what happens, in a line
  std::vector<Rule> rules;
  Needs needs = Needs::nothing;

  /// All keys but "do" and the variant's.
  [[nodiscard]] std::vector<KeyFacts> keys() const;
};

/// A key that a step must have.
template <class T>
struct Required {
  using Argument = T;
  std::string_view name;
  Kind<T> kind;
  std::string_view naming = "do";  ///< the key that names what has this one

  [[nodiscard]] KeyFacts facts() const { return {name, kind.facts, true}; }
  [[nodiscard]] Argument from(const json::Dictionary& step) const {
    const auto entry = step.find(name);
    if (entry == step.end())
      throw StepError(json::write(step.find(naming)->second) + " needs " + json::write(name));
    return read(name, kind, entry->second);
  }
  static T read(std::string_view name, const Kind<T>& kind, const json::Value& value) {
    std::optional<T> typed = kind.read(value);
    if (!typed) throw StepError(json::write(name) + " must be " + kind.facts.description);
    return *std::move(typed);
  }
};

/// A key that a step may leave out.
template <class T>
struct Optional {
  using Argument = std::optional<T>;
  std::string_view name;
  Kind<T> kind;

  [[nodiscard]] KeyFacts facts() const { return {name, kind.facts, false}; }
  [[nodiscard]] Argument from(const json::Dictionary& step) const {
    const auto entry = step.find(name);
    if (entry == step.end()) return std::nullopt;
    return Required<T>::read(name, kind, entry->second);
  }
};

template <class T>
Required<T> required(std::string_view name, Kind<T> kind, std::string_view naming = "do") {
  return {name, std::move(kind), naming};
}

template <class T>
Optional<T> optional(std::string_view name, Kind<T> kind) {
  return {name, std::move(kind)};
}

/// Does something with the values of all these keys: calls `act(world, value...)`.
template <class Act, class... Keys>
Rule does(Act act, Keys... keys) {
  static_assert(std::is_invocable_v<Act, const World&, const typename Keys::Argument&...>,
                "what the step does takes other values than its keys' kinds give");
  return {{keys.facts()...}, [act, keys...](const json::Dictionary& step) -> Play {
            return [act,
                    values = std::tuple<typename Keys::Argument...>{keys.from(step)...}](const World& world) {
              std::apply([&](const auto&... value) { act(world, value...); }, values);
            };
          }};
}

/// Does something with the value of one key that may be left out, and then nothing: `act(world, value)`.
template <class T, class Act>
Rule sets(std::string_view key, Kind<T> kind, Act act) {
  static_assert(std::is_invocable_v<Act, const World&, const T&>,
                "what the step does takes another value than its key's kind gives");
  return does(
      [act](const World& world, const std::optional<T>& value) {
        if (value) act(world, *value);
      },
      optional(key, std::move(kind)));
}

}  // namespace quorvantis::scenario
