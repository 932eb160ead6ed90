#include "lint/findings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "console/near_text.h"
#include "console/wording.h"
#include "device/settings.h"
#include "device/text.h"
#include "json/write.h"
#include "lint/link_text.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;
using json::Value;

constexpr std::size_t kMostShown = 100;

struct Kind {
  std::string_view code;
  Severity severity;
  bool endsApplication = false;
};

constexpr Kind kKinds[] = {
    {"not-json", Severity::error},
    {"not-an-object", Severity::error},
    {"duplicate-key", Severity::error},
    {"too-large", Severity::error},
    {"no-aps", Severity::error},
    {"aps-is-no-object", Severity::error, true},
    {"alert-is-text", Severity::error, true},
    {"alert-is-no-object", Severity::error, true},
    {"alert-without-text", Severity::warning},
    {"alert-text-is-no-text", Severity::error},
    {"alert-text-outside-alert", Severity::warning},
    {"key-outside-aps", Severity::warning},
    {"misspelt-key", Severity::warning},
    {"type-is-no-text", Severity::error, true},
    {"unknown-type", Severity::warning},
    {"link-missing", Severity::error},
    {"link-is-no-text", Severity::error},
    {"link-is-no-url", Severity::error},
    {"link-needs-encoding", Severity::warning},
    {"unused-link", Severity::warning},
    {"unused-extra", Severity::warning},
    {"extra-rejected", Severity::error, true},
    {"extras-missing", Severity::warning},
    {"badge-is-no-number", Severity::error, true},
    {"badge-converted", Severity::warning},
    {"not-handled-in-foreground", Severity::warning},
    {"unused-on-silent", Severity::warning},
    {"custom-type-clash", Severity::warning},
    {"wakes-nobody", Severity::note},
};

/// All that the library reads in "aps".
const std::array<std::string_view, 10> kKeys{
    payload::alert.text(),     payload::badge.text(),     payload::contentAvailable.text(),
    payload::type.text(),      payload::urlnoti.text(),   payload::extras[0].text(),
    payload::extras[1].text(), payload::extras[2].text(), payload::extras[3].text(),
    payload::extras[4].text()};

std::string inQuotes(std::string_view text) {
  return json::write(console::shortened(text));
}

class Linter {
 public:
  explicit Linter(const PayloadDocument& document) : document_(document) {}

  Findings lint();

 private:
  void lintObject(const Dictionary& payload);
  void lintAps(const Dictionary& aps);
  void lintAlertPath(const Dictionary& aps, const Value& alert);
  void lintSilentPath(const Dictionary& aps);
  void lintAlert(const Dictionary& aps, const Dictionary& alert, bool isLink);
  void lintBadge(const Value& badge);
  void lintType(const Dictionary& aps, const Value& type);
  void lintLink(const Dictionary& aps);
  void lintStoredExtras(const Dictionary& aps);
  void lintUnusedLink(const Dictionary& aps);
  void lintUnusedExtras(const Dictionary& aps, std::string_view type);
  void lintKeys(const Dictionary& aps);
  void lintRepeated();

  struct Wording {
    std::string message, consequence, remedy;
  };
  void report(std::string_view code, const std::string& pointer, const Wording& wording) {
    if (Finding* finding = add(code, pointer, wording)) finding->place = document_.placeOf(pointer);
  }
  Finding* add(std::string_view code, const std::string& pointer, const Wording& wording);
  void count(Severity severity, std::size_t times = 1);

  const PayloadDocument& document_;
  Findings findings_;
};

/// `move`, unless the key would then stand twice in "aps", or keep the alert there from being handled. `aps`
/// is nullptr when there is no such object.
std::string remedyOfMisplaced(std::string_view key, const Dictionary* aps, const std::string& move) {
  const auto has = [&](std::string_view wanted) { return aps != nullptr && aps->contains(wanted); };
  if (has(key)) return R"(Take it out; "aps" has its own.)";
  if (key == payload::contentAvailable.text() && has(payload::alert.text())) {
    return R"(Take it out; beside "alert" it keeps a notification in the foreground from being handled.)";
  }
  return move;
}

std::string inAps(std::string_view key) {
  return "/aps" + pointerPart(key);
}

