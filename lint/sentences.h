// What a payload leads to, in sentences, the same in every report. Any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lint/explanation.h"

namespace quorvantis::lint {

struct Sentence {
  /// What a report may draw along with the text.
  enum class About {
    other,
    alert,   ///< the outcome's alert
    report,  ///< the outcome's report
    end      ///< the end of the application
  };

  About about = About::other;
  std::string text;
  std::string value{};  ///< shortened for people; what the sentence ends with, or empty
};

/// When it happens: "In the foreground, switch off".
std::string titleOf(const Explained& explained);

/// What then happens, in order.
std::vector<Sentence> sentencesOf(const Explained& explained);

/// What a word in the titles means; nothing when they say everything.
std::optional<std::string> footnoteOf(const std::vector<Explained>& explanation);

/// A value for people, shortened; a string without its quotation marks.
std::string shown(const json::Value& value);

}  // namespace quorvantis::lint
