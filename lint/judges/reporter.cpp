#include "lint/judges/reporter.h"

#include <algorithm>

#include "console/wording.h"

namespace quorvantis::lint {

namespace {

constexpr std::size_t kMostShown = 100;
constexpr std::size_t kLongestPath = 200;

}  // namespace

void Reporter::add(const Rule& rule, const std::string& pointer, TextRange range, Wording wording) {
  count(rule, 1);
  if (findings_.shown.size() == kMostShown) {
    ++findings_.leftOut;
    return;
  }
  const bool ends =
      rule.raises == Rule::Raises::always || (isHandled_ && rule.raises == Rule::Raises::whenHandled);
  findings_.shown.push_back({&rule, ends, console::shortened(pointer, kLongestPath), range,
                             document_.placeOf(range.begin), document_.placeOf(range.end),
                             std::move(wording.message), std::move(wording.consequence),
                             std::move(wording.remedy), std::move(wording.edits)});
}

void Reporter::leaveOut(RuleByCode rule, std::size_t times) {
  count(rule, times);
  findings_.leftOut += times;
}

void Reporter::count(const Rule& rule, std::size_t times) {
  switch (rule.severity) {
    case Severity::error:
      findings_.errors += times;
      return;
    case Severity::warning:
      findings_.warnings += times;
      return;
    case Severity::note:
      findings_.notes += times;
      return;
  }
}

std::string Reporter::raising(const std::string& how) const {
  if (isHandled_) return how + ", which raises: the application ends.";
  return R"(The library never handles this notification, because of "content-available"; if it did, the application would end.)";
}

Findings Reporter::take() {
  std::stable_sort(findings_.shown.begin(), findings_.shown.end(),
                   [](const Finding& a, const Finding& b) { return a.range.begin < b.range.begin; });
  return std::move(findings_);
}

std::string inAps(std::string_view key) {
  return "/aps" + pointerPart(key);
}

std::string mustBe(const json::Value& value, const std::string& kind) {
  return "is " + console::kindOf(value) + " and must be " + kind;
}

}  // namespace quorvantis::lint