Finding* Linter::add(std::string_view code, const std::string& pointer, const Wording& wording) {
  const auto* kind =
      std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& k) { return k.code == code; });
  if (kind == std::end(kKinds)) throw std::logic_error("no kind of finding is called " + std::string(code));
  count(kind->severity);
  if (findings_.shown.size() == kMostShown) {
    ++findings_.leftOut;
    return nullptr;
  }
  findings_.shown.push_back({std::string(code),
                             kind->severity,
                             kind->endsApplication,
                             console::shortened(pointer, 200),
                             {},
                             wording.message,
                             wording.consequence,
                             wording.remedy});
  return &findings_.shown.back();
}

void Linter::count(Severity severity, std::size_t times) {
  switch (severity) {
    case Severity::error:
      findings_.errors += times;
      return;
    case Severity::warning:
      findings_.warnings += times;
      return;
    case Severity::note:
      findings_.notes += times;
      return;
  }
}

Findings Linter::lint() {
  if (const auto& problem = document_.problem()) {
    Finding* finding = add("not-json", "",
                           {"can't be read as JSON: " + problem->reason,
                            "Apple's service or the phone refuses it: the application gets nothing.",
                            "Mend the text at this place."});
    finding->place = document_.placeOf(problem->offset);
    return findings_;
  }
  if (document_.size() > kLargestPayload) {
    const std::size_t excess = document_.size() - kLargestPayload;
    report("too-large", "",
           {console::grouped(document_.size()) + " bytes, " + console::grouped(excess) + " more than the " +
                console::grouped(kLargestPayload) + " that Apple's service carries",
            "Apple's service refuses it: it reaches no phone.",
            "Take out " + console::counted(excess, "byte") +
                (document_.isForSimulator() ? ". " : ". Blanks count. ") +
                "What is long belongs behind a link."});
  }
  if (const auto* payload = document_.value().get<Dictionary>()) {
    lintObject(*payload);
  } else {
    report("not-an-object", "",
           {"the payload is " + console::kindOf(document_.value()) + ", not an object",
            "Apple's service refuses it: it reaches no phone.", R"(Begin with {"aps": {…}}.)"});
  }
  lintRepeated();
  std::stable_sort(findings_.shown.begin(), findings_.shown.end(), [](const Finding& a, const Finding& b) {
    return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
  });
  return findings_;
}

void Linter::lintRepeated() {
  for (const PayloadDocument::Repeated& repeated : document_.repeated()) {
    Finding* finding = add("duplicate-key", repeated.pointer,
                           {inQuotes(repeated.key) + " stands more than once in this object",
                            "One value is lost. Which one depends on who reads it; here the last one counts.",
                            "Leave one of them."});
    if (finding != nullptr) finding->place = document_.placeOf(repeated.offset);
  }
  const std::size_t more = document_.repeatedCount() - document_.repeated().size();
  findings_.leftOut += more;
  count(Severity::error, more);
}

void Linter::lintObject(const Dictionary& payload) {
  const auto aps = payload.find(payload::aps.text());
  const auto* dictionary = aps != payload.end() ? aps->second.get<Dictionary>() : nullptr;
  for (const std::string_view key : kKeys) {
    if (!payload.contains(key)) continue;
    report("key-outside-aps", pointerPart(key),
           {inQuotes(key) + R"( stands outside "aps")", "The library does not see it there.",
            remedyOfMisplaced(key, dictionary, R"(Move it into "aps".)")});
  }

  if (aps == payload.end()) {
    Wording wording{R"(there is no "aps")",
                    "In the foreground the library does not handle it. In the background the host gets an "
                    "empty report, if any.",
                    R"(Put everything for the library into one object under "aps".)"};
    const std::array<std::string_view, 1> kAps{payload::aps.text()};
    const auto misspelt = std::find_if(payload.begin(), payload.end(), [&](const auto& entry) {
      return console::nearestTo(entry.first, kAps).has_value();
    });
    if (misspelt != payload.end())
      wording.remedy = "Write \"aps\" in place of " + inQuotes(misspelt->first) + ".";
    report("no-aps", misspelt == payload.end() ? "" : pointerPart(misspelt->first), wording);
  } else if (dictionary != nullptr) {
    lintAps(*dictionary);
  } else {
    report("aps-is-no-object", "/aps",
           {"\"aps\" is " + console::kindOf(aps->second) + ", not an object",
            "The library looks for keys in it, which raises: the application ends.",
            R"(Make it an object: "aps": {"alert": {…}}.)"});
  }
}

