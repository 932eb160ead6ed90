#include <algorithm>
#include <iterator>

#include "json/write.h"
#include "lint/judges/judges.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

using json::Dictionary;
using json::Value;

void judgeAlert(const Dictionary& alert, bool isLink, Reporter& reporter) {
  const auto hasText = [&](std::string_view key) {
    const auto entry = alert.find(key);
    return entry != alert.end() && entry->second != Value("");
  };
  constexpr std::string_view kForTheSystem[] = {"loc-key", "title-loc-key", "subtitle", "subtitle-loc-key"};
  const bool isShown = !isLink && std::any_of(std::begin(kForTheSystem), std::end(kForTheSystem), hasText);
  const std::string pointer = inAps(payload::alert.text());
  if (!hasText(payload::title.text()) && !hasText(payload::body.text()) && !isShown) {
    reporter.report("alert-without-text", pointer,
                    {R"("alert" has neither "title" nor "body")",
                     isLink ? "The library's alert in the application has no text, only an OK button."
                            : "There is nothing for the system to show.",
                     R"(Give it a "title", a "body", or both.)"});
  }
  for (const std::string_view key : {payload::title.text(), payload::body.text()}) {
    const auto entry = alert.find(key);
    if (entry == alert.end() || entry->second.get<std::string>() != nullptr) continue;
    reporter.report(
        "alert-text-is-no-text", pointer + pointerPart(key),
        {json::write(key) + ' ' + mustBe(entry->second, "a string"),
         isLink ? "The library passes it to the alert unchanged; what a phone does with it is not "
                  "defined, and it may end the application."
                : "The system can't show it.",
         "Make it a string."});
  }
}

}  // namespace quorvantis::lint
