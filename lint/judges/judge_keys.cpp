#include <algorithm>
#include <optional>
#include <vector>

#include "base/ascii.h"
#include "console/near_text.h"
#include "console/wording.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "lint/judges/system_keys.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;
using json::Value;

/// "type" is a word of many; only a value that is one of the library's shows that the library is meant.
bool isMeantForTheLibrary(std::string_view key, const Value& value) {
  if (key != payload::type.text()) return true;
  const auto* type = value.get<std::string>();
  return type != nullptr &&
         (std::find(payload::types.begin(), payload::types.end(), *type) != payload::types.end() ||
          console::nearestTo(*type, payload::types));
}

bool isExtra(std::string_view key) {
  return std::any_of(payload::extras.begin(), payload::extras.end(),
                     [&](const payload::Extra& extra) { return extra.key.text() == key; });
}

void judgeSystemValue(Place place, const std::string& key, const std::string& pointer, const Value& value,
                      Reporter& reporter) {
  SystemValueProblem problem = problemOfSystemValue(place, key, value);
  if (problem.must.empty()) return;
  Reporter::Wording wording{
      json::write(key) + " is " + console::shortened(json::write(value)) + " and " + problem.must,
      "The system ignores it.", "Correct it, or remove it."};
  if (!problem.meant.isNull()) {
    wording.remedy = "Write " + json::write(problem.meant) + ", if that is what you mean.";
    wording.edits = {reporter.document().replaceValue(pointer, problem.meant)};
  } else if (value.isNull()) {
    wording.remedy = "Remove it.";
    wording.edits = {reporter.document().remove(pointer)};
  }
  reporter.report("system-value", pointer, std::move(wording));
}

/// Short keys become other words with another first letter ("round"): in "aps", where there are an
/// application's own, too, those are not taken for misspelt ones.
bool isOtherWord(Place place, std::string_view key, std::string_view meant) {
  constexpr std::size_t kShort = 8;
  const bool isAmongOwn = place == Place::aps || place == Place::liveActivity;
  return isAmongOwn && meant.size() < kShort && key.size() == meant.size() &&
         base::lowerCase(std::string(key)).substr(1) == meant.substr(1);
}

std::optional<std::string_view> nearestSystemKey(Place place, const std::string& key) {
  const auto meant = console::nearestTo(key, systemKeys(place));
  const bool isSameInCase = meant && base::lowerCase(key) == *meant;
  return meant && (isSameInCase || !isOtherWord(place, key, *meant)) ? meant : std::nullopt;
}

void reportMisspelt(std::string_view owner, const std::string& key, std::string_view meant,
                    const std::string& pointer, Reporter& reporter) {
  Reporter::Wording wording{
      json::write(console::shortened(key)) + " is not one of " + std::string(owner) + " keys",
      "It is taken for one of the application's own keys, and has no effect.",
      R"(The extras are named "extra1" to "extra5".)"};
  if (!isExtra(meant)) {
    wording.remedy = "Write " + json::write(meant) + ", if that is what you mean.";
    wording.edits = {reporter.document().replaceKey(pointer, meant)};
  }
  reporter.report("misspelt-key", pointer, std::move(wording));
}

/// Whether it was one.
bool judgeSpellingOfSystemKey(Place place, const std::string& key, const Dictionary& dictionary,
                              const std::string& pointer, Reporter& reporter) {
  const auto meant = nearestSystemKey(place, key);
  if (!meant || dictionary.contains(*meant)) return false;
  reportMisspelt("Apple's", key, *meant, pointer, reporter);
  return true;
}

/// A dictionary that holds nothing but Apple's keys. Returns whether all are spelt right.
bool judgeSystemKeys(Place place, const Value* value, const std::string& pointer, Reporter& reporter) {
  const auto* dictionary = value != nullptr ? value->get<Dictionary>() : nullptr;
  bool isSpeltRight = true;
  if (dictionary == nullptr) return isSpeltRight;
  for (const auto& [key, part] : *dictionary) {
    const std::string inside = pointer + pointerPart(key);
    judgeSystemValue(place, key, inside, part, reporter);
    if (judgeSpellingOfSystemKey(place, key, *dictionary, inside, reporter)) isSpeltRight = false;
  }
  return isSpeltRight;
}

void reportAlertTextOutside(const Dictionary& aps, const std::string& key, Reporter& reporter) {
  const PayloadDocument& document = reporter.document();
  const Value& alert = aps.find(payload::alert.text())->second;
  const bool isThere = alert.find(key) != nullptr;
  Reporter::Wording wording{json::write(key) + R"( is next to "alert", not inside it)", "It is not shown.",
                            isThere ? R"(Remove it; "alert" already has one.)" : R"(Move it into "alert".)"};
  if (isThere) {
    wording.edits = {document.remove(inAps(key))};
  } else if (alert.get<Dictionary>() != nullptr) {
    wording.edits = document.move(inAps(key), inAps(payload::alert.text()));
  }
  reporter.report("alert-text-outside-alert", inAps(key), std::move(wording));
}

