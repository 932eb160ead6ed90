// The kinds of findings: a code that stays the same from version to version, how grave it is, and what it
// means. docs/payloads.md lists them in the same words, and a test holds the two together.
#pragma once

#include <array>
#include <string_view>

namespace quorvantis::lint {

enum class Severity { note, warning, error };

struct Rule {
  std::string_view code;
  Severity severity = Severity::note;
  /// What is found and what comes of it. Code is in backticks.
  std::string_view help;
  bool endsApplication = false;  ///< the library raises, and the application ends
};

namespace rules {

inline constexpr Rule notJSON{
    "not-json", Severity::error,
    "The text is not JSON: a syntax error, bytes that are not UTF-8, a byte order mark. Or it is JSON nested "
    "deeper than 512 levels, which neither this tool nor the phone reads. The application gets nothing"};
inline constexpr Rule numberOutOfRange{
    "number-out-of-range", Severity::error,
    "A number that JSON allows and a 64-bit real can't hold, such as `1e400`. Readers differ on it; the "
    "application may get nothing"};
inline constexpr Rule notAnObject{"not-an-object", Severity::error,
                                  "The payload is an array, a string, a number. It reaches no phone"};
inline constexpr Rule duplicateKey{"duplicate-key", Severity::error,
                                   "An object has a key twice. One value is lost; the tool takes the last"};
inline constexpr Rule tooLarge{"too-large", Severity::error,
                               "More than 4,096 bytes, and by how much. It reaches no phone"};
inline constexpr Rule noAps{"no-aps", Severity::error,
                            "There is no `\"aps\"`. The library does not handle it in the foreground; in the "
                            "background the report is empty"};
inline constexpr Rule apsInEnvelope{
    "aps-in-envelope", Severity::error,
    "`\"aps\"` stands inside another object, as in a request to a service that sends it on. Sent to Apple "
    "as it is, it is a payload without `\"aps\"`"};
inline constexpr Rule apsIsNoObject{"aps-is-no-object", Severity::error,
                                    "`\"aps\"` is not an object. The application ends", true};
inline constexpr Rule alertIsText{"alert-is-text", Severity::error,
                                  "`\"alert\"` is a string. The application ends", true};
inline constexpr Rule alertIsNoObject{"alert-is-no-object", Severity::error,
                                      "`\"alert\"` is null, a number, an array. The application ends", true};
inline constexpr Rule alertWithoutText{
    "alert-without-text", Severity::warning,
    "`\"alert\"` has neither title nor body: an empty alert, or nothing to show"};
inline constexpr Rule alertTextIsNoText{
    "alert-text-is-no-text", Severity::error,
    "The title or the body is not a string. It is not shown, and with a link it may end the application"};
inline constexpr Rule alertTextOutsideAlert{"alert-text-outside-alert", Severity::warning,
                                            "`\"title\"` or `\"body\"` beside `\"alert\"`. Nobody sees it"};
inline constexpr Rule keyOutsideAps{
    "key-outside-aps", Severity::warning,
    "A key that belongs into `\"aps\"` stands at the top or in `\"alert\"`. The library does not see it. A "
    "`\"type\"` at the top is taken for the application's own, unless its value is one of the library's"};
inline constexpr Rule misspeltKey{
    "misspelt-key", Severity::warning,
    "A key that is one of the library's or of Apple's but for case, a joint or a letter. Nobody acts on it"};
inline constexpr Rule systemValue{
    "system-value", Severity::warning,
    "The value of one of Apple's own keys is of the wrong kind, or none of those that Apple documents. The "
    "system passes over it"};
inline constexpr Rule typeIsNoText{"type-is-no-text", Severity::error,
                                   "`\"type\"` is not a string. The application ends", true};
inline constexpr Rule unknownType{
    "unknown-type", Severity::warning,
    "None of the four types; the nearest is named. The notification is shown, its badge set and reported, "
    "and no more: no vibration, no link, nothing stored"};
inline constexpr Rule linkMissing{"link-missing", Severity::error,
                                  "The type opens a link, and there is no `\"urlnoti\"`. Nothing opens"};
inline constexpr Rule linkIsNoText{"link-is-no-text", Severity::error,
                                   "`\"urlnoti\"` is not a string. It may end the application"};
inline constexpr Rule linkIsNoURL{"link-is-no-url", Severity::error,
                                  "`\"urlnoti\"` is no absolute address, or its host has a blank. The system "
                                  "is asked to open it, and can't"};
inline constexpr Rule linkNeedsEncoding{
    "link-needs-encoding", Severity::warning,
    "The link holds characters that belong percent-encoded. It opens only where the phone has iOS 17.0 and "
    "the application is linked against its SDK, and there a `%` of its own may be encoded again"};
inline constexpr Rule linkHostNeedsEncoding{
    "link-host-needs-encoding", Severity::warning,
    "The link's host holds letters beyond ASCII. Percent-encoded it is another host; it is written in its "
    "ASCII form (IDNA), `xn--…`"};
inline constexpr Rule linkStrayPercent{
    "link-stray-percent", Severity::warning,
    "A `%` in the link without two hexadecimal digits behind it. Readers of addresses differ on it"};
inline constexpr Rule unusedLink{"unused-link", Severity::warning,
                                 "`\"urlnoti\"` without the type that opens links. It is lost"};
inline constexpr Rule unusedExtra{"unused-extra", Severity::warning,
                                  "An extra with a type that does not use it. It is lost"};
inline constexpr Rule extraRejected{"extra-rejected", Severity::error,
                                    "A null in an extra that is to be stored. The application ends", true};
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
                                      "`\"badge\"` is null, an array, an object. The application ends", true};
inline constexpr Rule badgeConverted{
    "badge-converted", Severity::warning,
    "`\"badge\"` is a string, true, false, a fraction or beyond 64 bits, and what it is taken for"};
inline constexpr Rule badgeBelowZero{
    "badge-below-zero", Severity::warning,
    "`\"badge\"` is below 0. It is handed to the system as it is, and what it shows then is not documented"};
inline constexpr Rule notHandledInForeground{
    "not-handled-in-foreground", Severity::warning,
    "`\"content-available\"` with a value other than 1 together with an alert. In the foreground the library "
    "does not handle it: no badge, no alert, no report"};
inline constexpr Rule handledBySecondCall{
    "handled-by-second-call", Severity::note,
    "`\"content-available\": 1` together with an alert. The library handles it by the system's second call "
    "alone: the host must pass `application:didReceiveRemoteNotification:fetchCompletionHandler:` to it"};
inline constexpr Rule unusedOnSilent{
    "unused-on-silent", Severity::warning,
    "`\"type\"` or `\"urlnoti\"` without an alert. The library only reports it"};
inline constexpr Rule badgeBySystem{
    "badge-by-system", Severity::note,
    "`\"badge\"` without an alert. Only the system sets it, in the background; the library reports it"};
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
