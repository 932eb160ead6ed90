#include "lint/findings.h"

#include <algorithm>
#include <array>

#include "console/near_text.h"
#include "console/wording.h"
#include "device/remote_notification.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "lint/judges/reporter.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;

void reportUnreadable(const json::Problem& problem, Reporter& reporter) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  const std::string_view text = reporter.document().text();
  const auto report = [&](std::size_t offset, const std::string& reason, const std::string& remedy,
                          Edits edits) {
    reporter.reportAt(
        "not-json", "", offset,
        {"can't be read as JSON: " + reason,
         "Apple's service or the phone refuses it: the application gets nothing.", remedy, std::move(edits)});
  };
  if (text.starts_with(kByteOrderMark)) {
    return report(0, "there is a byte order mark before the value",
                  "Save the text as UTF-8 without a byte order mark.", {{{0, kByteOrderMark.size()}, ""}});
  }
  const bool isUTF16 = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
                       (text.size() > 1 && (text[0] == '\0') != (text[1] == '\0'));
  if (isUTF16) return report(0, "the text is UTF-16", "Save the text as UTF-8.", {});
  if (!problem.isNumberOutOfRange) return report(problem.offset, problem.reason, problem.remedy, {});
  reporter.reportAt(
      "number-out-of-range", "", problem.offset,
      {problem.reason, "JSON parsers disagree about it; the application may get nothing.", problem.remedy});
}

void judgeSize(Reporter& reporter) {
  const PayloadDocument& document = reporter.document();
  if (document.size() <= device::kLargestPayload) return;
  const std::size_t excess = document.size() - device::kLargestPayload;
  reporter.report(
      "too-large", "",
      {console::grouped(document.size()) + " bytes, " + console::grouped(excess) + " more than the " +
           console::grouped(device::kLargestPayload) + " that Apple's service accepts",
       "Apple's service refuses it: it reaches no phone.",
       "Remove " + console::counted(excess, "byte") +
           (document.isForSimulator() ? ". " : ". Blanks count. ") + "Link to long content instead."});
}

void judgeRepeated(Reporter& reporter) {
  const PayloadDocument& document = reporter.document();
  for (const PayloadDocument::Repeated& repeated : document.repeated()) {
    reporter.reportAt("duplicate-key", repeated.pointer, repeated.offset,
                      {json::write(repeated.key) + " is in this object more than once",
                       "One value is lost. Which one depends on the parser; here the last one counts.",
                       "Keep only one of them."});
  }
  reporter.leaveOut("duplicate-key", document.repeatedCount() - document.repeated().size());
}

void reportNoAps(const Dictionary& payload, Reporter& reporter) {
  const PayloadDocument& document = reporter.document();
  if (const std::string& nested = document.nestedAps(); !nested.empty()) {
    const std::string around = nested.substr(0, nested.rfind('/'));
    return reporter.report("aps-in-envelope", nested,
                           {"\"aps\" is inside another object, at " + around,
                            "A service that forwards notifications may accept this form. Sent to Apple as it "
                            "is, the library finds no "
                            "\"aps\" and does not handle it.",
                            "Send, or check, only the object at " + around + "."});
  }
  const std::array<std::string_view, 1> kAps{payload::aps.text()};
  const auto misspelt = std::find_if(payload.begin(), payload.end(), [&](const auto& entry) {
    return entry.second.template get<Dictionary>() != nullptr && console::nearestTo(entry.first, kAps);
  });
  const bool isMisspelt = misspelt != payload.end();
  const std::string pointer = isMisspelt ? pointerPart(misspelt->first) : "";
  Reporter::Wording wording{R"(there is no "aps")",
                            "In the foreground the library does not handle it. In the background the "
                            "application is not woken for it.",
                            R"(Put everything for the library into an object under "aps".)"};
  if (isMisspelt) {
    wording.remedy = "Write \"aps\" in place of " + json::write(misspelt->first) + ".";
    wording.edits = {document.replaceKey(pointer, payload::aps.text())};
  }
  reporter.report("no-aps", pointer, std::move(wording));
}

void judgeObject(const Dictionary& payload, Reporter& reporter) {
  const auto aps = payload.find(payload::aps.text());
  if (aps == payload.end() && !device::actBySystemItself(payload).empty()) return;
  const auto* dictionary = aps != payload.end() ? aps->second.get<Dictionary>() : nullptr;
  for (const std::string_view key : libraryKeys()) {
    const auto entry = payload.find(key);
    if (entry == payload.end()) continue;
    judgeMisplaced(key, entry->second, pointerPart(key), "outside \"aps\"", dictionary, reporter);
  }
  if (aps == payload.end()) {
    reportNoAps(payload, reporter);
  } else if (dictionary != nullptr) {
    judgeAps(*dictionary, reporter);
  } else {
    reporter.report(
        "aps-is-no-object", "/aps",
        {"\"aps\" " + mustBe(aps->second, "an object"), reporter.raising("The library looks for keys in it"),
         R"(Make it an object: "aps": {"alert": {…}}.)"});
  }
}

}  // namespace

Findings findIn(const PayloadDocument& document) {
  Reporter reporter(document);
  if (const auto& problem = document.problem()) {
    reportUnreadable(*problem, reporter);
    return reporter.take();
  }
  judgeSize(reporter);
  if (const auto* payload = document.value().get<Dictionary>()) {
    judgeObject(*payload, reporter);
  } else {
    reporter.report("not-an-object", "",
                    {"the payload " + mustBe(document.value(), "an object"),
                     "Apple's service refuses it: it reaches no phone.", R"(Begin with {"aps": {…}}.)"});
  }
  judgeRepeated(reporter);
  return reporter.take();
}

}  // namespace quorvantis::lint
