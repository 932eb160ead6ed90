// The kinds of findings: a stable code, the severity, and what it means. docs/payloads.md lists them in the
// same words, which a test checks. Any thread.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace quorvantis::lint {

enum class Severity { note, warning, error };

inline constexpr std::array<std::string_view, 3> kSeverityNames{"note", "warning", "error"};

constexpr std::string_view nameOf(Severity severity) {
  return kSeverityNames[static_cast<std::size_t>(severity)];
}

struct Rule {
  /// Whether the library raises, which ends the application.
  enum class Raises {
    never,
    whenHandled,
    always  ///< even where the library only looks at the type, as for a tap
  };

  std::string_view code;
  Severity severity = Severity::note;
  /// The problem and its consequence. Code is in backticks.
  std::string_view help;
  Raises raises = Raises::never;
  bool isRefusal = false;  ///< Apple's service refuses what a phone could handle
};

inline constexpr auto kRules = std::to_array<Rule>({
    {.code = "not-json",
     .severity = Severity::error,
     .help = "The text is not JSON: a syntax error, bytes that are not UTF-8, a byte order mark. Or it is "
             "JSON nested deeper than 512 levels, which neither this tool nor the phone reads. The "
             "application gets nothing"},
    {.code = "number-out-of-range",
     .severity = Severity::error,
     .help = "A number that JSON allows and a 64-bit real can't hold, such as `1e400`. Parsers disagree "
             "about it; the application may get nothing"},
    {.code = "not-an-object",
     .severity = Severity::error,
     .help = "The payload is an array, a string or another value. It reaches no phone"},
    {.code = "duplicate-key",
     .severity = Severity::error,
     .help = "An object has a key twice. One value is lost; the tool takes the last"},
    {.code = "too-large",
     .severity = Severity::error,
     .help = "The payload has more than 4,096 bytes. It reaches no phone",
     .isRefusal = true},
    {.code = "no-aps",
     .severity = Severity::error,
     .help = "There is no `\"aps\"`. The library does not handle it in the foreground; in the background the "
             "report is empty"},
    {.code = "aps-in-envelope",
     .severity = Severity::error,
     .help = "`\"aps\"` is inside another object, as in a request to a service that forwards it. Sent to "
             "Apple as it is, it is a payload without `\"aps\"`"},
    {.code = "aps-is-no-object",
     .severity = Severity::error,
     .help = "`\"aps\"` is not an object. The application ends",
     .raises = Rule::Raises::whenHandled},
    {.code = "alert-is-text",
     .severity = Severity::error,
     .help = "`\"alert\"` is a string. The application ends",
     .raises = Rule::Raises::whenHandled},
    {.code = "alert-is-no-object",
     .severity = Severity::error,
     .help = "`\"alert\"` is null, a number, true, false or an array. The application ends",
     .raises = Rule::Raises::whenHandled},
    {.code = "alert-without-text",
     .severity = Severity::warning,
     .help = "`\"alert\"` has neither title nor body: an empty alert, or nothing to show"},
    {.code = "alert-text-is-no-text",
     .severity = Severity::error,
     .help = "The title or the body is not a string. It is not shown, and with a link it may end the "
             "application"},
    {.code = "alert-text-outside-alert",
     .severity = Severity::warning,
     .help = "`\"title\"` or `\"body\"` is next to `\"alert\"` instead of inside it. It is not shown"},
    {.code = "key-outside-aps",
     .severity = Severity::warning,
     .help = "A key that belongs in `\"aps\"` is at the top level or in `\"alert\"`. The library does not "
             "see it. A `\"type\"` at the top level is assumed to be the application's own, unless its value "
             "is one of the library's"},
    {.code = "misspelt-key",
     .severity = Severity::warning,
     .help = "A key that differs from one of the library's or Apple's only in case, separators or a typing "
             "error: a letter that is wrong, missing, extra or swapped with the next (two, in long keys). It "
             "has no effect"},
    {.code = "system-value",
     .severity = Severity::warning,
     .help = "The value of one of Apple's keys has the wrong type, or is not one that Apple documents. The "
             "system ignores it"},
    {.code = "type-is-no-text",
     .severity = Severity::error,
     .help = "`\"type\"` is not a string. The application ends",
     .raises = Rule::Raises::always},
    {.code = "unknown-type",
     .severity = Severity::warning,
     .help = "`\"type\"` is not one of the four types. The notification is shown and reported and its badge "
             "set, but nothing else happens: no vibration, no link, nothing stored"},
    {.code = "link-missing",
     .severity = Severity::error,
     .help = "The type opens a link, but there is no `\"urlnoti\"`. Nothing opens"},
    {.code = "link-is-no-text",
     .severity = Severity::error,
     .help = "`\"urlnoti\"` is not a string. On OK and on a tap the application ends",
     .raises = Rule::Raises::always},
    {.code = "link-is-no-url",
     .severity = Severity::error,
     .help = "`\"urlnoti\"` is not an absolute address, or its host contains a blank. The system is asked to "
             "open it, but can't"},
    {.code = "link-needs-encoding",
     .severity = Severity::warning,
     .help = "The link contains characters that must be percent-encoded. It opens only on iOS 17.0 or later "
             "in an application that is linked against that SDK, and a `%` in it may then be encoded again"},
    {.code = "link-host-needs-encoding",
     .severity = Severity::warning,
     .help = "The link's host contains characters beyond ASCII. Percent-encoded it would be another host; "
             "write its ASCII form (IDNA), `xn--…`"},
    {.code = "link-stray-percent",
     .severity = Severity::warning,
     .help = "A `%` in the link is not followed by two hexadecimal digits. URL parsers disagree about it"},
    {.code = "unused-link",
     .severity = Severity::warning,
     .help = "`\"urlnoti\"` without the type that opens links. It is ignored"},
    {.code = "unused-extra",
     .severity = Severity::warning,
     .help = "An extra with a type that does not use extras. It is ignored"},
    {.code = "extra-rejected",
     .severity = Severity::error,
     .help = "A null in an extra that would be stored. The application ends",
     .raises = Rule::Raises::whenHandled},
    {.code = "extras-missing",
     .severity = Severity::warning,
     .help = "`pushlib-extras` without extras. Nothing is stored"},
    {.code = "stored-in-foreground-only",
     .severity = Severity::warning,
     .help = "Extras to be stored, without `\"content-available\": 1`. Only an application in the foreground "
             "stores them; in the background the library is not called before a tap, and then only handles a "
             "link"},
    {.code = "reported-in-foreground-only",
     .severity = Severity::note,
     .help = "Extras for the report, without `\"content-available\": 1`. Only an application in the "
             "foreground gets the report"},
    {.code = "badge-is-no-number",
     .severity = Severity::error,
     .help = "`\"badge\"` is null, an array or an object. The application ends",
     .raises = Rule::Raises::whenHandled},
    {.code = "badge-converted",
     .severity = Severity::warning,
     .help = "`\"badge\"` is a string, true, false, a fraction or beyond 64 bits. It is converted to a whole "
             "number"},
    {.code = "badge-below-zero",
     .severity = Severity::warning,
     .help = "`\"badge\"` is below 0. It is passed to the system unchanged, which does not document what it "
             "shows"},
    {.code = "not-handled-in-foreground",
     .severity = Severity::warning,
     .help = "`\"content-available\"` with a value other than 1 together with an alert. In the foreground "
             "the library does not handle it: no badge, no alert, no report"},
    {.code = "handled-by-second-call",
     .severity = Severity::note,
     .help = "`\"content-available\": 1` together with an alert. The library only handles it in the system's "
             "second call: the host must forward "
             "`application:didReceiveRemoteNotification:fetchCompletionHandler:` to it"},
    {.code = "unused-on-silent",
     .severity = Severity::warning,
     .help = "`\"type\"` or `\"urlnoti\"` without an alert. The library only reports it"},
    {.code = "badge-by-system",
     .severity = Severity::note,
     .help = "`\"badge\"` without an alert. Only the system sets it, in the background; the library only "
             "reports it"},
    {.code = "custom-type-clash",
     .severity = Severity::warning,
     .help = "`\"type\"` and `\"customType\"` without an alert. Both are reported under one name"},
    {.code = "wakes-nobody",
     .severity = Severity::note,
     .help = "Neither an alert nor `\"content-available\": 1`. In the background the application is not "
             "woken for it"},
    {.code = "live-activity-incomplete",
     .severity = Severity::error,
     .help = "A start, an update or an end of a Live Activity without a key that Apple requires of it. The "
             "system ignores it"},
    {.code = "unused-in-live-activity",
     .severity = Severity::warning,
     .help = "A key of the library's in a notification for a Live Activity. The library has no part in it"},
    {.code = "live-activity",
     .severity = Severity::note,
     .help = "An update or the end of a Live Activity without an alert. The library has no part in it, and "
             "the application is not called"},
});

/// A rule, by its code: one that is not in the table does not compile.
class RuleByCode {
 public:
  consteval RuleByCode(const char* code) : rule_(find(code)) {}
  constexpr operator const Rule&() const { return rule_; }

 private:
  static consteval const Rule& find(std::string_view code) {
    for (const Rule& rule : kRules) {
      if (rule.code == code) return rule;
    }
    throw "no rule has this code";
  }

  const Rule& rule_;
};

}  // namespace quorvantis::lint
