// Collects the findings in a payload. One thread.
#pragma once

#include <string>
#include <utility>

#include "lint/document/document.h"
#include "lint/judges/finding.h"

namespace quorvantis::lint {

class Reporter {
 public:
  explicit Reporter(const PayloadDocument& document) : document_(document) {}

  struct Wording {
    std::string message, consequence, remedy;
    Edits edits{};
  };
  /// `pointer` names the part.
  void report(RuleByCode rule, const std::string& pointer, Wording wording) {
    add(rule, pointer, document_.markOf(pointer), std::move(wording));
  }
  /// For parts that only their position distinguishes.
  void reportAt(RuleByCode rule, const std::string& pointer, std::size_t offset, Wording wording) {
    add(rule, pointer, document_.markAt(offset), std::move(wording));
  }
  /// Counts further findings that are not listed.
  void leaveOut(RuleByCode rule, std::size_t times);

  /// The library never looks into the alert, so nothing there can raise.
  void neverHandled() { isHandled_ = false; }
  /// The consequence of a value that makes the library raise.
  [[nodiscard]] std::string raising(const std::string& how) const;

  [[nodiscard]] const PayloadDocument& document() const { return document_; }

  /// In the order of the text.
  Findings take();

 private:
  void add(const Rule& rule, const std::string& pointer, TextRange range, Wording wording);
  void count(const Rule& rule, std::size_t times);

  const PayloadDocument& document_;
  Findings findings_;
  bool isHandled_ = true;
};

/// The pointer to a key of "aps".
std::string inAps(std::string_view key);

/// "is a number and must be a string"
std::string mustBe(const json::Value& value, const std::string& kind);

}  // namespace quorvantis::lint