void Linter::lintAps(const Dictionary& aps) {
  lintKeys(aps);
  const auto alert = aps.find(payload::alert.text());
  if (alert == aps.end()) {
    lintSilentPath(aps);
  } else {
    lintAlertPath(aps, alert->second);
  }
}

void Linter::lintKeys(const Dictionary& aps) {
  const auto alert = aps.find(payload::alert.text());
  for (const auto& [key, value] : aps) {
    const bool isAlertText = key == payload::title.text() || key == payload::body.text();
    if (isAlertText && alert != aps.end()) {
      report("alert-text-outside-alert", inAps(key),
             {inQuotes(key) + R"( stands beside "alert", not in it)", "Nobody sees it.",
              alert->second.find(key) != nullptr ? R"(Take it out; "alert" has its own.)"
                                                 : R"(Move it into "alert".)"});
    }
    if (isAlertText) continue;
    const auto meant = console::nearestTo(key, kKeys);
    if (!meant) continue;
    const bool isExtra = meant->starts_with("extra");
    if (!isExtra && aps.contains(*meant)) continue;
    report("misspelt-key", inAps(key),
           {inQuotes(key) + " is none of the library's keys",
            "The library takes it for a key of the host's own, and does not act on it.",
            isExtra ? R"(The extras are called "extra1" to "extra5".)"
                    : "Write " + inQuotes(*meant) + ", if that is what is meant."});
  }
}

void Linter::lintAlertPath(const Dictionary& aps, const Value& alert) {
  const auto type = aps.find(payload::type.text());
  const bool isLink = type != aps.end() && type->second == Value(payload::typeOpenURL.text());
  if (const auto* dictionary = alert.get<Dictionary>()) {
    lintAlert(aps, *dictionary, isLink);
  } else if (const auto* text = alert.get<std::string>()) {
    report("alert-is-text", inAps(payload::alert.text()),
           {R"("alert" is a plain text)",
            "The library looks for keys in it, which raises: the application ends.",
            "Make it an object: \"alert\": {\"body\": " + inQuotes(*text) + "}."});
  } else {
    report(
        "alert-is-no-object", inAps(payload::alert.text()),
        {"\"alert\" is " + console::kindOf(alert) + ", not an object",
         "The library looks for keys in it, which raises: the application ends.",
         R"(Make it an object, "alert": {"title": …, "body": …}, or leave it out for a silent notification.)"});
  }

  if (aps.contains(payload::contentAvailable.text())) {
    report("not-handled-in-foreground", inAps(payload::contentAvailable.text()),
           {R"("content-available" in a notification with an alert)",
            "Whatever its value, the library does not handle the notification when it arrives in the "
            "foreground: no badge, no alert, no report. With the value 1, a host that passes "
            "application:didReceiveRemoteNotification:fetchCompletionHandler: to the library has it handled "
            "by that call.",
            "Take it out, or send a second, silent notification with it."});
  }
  if (const auto badge = aps.find(payload::badge.text()); badge != aps.end()) lintBadge(badge->second);
  if (type != aps.end()) {
    lintType(aps, type->second);
  } else {
    lintUnusedLink(aps);
  }
}

