#include "console/wording.h"
#include "json/write.h"
#include "lint/judges.h"
#include "lint/link.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

/// The address as it opens everywhere, if there is such a form.
Reporter::Wording encoded(const Link& link, const std::string& pointer, Reporter::Wording wording,
                          const Reporter& reporter) {
  if (link.encoded.empty()) return wording;
  wording.remedy = "Write " + json::write(console::shortened(link.encoded)) + ".";
  wording.edits = {reporter.document().replaceValue(pointer, link.encoded)};
  return wording;
}

}  // namespace

void judgeLink(const json::Value& value, Reporter& reporter) {
  const std::string pointer = inAps(payload::urlnoti.text());
  const auto* text = value.get<std::string>();
  if (text == nullptr) {
    return reporter.report(rules::linkIsNoText, pointer,
                           {"\"urlnoti\" " + mustBe(value, "a string"),
                            "The library builds the address from it as from a string; what a phone does with "
                            "it is not defined, and it may end the application.",
                            "Make it a string with the whole address."});
  }
  const Link link = judgeLink(*text);
  const std::string quoted = json::write(console::shortened(*text));
  const auto report = [&](const Rule& rule, Reporter::Wording wording) {
    reporter.report(rule, pointer, encoded(link, pointer, std::move(wording), reporter));
  };
  if (!link.problem.empty()) {
    report(rules::linkIsNoURL,
           {quoted + " is no absolute address: " + link.problem,
            "The alert in the application is shown all the same, and its OK and a tap ask the system to open "
            "what it can't open.",
            "Write the whole address, such as \"https://www.example.com/news\"."});
  } else if (link.hasHostBeyondASCII) {
    report(rules::linkHostNeedsEncoding,
           {"the host of " + quoted + " holds characters beyond ASCII",
            "Before iOS 17.0 nothing opens; later its characters may be percent-encoded, which names another "
            "host.",
            "Write the host in its ASCII form (IDNA); it has none as it is written."});
  } else if (link.hasCharactersToEncode) {
    report(rules::linkNeedsEncoding,
           {quoted + " holds characters that an address can't hold",
            std::string("Before iOS 17.0, and in an application linked against an older SDK, nothing opens; "
                        "otherwise the system encodes them") +
                (link.hasEncoded ? ", and may encode the \"%\" that stands there already once more." : "."),
            "Percent-encode them."});
  } else if (link.hasStrayPercent) {
    report(rules::linkStrayPercent,
           {quoted + " holds a \"%\" without two hexadecimal digits behind it",
            "Readers of addresses differ on it: nothing may open, or another address.",
            "Write \"%25\" for a \"%\" that stands for itself."});
  }
}

}  // namespace quorvantis::lint
