// Takes the findings in a payload as they are made. One thread.
#pragma once

#include <string>
#include <utility>

#include "lint/document.h"
#include "lint/findings.h"

namespace quorvantis::lint {

class Reporter {
 public:
  explicit Reporter(const PayloadDocument& document) : document_(document) {}

  struct Wording {
    std::string message, consequence, remedy;
    Edits edits{};
  };
  /// `pointer` names the part that is meant.
  void report(const Rule& rule, const std::string& pointer, Wording wording) {
    add(rule, pointer, document_.markOf(pointer), std::move(wording));
  }
  /// The place alone tells which of several is meant.
  void reportAt(const Rule& rule, const std::string& pointer, std::size_t offset, Wording wording) {
    add(rule, pointer, document_.markAt(offset), std::move(wording));
  }
  /// Findings that are known of and not worth showing.
  void leaveOut(const Rule& rule, std::size_t times);

  /// The library never gets to look into the alert, so what would raise there does not.
  void neverHandled() { isHandled_ = false; }
  /// What comes of a value that the library can't take.
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