void Linter::lintAlert(const Dictionary& aps, const Dictionary& alert, bool isLink) {
  const auto hasText = [&](std::string_view key) {
    const auto entry = alert.find(key);
    return entry != alert.end() && entry->second != Value("");
  };
  constexpr std::string_view kForTheSystem[] = {"loc-key", "title-loc-key", "subtitle", "subtitle-loc-key"};
  const bool isShown = !isLink && std::any_of(std::begin(kForTheSystem), std::end(kForTheSystem), hasText);
  if (!hasText(payload::title.text()) && !hasText(payload::body.text()) && !isShown) {
    report("alert-without-text", inAps(payload::alert.text()),
           {R"("alert" has neither "title" nor "body")",
            isLink ? "The library's alert in the application has no text, only its OK button."
                   : "There is nothing for the system to show.",
            R"(Give it a "title", a "body", or both.)"});
  }
  for (const std::string_view key : {payload::title.text(), payload::body.text()}) {
    const auto entry = alert.find(key);
    if (entry == alert.end() || entry->second.get<std::string>() != nullptr) continue;
    report(
        "alert-text-is-no-text", inAps(payload::alert.text()) + pointerPart(key),
        {inQuotes(key) + " is " + console::kindOf(entry->second) + ", not a text",
         isLink
             ? "The library hands it to the alert as it is; what a phone does with it is not defined, and it "
               "may end the application."
             : "The system can't show it.",
         "Make it a text."});
  }
  for (const std::string_view key : kKeys) {
    if (key == payload::alert.text() || !alert.contains(key)) continue;
    report("key-outside-aps", inAps(payload::alert.text()) + pointerPart(key),
           {inQuotes(key) + R"( stands in "alert")", "The library does not see it there.",
            remedyOfMisplaced(key, &aps, R"(Move it up into "aps", beside "alert".)")});
  }
}

void Linter::lintBadge(const Value& badge) {
  const std::string pointer = inAps(payload::badge.text());
  std::int64_t taken = 0;
  std::string kind = console::kindOf(badge) + ", not a whole number";
  if (badge.get<std::int64_t>() != nullptr) return;
  if (const auto* text = badge.get<std::string>()) {
    taken = device::integerValue(*text);
  } else if (const auto* real = badge.get<double>()) {
    taken = device::integerValue(*real);
    constexpr double kBeyond64Bits = 9223372036854775808.0;  // 2^63
    if (std::fabs(*real) >= kBeyond64Bits) {
      kind = "a number beyond 64 bits";
    } else if (*real == static_cast<double>(taken)) {
      return;
    }
  } else if (const auto* boolean = badge.get<bool>()) {
    taken = *boolean ? 1 : 0;
  } else {
    report("badge-is-no-number", pointer,
           {"\"badge\" is " + console::kindOf(badge) + ", not a number",
            "The library asks it for its whole number, which raises: the application ends.",
            "Make it a whole number; 0 takes the badge off the icon."});
    return;
  }
  report("badge-converted", pointer,
         {"\"badge\" is " + kind, "It is taken for " + std::to_string(taken) + ".",
          "Write " + std::to_string(taken) + ", if that is what is meant."});
}

void Linter::lintType(const Dictionary& aps, const Value& type) {
  const auto* text = type.get<std::string>();
  if (text == nullptr) {
    report("type-is-no-text", inAps(payload::type.text()),
           {"\"type\" is " + console::kindOf(type) + ", not a text",
            "The library compares it with the types that it knows, which raises: the application ends.",
            "Make it one of the library's types, or leave it out."});
    return;
  }
  if (std::find(payload::types.begin(), payload::types.end(), *text) == payload::types.end()) {
    const auto meant = console::nearestTo(*text, payload::types);
    report("unknown-type", inAps(payload::type.text()),
           {inQuotes(*text) + " is none of the library's types",
            "The library does nothing for it; the host gets the report, with this type.",
            meant ? "Write " + inQuotes(*meant) + ", if that is what is meant; every letter and blank counts."
                  : "Known are " + console::listed(payload::types) +
                        ". To send extras without a type, leave \"type\" out."});
  }
  if (*text == payload::typeOpenURL.text()) {
    lintLink(aps);
  } else {
    lintUnusedLink(aps);
  }
  if (*text == payload::typeExtras.text()) {
    lintStoredExtras(aps);
  } else {
    lintUnusedExtras(aps, *text);
  }
}

