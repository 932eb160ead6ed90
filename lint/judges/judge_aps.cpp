#include "console/wording.h"
#include "device/remote_notification.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;
using json::Value;

void judgeFlagBesideAlert(const Dictionary& aps, Reporter& reporter) {
  const auto flag = aps.find(payload::contentAvailable.text());
  if (flag == aps.end()) return;
  const std::string pointer = inAps(flag->first);
  if (wakes(aps)) {
    return reporter.report(
        "handled-by-second-call", pointer,
        {R"("content-available": 1 in a notification with an alert)",
         std::string(
             "Even in the foreground, the library only handles it in the system's second call: if the host "
             "does not forward ") +
             device::kBackgroundCall + " to the library, nothing is set, shown, stored or reported.",
         "Make sure that every version of the application forwards that call, or remove the key."});
  }
  reporter.report(
      "not-handled-in-foreground", pointer,
      {"\"content-available\" is " + console::shortened(json::write(flag->second)) +
           " in a notification with an alert",
       "Whatever its value, the library does not handle the notification when it arrives in the "
       "foreground: no badge, no alert, no report. With any value but 1 there is no second call either.",
       "Remove it.",
       {reporter.document().remove(pointer)}});
}

void judgeAlertPath(const Dictionary& aps, const Value& alert, Reporter& reporter) {
  if (aps.contains(payload::contentAvailable.text()) && !wakes(aps)) reporter.neverHandled();
  const std::string pointer = inAps(payload::alert.text());
  const auto type = aps.find(payload::type.text());
  if (const auto* dictionary = alert.get<Dictionary>()) {
    const bool isLink = type != aps.end() && type->second == Value(payload::typeOpenURL.text());
    judgeAlert(*dictionary, isLink, reporter);
  } else if (const auto* text = alert.get<std::string>()) {
    const Dictionary object{{std::string(payload::body.text()), *text}};
    reporter.report(
        "alert-is-text", pointer,
        {"\"alert\" " + mustBe(alert, "an object"),
         reporter.raising("The library looks for keys in it"),
         "Make it an object: \"alert\": {\"body\": " + json::write(console::shortened(*text)) + "}.",
         {reporter.document().replaceValue(pointer, object)}});
  } else {
    reporter.report(
        "alert-is-no-object", pointer,
        {"\"alert\" " + mustBe(alert, "an object"), reporter.raising("The library looks for keys in it"),
         R"(Make it an object, "alert": {"title": …, "body": …}, or leave it out for a silent notification.)"});
  }
  judgeFlagBesideAlert(aps, reporter);
  if (const auto badge = aps.find(payload::badge.text()); badge != aps.end())
    judgeBadge(badge->second, reporter);
  judgeType(aps, reporter);
}

void reportWakesNobody(const Dictionary& aps, Reporter& reporter) {
  const std::string_view key = payload::contentAvailable.text();
  const bool isThere = aps.contains(key);
  const PayloadDocument& document = reporter.document();
  reporter.report("wakes-nobody", isThere ? inAps(key) : "/aps",
                  {R"(neither "alert" nor "content-available": 1)",
                   "In the background the system only sets the badge and plays the sound, and does not wake "
                   "the application, "
                   "so the library is not called.",
                   R"(Add "content-available": 1 if the application should be woken.)",
                   {isThere ? document.replaceValue(inAps(key), 1)
                            : document.insert("/aps", R"("content-available": 1)")}});
}

void judgeSilentPath(const Dictionary& aps, Reporter& reporter) {
  const bool clashes = aps.contains(payload::type.text()) && aps.contains(payload::customType.text());
  if (clashes) {
    reporter.report(
        "custom-type-clash", inAps(payload::customType.text()),
        {R"("type" and "customType" in one silent notification)",
         R"(Both are reported under "customType", so one of them is lost; which one is not defined.)",
         "Rename one of them."});
  }
  const auto unused = [&](RuleByCode rule, const auto& key, const std::string& consequence) {
    if (!aps.contains(key.text())) return;
    reporter.report(rule, inAps(key.text()),
                    {json::write(key.text()) + " in a silent notification", consequence,
                     R"(Add an "alert" if the library should act on it.)"});
  };
  if (!clashes) {
    unused("unused-on-silent", payload::type,
           R"(The library does not act on it; it is in the report as "customType".)");
  }
  unused("unused-on-silent", payload::urlnoti, "The library opens nothing; it is only in the report.");
  unused("badge-by-system", payload::badge,
         "Only the system sets it, in the background; the library only reports it.");
  if (!wakes(aps)) reportWakesNobody(aps, reporter);
}

}  // namespace

bool wakes(const Dictionary& aps) {
  const auto flag = aps.find(payload::contentAvailable.text());
  return flag != aps.end() && flag->second == Value(1);
}

void judgeAps(const Dictionary& aps, Reporter& reporter) {
  judgeKeys(aps, reporter);
  if (isOfLiveActivity(aps)) return judgeLiveActivity(aps, reporter);
  const auto alert = aps.find(payload::alert.text());
  if (alert == aps.end()) {
    judgeSilentPath(aps, reporter);
  } else {
    judgeAlertPath(aps, alert->second, reporter);
  }
}

}  // namespace quorvantis::lint
