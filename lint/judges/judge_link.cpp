#include "console/wording.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "lint/judges/link.h"
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
    return reporter.report("link-is-no-text", pointer,
                           {"\"urlnoti\" " + mustBe(value, "a string"),
                            "On OK and on a tap the library makes an address of it, which raises: the "
                            "application ends.",
                            "Make it a string with an absolute address."});
  }
  const Link link = linkFrom(*text);
  const std::string quoted = json::write(console::shortened(*text));
  const auto report = [&](RuleByCode rule, Reporter::Wording wording) {
    reporter.report(rule, pointer, encoded(link, pointer, std::move(wording), reporter));
  };
  if (!link.problem.empty()) {
    report("link-is-no-url", {quoted + " is not an absolute address: " + link.problem,
                              "The alert in the application is still shown, but the system can't open the "
                              "address on OK or on a tap.",
                              "Write an absolute address, such as \"https://www.example.com/news\"."});
  } else if (link.hasHostBeyondASCII) {
    report("link-host-needs-encoding",
           {"the host of " + quoted + " contains characters beyond ASCII",
            "Before iOS 17.0 nothing opens; later its characters may be percent-encoded, which names another "
            "host.",
            "Write the host in its ASCII form (IDNA); this one has none."});
  } else if (link.hasCharactersToEncode) {
    report("link-needs-encoding",
           {quoted + " contains characters that are not allowed in an address",
            std::string("Before iOS 17.0, and in an application linked against an older SDK, nothing opens; "
                        "otherwise the system encodes them") +
                (link.hasEncoded ? ", and may encode an existing \"%\" a second time." : "."),
            "Percent-encode them."});
  } else if (link.hasStrayPercent) {
    report("link-stray-percent", {quoted + " contains a \"%\" that is not followed by two hexadecimal digits",
                                  "URL parsers disagree about it: nothing may open, or another address.",
                                  "Write \"%25\" for a literal \"%\"."});
  }
}

}  // namespace quorvantis::lint