void Linter::lintLink(const Dictionary& aps) {
  const std::string pointer = inAps(payload::urlnoti.text());
  const auto link = aps.find(payload::urlnoti.text());
  if (link == aps.end()) {
    report("link-missing", inAps(payload::type.text()),
           {R"(the type opens a link, and there is no "urlnoti" in "aps")",
            "Nothing is shown in the application, and nothing opens.",
            R"(Put the link's whole address under "urlnoti", beside "type".)"});
    return;
  }
  const auto* text = link->second.get<std::string>();
  if (text == nullptr) {
    report("link-is-no-text", pointer,
           {"\"urlnoti\" is " + console::kindOf(link->second) + ", not a text",
            "The library builds the address from it as from a text; what a phone does with it is not "
            "defined, and "
            "it may end the application.",
            "Make it a text with the whole address."});
    return;
  }
  const std::string problem = problemOfLink(*text);
  if (!problem.empty()) {
    report("link-is-no-url", pointer,
           {inQuotes(*text) + " is no absolute address: " + problem,
            "The alert in the application is shown all the same, and its OK and a tap ask the system to open "
            "what it "
            "can't open.",
            "Write the whole address, such as \"https://www.example.com/news\"."});
  } else if (!device::urlFrom(*text, "16.0")) {
    report("link-needs-encoding", pointer,
           {inQuotes(*text) + " holds characters that an address can't hold",
            "Before iOS 17.0 nothing opens; from 17.0 on the system encodes them.",
            "Write " + inQuotes(device::urlFrom(*text, "17.0").value_or("")) + "."});
  }
}

void Linter::lintStoredExtras(const Dictionary& aps) {
  bool isOneThere = false;
  for (const auto& extra : payload::extras) {
    const auto entry = aps.find(extra.text());
    if (entry == aps.end()) continue;
    isOneThere = true;
    if (device::isPropertyList(entry->second)) continue;
    const std::string pointer = inAps(extra.text());
    const std::string* null = document_.firstNullIn(pointer + '/');
    report("extra-rejected", null != nullptr ? *null : pointer,
           {"a null in what is to be stored", "The settings take no null and raise: the application ends.",
            "Leave it out, or send an empty text."});
  }
  if (isOneThere) return;
  report("extras-missing", inAps(payload::type.text()),
         {R"(the type stores extras, and there are none in "aps")",
          "Nothing is stored; what an earlier notification stored stays.",
          R"(Add "extra1" to "extra5", as many as are needed.)"});
}

void Linter::lintUnusedLink(const Dictionary& aps) {
  if (!aps.contains(payload::urlnoti.text())) return;
  report("unused-link", inAps(payload::urlnoti.text()),
         {"\"urlnoti\" in a notification that opens no link", "The link is lost without a word.",
          "Give it the \"type\" " + inQuotes(payload::typeOpenURL.text()) + ", or take the link out."});
}

void Linter::lintUnusedExtras(const Dictionary& aps, std::string_view type) {
  for (const auto& extra : payload::extras) {
    if (!aps.contains(extra.text())) continue;
    report("unused-extra", inAps(extra.text()),
           {inQuotes(extra.text()) + " in a notification of the type " + inQuotes(type),
            "It is lost without a word: neither stored nor reported to the host.",
            "Leave \"type\" out to have it reported, or use " + inQuotes(payload::typeExtras.text()) +
                " to have it stored."});
  }
}

void Linter::lintSilentPath(const Dictionary& aps) {
  const bool clashes = aps.contains(payload::type.text()) && aps.contains(payload::customType.text());
  if (clashes) {
    report("custom-type-clash", inAps(payload::customType.text()),
           {R"("type" and "customType" in one silent notification)",
            R"(Both are reported under "customType", so one of them is lost; which one is not defined.)",
            "Give one of them another name."});
  }
  const auto unused = [&](const auto& key, const std::string& consequence) {
    if (!aps.contains(key.text())) return;
    report("unused-on-silent", inAps(key.text()),
           {inQuotes(key.text()) + " in a silent notification", consequence,
            R"(Add an "alert" for the library to act on it, or take it out.)"});
  };
  if (!clashes) {
    unused(payload::type,
           R"(The library does not act on it; the host finds it in the report as "customType".)");
  }
  unused(payload::urlnoti, "The library opens nothing; the host finds it in the report.");
  unused(payload::badge, "Only the system sets it, in the background; the host finds it in the report.");

  const auto wakes = aps.find(payload::contentAvailable.text());
  if (wakes != aps.end() && wakes->second == Value(1)) return;
  report("wakes-nobody", wakes == aps.end() ? "/aps" : inAps(payload::contentAvailable.text()),
         {R"(neither "alert" nor "content-available": 1)",
          "In the background the system does not wake the application for it, so the library does not hear "
          "of it.",
          R"(Write "content-available": 1, if the application is to hear of it.)"});
}

}  // namespace

Findings findIn(const PayloadDocument& document) {
  return Linter(document).lint();
}

}  // namespace quorvantis::lint
