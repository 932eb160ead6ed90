#include <cmath>

#include "device/text.h"
#include "lint/judges/judges.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Value;

void reportBadgeConverted(const Value& badge, std::int64_t taken, bool isInRange, Reporter& reporter) {
  const std::string pointer = inAps(payload::badge.text());
  Reporter::Wording wording{
      isInRange ? "\"badge\" " + mustBe(badge, "a whole number") : "\"badge\" is a number beyond 64 bits",
      "It is converted to " + std::to_string(taken) + ".", "Write a whole number."};
  if (isInRange) {
    wording.remedy = "Write " + std::to_string(taken) + ", if that is what you mean.";
    wording.edits = {reporter.document().replaceValue(pointer, taken)};
  }
  reporter.report("badge-converted", pointer, std::move(wording));
}

}  // namespace

void judgeBadge(const Value& badge, Reporter& reporter) {
  const std::string pointer = inAps(payload::badge.text());
  constexpr double kBeyond64Bits = 9223372036854775808.0;  // 2^63
  std::int64_t taken = 0;
  if (const auto* whole = badge.get<std::int64_t>()) {
    taken = *whole;
  } else if (const auto* text = badge.get<std::string>()) {
    taken = device::integerValue(*text);
    return reportBadgeConverted(badge, taken, true, reporter);
  } else if (const auto* real = badge.get<double>()) {
    taken = device::integerValue(*real);
    const bool isInRange = std::fabs(*real) < kBeyond64Bits;
    if (!isInRange || *real != static_cast<double>(taken)) {
      return reportBadgeConverted(badge, taken, isInRange, reporter);
    }
  } else if (const auto* boolean = badge.get<bool>()) {
    return reportBadgeConverted(badge, *boolean ? 1 : 0, true, reporter);
  } else {
    return reporter.report("badge-is-no-number", pointer,
                           {"\"badge\" " + mustBe(badge, "a number"),
                            reporter.raising("The library asks it for its whole number"),
                            "Make it a whole number; 0 removes the badge."});
  }
  if (taken >= 0) return;
  reporter.report("badge-below-zero", pointer,
                  {"\"badge\" is " + std::to_string(taken) + ", below 0",
                   "It is passed to the system unchanged; what the system then shows is not documented.",
                   "Write 0 to remove the badge, or another number."});
}

}  // namespace quorvantis::lint
