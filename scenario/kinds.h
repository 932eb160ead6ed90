// The kinds of values of a step's keys. A kind converts a JSON value to its type or refuses it, so that
// converted values need no further checks. Any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/wording.h"
#include "json/value.h"
#include "scenario/names.h"
#include "scenario/push_service.h"

namespace quorvantis::scenario {

/// Describes a kind in messages, documents and on pages.
struct KindFacts {
  /// "string", "hexadecimal", "boolean", "byte", "count", "integer", "seconds", "object", "choice",
  /// "strings", "choices" or "answers".
  std::string name;
  std::string description = {};  ///< what a value must be: "a string or null"
  std::vector<std::string_view> choices =
      {};  ///< of "choice" and "choices": the strings; of "answers": the faults
  bool takesNull = false;
};

template <class T>
struct Kind {
  KindFacts facts;
  std::function<std::optional<T>(const json::Value&)> read;  ///< nothing: the value is not of this kind
};

Kind<std::string> text();
Kind<std::vector<std::string>> texts();
Kind<bool> boolean();
Kind<json::Dictionary> object();
/// An object that the settings can store.
Kind<json::Dictionary> storable();
/// Hexadecimal digits, read as the bytes that they stand for.
Kind<std::string> hexadecimal();
/// A boolean or a byte, like C's BOOL.
Kind<std::uint8_t> byte();
/// A whole number from 1.
Kind<std::int64_t> count();
Kind<std::int64_t> integer();
Kind<std::chrono::nanoseconds> seconds();
/// An array of some of these strings.
Kind<std::vector<std::string>> someOf(const std::vector<std::string_view>& choices,
                                      const std::string& description);
Kind<std::vector<QueuedAnswer>> answers();

/// One of the names of an enumeration.
template <class Value>
Kind<Value> choice() {
  KindFacts facts{.name = "choice"};
  for (const auto& named : kNamed<Value>) facts.choices.push_back(named.name);
  facts.description = console::listed(facts.choices, " or ");
  return {facts, [](const json::Value& value) {
            const auto* name = value.get<std::string>();
            return name == nullptr ? std::nullopt : valueOf<Value>(*name);
          }};
}

/// The same kind, or null.
template <class T>
Kind<std::optional<T>> orNull(Kind<T> kind) {
  kind.facts.description += " or null";
  kind.facts.takesNull = true;
  return {kind.facts,
          [read = std::move(kind.read)](const json::Value& value) -> std::optional<std::optional<T>> {
            if (value.isNull()) return std::optional<T>();
            std::optional<T> inner = read(value);
            if (!inner) return std::nullopt;
            return inner;
          }};
}

}  // namespace quorvantis::scenario
