#include <algorithm>

#include "console/near_text.h"
#include "console/wording.h"
#include "device/settings.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;

std::string pointerOfType() {
  return inAps(payload::type.text());
}

void reportUnknown(const std::string& type, Reporter& reporter) {
  const auto meant = console::nearestTo(type, payload::types);
  Reporter::Wording wording{json::write(console::shortened(type)) + " is not one of the library's types",
                            "The notification is shown, its badge set and the report sent with this type, "
                            "but nothing else happens: no "
                            "vibration, no link, nothing stored.",
                            "The types are " + console::listed(payload::types) +
                                R"(. To only have the extras reported, leave "type" out.)"};
  if (meant) {
    wording.remedy = "Write " + json::write(*meant) + ", if that is what you mean; it must match exactly.";
    wording.edits = {reporter.document().replaceValue(pointerOfType(), *meant)};
  }
  reporter.report("unknown-type", pointerOfType(), std::move(wording));
}

/// Without the flag that has the system wake the application. With another value the library is never called,
/// which is a separate finding.
bool isForForegroundOnly(const Dictionary& aps) {
  return !aps.contains(payload::contentAvailable.text());
}

Reporter::Wording wordingOfForegroundOnly(const std::string& message, const std::string& who,
                                          Reporter& reporter) {
  return {
      message,
      who + " In the background the library is not called before a tap, and on a tap it only handles a link.",
      R"(Add "content-available": 1, and have the host forward the system's background call to the library.)",
      {reporter.document().insert("/aps", R"("content-available": 1)")}};
}

void judgeStoredExtras(const Dictionary& aps, Reporter& reporter) {
  bool isOneThere = false;
  bool areStored = true;
  for (const auto& [key, settingsKey] : payload::extras) {
    const auto entry = aps.find(key.text());
    if (entry == aps.end()) continue;
    isOneThere = true;
    if (device::isPropertyList(entry->second)) continue;
    areStored = false;
    const std::string pointer = inAps(key.text());
    const std::string* null = reporter.document().firstNullIn(pointer + '/');
    reporter.report("extra-rejected", null != nullptr ? *null : pointer,
                    {"a null in a value to be stored", reporter.raising("The settings can't store null"),
                     "Remove it, or send an empty string."});
  }
  if (!isOneThere) {
    reporter.report("extras-missing", pointerOfType(),
                    {R"(the type stores extras, but there are none in "aps")",
                     "Nothing is stored; what an earlier notification stored stays.",
                     R"(Add one or more of "extra1" to "extra5".)"});
  } else if (areStored && isForForegroundOnly(aps)) {
    reporter.report(
        "stored-in-foreground-only", pointerOfType(),
        wordingOfForegroundOnly("the extras are stored only in the foreground",
                                "Only an application that is in the foreground when it arrives stores them.",
                                reporter));
  }
}

void judgeUntyped(const Dictionary& aps, Reporter& reporter) {
  const auto extra = std::find_if(payload::extras.begin(), payload::extras.end(),
                                  [&](const auto& each) { return aps.contains(each.key.text()); });
  if (extra == payload::extras.end() || !isForForegroundOnly(aps)) return;
  reporter.report("reported-in-foreground-only", inAps(extra->key.text()),
                  wordingOfForegroundOnly(
                      "the extras are reported only in the foreground",
                      "Only an application that is in the foreground when it arrives gets them.", reporter));
}

void judgeUnusedLink(const Dictionary& aps, Reporter& reporter) {
  if (!aps.contains(payload::urlnoti.text())) return;
  reporter.report(
      "unused-link", inAps(payload::urlnoti.text()),
      {"\"urlnoti\" in a notification that opens no link", "The link is ignored.",
       "Give it the \"type\" " + json::write(payload::typeOpenURL.text()) + ", or remove the link."});
}

void judgeUnusedExtras(const Dictionary& aps, const std::string& type, Reporter& reporter) {
  for (const auto& [key, settingsKey] : payload::extras) {
    if (!aps.contains(key.text())) continue;
    reporter.report(
        "unused-extra", inAps(key.text()),
        {json::write(key.text()) + " in a notification of the type " + json::write(console::shortened(type)),
         "It is ignored: neither stored nor reported to the host.",
         "Leave \"type\" out to have it reported, or use " + json::write(payload::typeExtras.text()) +
             " to have it stored."});
  }
}

void judgeLinkOf(const Dictionary& aps, Reporter& reporter) {
  const auto link = aps.find(payload::urlnoti.text());
  if (link != aps.end()) return judgeLink(link->second, reporter);
  reporter.report("link-missing", pointerOfType(),
                  {R"(the type opens a link, but there is no "urlnoti" in "aps")",
                   "Nothing is shown in the application, and nothing opens.",
                   R"(Add "urlnoti" with the link's absolute address next to "type".)"});
}

}  // namespace

void judgeType(const Dictionary& aps, Reporter& reporter) {
  const auto type = aps.find(payload::type.text());
  if (type == aps.end()) {
    judgeUnusedLink(aps, reporter);
    return judgeUntyped(aps, reporter);
  }
  const auto* text = type->second.get<std::string>();
  if (text == nullptr) {
    return reporter.report("type-is-no-text", pointerOfType(),
                           {"\"type\" " + mustBe(type->second, "a string"),
                            "The library compares it with its types, which raises: the "
                            "application ends.",
                            "Make it one of the library's types, or leave it out."});
  }
  if (std::find(payload::types.begin(), payload::types.end(), *text) == payload::types.end()) {
    reportUnknown(*text, reporter);
  }
  if (*text == payload::typeOpenURL.text()) {
    judgeLinkOf(aps, reporter);
  } else {
    judgeUnusedLink(aps, reporter);
  }
  if (*text == payload::typeExtras.text()) {
    judgeStoredExtras(aps, reporter);
  } else {
    judgeUnusedExtras(aps, *text, reporter);
  }
}

}  // namespace quorvantis::lint
