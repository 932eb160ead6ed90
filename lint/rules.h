// The kinds of findings: a stable code, the severity, and what it means. docs/payloads.md lists them in the
// same words, which a test checks.
#pragma once

#include <array>
#include <string_view>

namespace quorvantis::lint {

enum class Severity { note, warning, error };

struct Rule {
  std::string_view code;
  Severity severity = Severity::note;
  /// The problem and its consequence. Code is in backticks.
  std::string_view help;
  bool endsApplication = false;  ///< the library raises, and the application ends
};

namespace rules {

inline constexpr Rule notJSON{
    "not-json", Severity::error,
    "The text is not JSON: a syntax error, bytes that are not UTF-8, a byte order mark. Or it is JSON nested "
    "deeper than 512 levels, which neither this tool nor the phone reads. The application gets nothing"};
inline constexpr Rule numberOutOfRange{"number-out-of-range", Severity::error,
                                       "A number that JSON allows and a 64-bit real can't hold, such as "
                                       "`1e400`. Parsers disagree about it; the application may get nothing"};
inline constexpr Rule notAnObject{"not-an-object", Severity::error,
                                  "The payload is an array, a string or another value. It reaches no phone"};
inline constexpr Rule duplicateKey{"duplicate-key", Severity::error,
                                   "An object has a key twice. One value is lost; the tool takes the last"};
inline constexpr Rule tooLarge{"too-large", Severity::error,
                               "The payload has more than 4,096 bytes. It reaches no phone"};
inline constexpr Rule noAps{"no-aps", Severity::error,
                            "There is no `\"aps\"`. The library does not handle it in the foreground; in the "
                            "background the report is empty"};
inline constexpr Rule apsInEnvelope{"aps-in-envelope", Severity::error,
                                    "`\"aps\"` is inside another object, as in a request to a service that "
                                    "forwards it. Sent to Apple as it is, it is a payload without `\"aps\"`"};
inline constexpr Rule apsIsNoObject{"aps-is-no-object", Severity::error,
                                    "`\"aps\"` is not an object. The application ends", true};
inline constexpr Rule alertIsText{"alert-is-text", Severity::error,
                                  "`\"alert\"` is a string. The application ends", true};
inline constexpr Rule alertIsNoObject{
    "alert-is-no-object", Severity::error,
    "`\"alert\"` is null, a number, true, false or an array. The application ends", true};
inline constexpr Rule alertWithoutText{
    "alert-without-text", Severity::warning,
    "`\"alert\"` has neither title nor body: an empty alert, or nothing to show"};
inline constexpr Rule alertTextIsNoText{
    "alert-text-is-no-text", Severity::error,
    "The title or the body is not a string. It is not shown, and with a link it may end the application"};
inline constexpr Rule alertTextOutsideAlert{
    "alert-text-outside-alert", Severity::warning,
    "`\"title\"` or `\"body\"` is next to `\"alert\"` instead of inside it. It is not shown"};
inline constexpr Rule keyOutsideAps{"key-outside-aps", Severity::warning,
                                    "A key that belongs in `\"aps\"` is at the top level or in `\"alert\"`. "
                                    "The library does not see it. A `\"type\"` at the top level is assumed "
                                    "to be the application's own, unless its value is one of the library's"};
inline constexpr Rule misspeltKey{"misspelt-key", Severity::warning,
                                  "A key that differs from one of the library's or Apple's only in case, a "
                                  "separator or one letter. It has no effect"};
inline constexpr Rule systemValue{"system-value", Severity::warning,
                                  "The value of one of Apple's keys has the wrong type, or is not one that "
                                  "Apple documents. The system ignores it"};
inline constexpr Rule typeIsNoText{"type-is-no-text", Severity::error,
                                   "`\"type\"` is not a string. The application ends", true};
inline constexpr Rule unknownType{
    "unknown-type", Severity::warning,
    "`\"type\"` is not one of the four types. The notification is shown and reported and its badge set, but "
    "nothing else happens: no vibration, no link, nothing stored"};
inline constexpr Rule linkMissing{"link-missing", Severity::error,
                                  "The type opens a link, but there is no `\"urlnoti\"`. Nothing opens"};
inline constexpr Rule linkIsNoText{"link-is-no-text", Severity::error,
                                   "`\"urlnoti\"` is not a string. It may end the application"};
inline constexpr Rule linkIsNoURL{"link-is-no-url", Severity::error,
                                  "`\"urlnoti\"` is not an absolute address, or its host contains a blank. "
                                  "The system is asked to open it, but can't"};
inline constexpr Rule linkNeedsEncoding{
    "link-needs-encoding", Severity::warning,
    "The link contains characters that must be percent-encoded. It opens only on iOS 17.0 or later in an "
    "application that is linked against that SDK, and a `%` in it may then be encoded again"};
inline constexpr Rule linkHostNeedsEncoding{
    "link-host-needs-encoding", Severity::warning,
    "The link's host contains characters beyond ASCII. Percent-encoded it would be another host; write its "
    "ASCII form (IDNA), `xn--…`"};
inline constexpr Rule linkStrayPercent{
    "link-stray-percent", Severity::warning,
    "A `%` in the link is not followed by two hexadecimal digits. URL parsers disagree about it"};
inline constexpr Rule unusedLink{"unused-link", Severity::warning,
                                 "`\"urlnoti\"` without the type that opens links. It is ignored"};
inline constexpr Rule unusedExtra{"unused-extra", Severity::warning,
                                  "An extra with a type that does not use extras. It is ignored"};
inline constexpr Rule extraRejected{"extra-rejected", Severity::error,
                                    "A null in an extra that would be stored. The application ends", true};
inline constexpr Rule extrasMissing{"extras-missing", Severity::warning,
                                    "`pushlib-extras` without extras. Nothing is stored"};
inline constexpr Rule storedInForegroundOnly{
    "stored-in-foreground-only", Severity::warning,
    "Extras to be stored, without `\"content-available\": 1`. Only an application in the foreground "
    "stores them; in the background the library is not called before a tap, and then only handles a link"};
inline constexpr Rule reportedInForegroundOnly{
    "reported-in-foreground-only", Severity::note,
    "Extras for the report, without `\"content-available\": 1`. Only an application in the foreground "
    "gets the report"};
inline constexpr Rule badgeIsNoNumber{"badge-is-no-number", Severity::error,
                                      "`\"badge\"` is null, an array or an object. The application ends",
                                      true};
inline constexpr Rule badgeConverted{
    "badge-converted", Severity::warning,
    "`\"badge\"` is a string, true, false, a fraction or beyond 64 bits. It is converted to a whole number"};
inline constexpr Rule badgeBelowZero{
    "badge-below-zero", Severity::warning,
    "`\"badge\"` is below 0. It is passed to the system unchanged, which does not document what it shows"};
inline constexpr Rule notHandledInForeground{
    "not-handled-in-foreground", Severity::warning,
    "`\"content-available\"` with a value other than 1 together with an alert. In the foreground the library "
    "does not handle it: no badge, no alert, no report"};
inline constexpr Rule handledBySecondCall{
    "handled-by-second-call", Severity::note,
    "`\"content-available\": 1` together with an alert. The library only handles it in the system's second "
    "call: the host must forward `application:didReceiveRemoteNotification:fetchCompletionHandler:` to it"};
inline constexpr Rule unusedOnSilent{
    "unused-on-silent", Severity::warning,
    "`\"type\"` or `\"urlnoti\"` without an alert. The library only reports it"};
inline constexpr Rule badgeBySystem{
    "badge-by-system", Severity::note,
    "`\"badge\"` without an alert. Only the system sets it, in the background; the library only reports it"};
inline constexpr Rule customTypeClash{
    "custom-type-clash", Severity::warning,
    "`\"type\"` and `\"customType\"` without an alert. Both are reported under one name"};
inline constexpr Rule wakesNobody{
    "wakes-nobody", Severity::note,
    "Neither an alert nor `\"content-available\": 1`. In the background the application is not woken for it"};

/// All of them.
inline constexpr std::array all{&notJSON,
                                &numberOutOfRange,
                                &notAnObject,
                                &duplicateKey,
                                &tooLarge,
                                &noAps,
                                &apsInEnvelope,
                                &apsIsNoObject,
                                &alertIsText,
                                &alertIsNoObject,
                                &alertWithoutText,
                                &alertTextIsNoText,
                                &alertTextOutsideAlert,
                                &keyOutsideAps,
                                &misspeltKey,
                                &systemValue,
                                &typeIsNoText,
                                &unknownType,
                                &linkMissing,
                                &linkIsNoText,
                                &linkIsNoURL,
                                &linkNeedsEncoding,
                                &linkHostNeedsEncoding,
                                &linkStrayPercent,
                                &unusedLink,
                                &unusedExtra,
                                &extraRejected,
                                &extrasMissing,
                                &storedInForegroundOnly,
                                &reportedInForegroundOnly,
                                &badgeIsNoNumber,
                                &badgeConverted,
                                &badgeBelowZero,
                                &notHandledInForeground,
                                &handledBySecondCall,
                                &unusedOnSilent,
                                &badgeBySystem,
                                &customTypeClash,
                                &wakesNobody};

}  // namespace rules

}  // namespace quorvantis::lint