void judgeKeyOfAps(Place place, const Dictionary& aps, const std::string& key, const Value& value,
                   Reporter& reporter) {
  const bool isAlertText = key == payload::title.text() || key == payload::body.text();
  if (isAlertText) {
    if (aps.contains(payload::alert.text())) reportAlertTextOutside(aps, key, reporter);
    return;
  }
  const std::string pointer = inAps(key);
  const bool isJudged = key == "sound" && !judgeSystemKeys(Place::sound, &value, pointer, reporter);
  if (!isJudged) judgeSystemValue(place, key, pointer, value, reporter);
  const auto known = systemKeys(place);
  if (std::find(known.begin(), known.end(), key) != known.end()) return;
  if (const auto meant = console::nearestTo(key, libraryKeys())) {
    if (aps.contains(*meant) && !isExtra(*meant)) return;
    return reportMisspelt("the library's", key, *meant, pointer, reporter);
  }
  judgeSpellingOfSystemKey(place, key, aps, pointer, reporter);
}

void judgeKeysOfAlert(const Dictionary& aps, const Dictionary& alert, Reporter& reporter) {
  const std::string alertPointer = inAps(payload::alert.text());
  for (const auto& [key, value] : alert) {
    const std::string pointer = alertPointer + pointerPart(key);
    const bool isMisplaced =
        key != payload::alert.text() &&
        std::find(libraryKeys().begin(), libraryKeys().end(), key) != libraryKeys().end();
    if (isMisplaced) {
      judgeMisplaced(key, value, pointer, "in \"alert\"", &aps, reporter);
      continue;
    }
    judgeSystemValue(Place::alert, key, pointer, value, reporter);
    judgeSpellingOfSystemKey(Place::alert, key, alert, pointer, reporter);
  }
}

/// "content-state" is a word of nobody else's: the other keys are then those of a Live Activity, too.
bool hasKeysOfLiveActivity(const Dictionary& aps) {
  return isOfLiveActivity(aps) || aps.contains("content-state");
}

}  // namespace

std::span<const std::string_view> libraryKeys() {
  static const std::vector<std::string_view> keys = [] {
    std::vector<std::string_view> all{payload::alert.text(), payload::badge.text(),
                                      payload::contentAvailable.text(), payload::type.text(),
                                      payload::urlnoti.text()};
    for (const payload::Extra& extra : payload::extras) all.push_back(extra.key.text());
    return all;
  }();
  return keys;
}

void judgeMisplaced(std::string_view key, const Value& value, const std::string& pointer,
                    const std::string& where, const Dictionary* aps, Reporter& reporter) {
  if (!isMeantForTheLibrary(key, value)) return;
  const PayloadDocument& document = reporter.document();
  const bool isThere = aps != nullptr && aps->contains(key);
  const bool isFlagOfAlert =
      key == payload::contentAvailable.text() && aps != nullptr && aps->contains(payload::alert.text());
  Reporter::Wording wording{json::write(key) + " is " + where, "The library does not see it there.",
                            R"(Move it into "aps".)"};
  if (isThere) {
    wording.remedy = R"(Remove it; "aps" already has one.)";
  } else if (isFlagOfAlert) {
    wording.remedy =
        R"(Remove it; next to "alert" it keeps the library from handling the first call in the foreground.)";
  }
  if (isThere || isFlagOfAlert) {
    wording.edits = {document.remove(pointer)};
  } else if (aps != nullptr) {
    wording.edits = document.move(pointer, "/aps");
  }
  reporter.report("key-outside-aps", pointer, std::move(wording));
}

void judgeKeys(const Dictionary& aps, Reporter& reporter) {
  const Place place = hasKeysOfLiveActivity(aps) ? Place::liveActivity : Place::aps;
  for (const auto& [key, value] : aps) judgeKeyOfAps(place, aps, key, value, reporter);
  const auto alert = aps.find(payload::alert.text());
  const auto* dictionary = alert != aps.end() ? alert->second.get<Dictionary>() : nullptr;
  if (dictionary == nullptr) return;
  if (!isOfLiveActivity(aps)) return judgeKeysOfAlert(aps, *dictionary, reporter);
  judgeSystemKeys(Place::alertOfLiveActivity, &alert->second, inAps(alert->first), reporter);
  for (const auto& key : {payload::title.text(), payload::body.text()}) {
    judgeSystemKeys(Place::textOfLiveActivity,
                    dictionary->find(key) != dictionary->end() ? &dictionary->find(key)->second : nullptr,
                    inAps(alert->first) + pointerPart(key), reporter);
  }
}

}  // namespace quorvantis::lint
