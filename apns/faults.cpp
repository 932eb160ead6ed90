#include "apns/faults.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "apns/reasons.h"
#include "console/wording.h"

namespace quorvantis::apns {
namespace {

using Kind = Fault::Kind;

constexpr std::int64_t kMostTimes = 1'000'000;
constexpr std::size_t kMostFaults = 1000;
constexpr double kMostSeconds = 3600;
constexpr std::size_t kMostReasonBytes = 200;

struct KindName {
  std::string_view name;
  Kind kind;
  std::array<std::string_view, 2> keys;  ///< besides "fault" and "times"
};

constexpr std::array kKinds = {KindName{"answer", Kind::answer, {"reason", "status"}},
                               KindName{"goaway", Kind::goAway, {"reason"}},
                               KindName{"cut", Kind::cut, {}},
                               KindName{"lost", Kind::lost, {}},
                               KindName{"silence", Kind::silence, {}},
                               KindName{"slow", Kind::slow, {"seconds"}}};

const KindName* kindOf(const json::Value& entry) {
  const json::Value* const name = entry.find("fault");
  const auto* const found = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindName& one) {
    return name != nullptr && *name == json::Value(one.name);
  });
  return found == kKinds.end() ? nullptr : found;
}

bool hasOtherKeys(const json::Value& entry, const KindName& kind) {
  const auto& members = *entry.get<json::Dictionary>();
  return std::any_of(members.begin(), members.end(), [&](const auto& member) {
    return member.first != "fault" && member.first != "times" &&
           std::find(kind.keys.begin(), kind.keys.end(), member.first) == kind.keys.end();
  });
}

std::optional<std::int64_t> wholeNumber(const json::Value& entry, std::string_view key, std::int64_t usual,
                                        std::int64_t least, std::int64_t most) {
  const json::Value* const value = entry.find(key);
  if (value == nullptr) return usual;
  const auto* const number = value->get<std::int64_t>();
  return number != nullptr && *number >= least && *number <= most ? std::optional(*number) : std::nullopt;
}

std::optional<double> secondsIn(const json::Value& entry) {
  const json::Value* const value = entry.find("seconds");
  if (value == nullptr) return 1;
  const auto* const whole = value->get<std::int64_t>();
  const auto* const real = value->get<double>();
  const double seconds = whole != nullptr ? static_cast<double>(*whole) : real != nullptr ? *real : -1;
  return seconds >= 0 && seconds <= kMostSeconds ? std::optional(seconds) : std::nullopt;
}

/// Fills in what the entry says; returns what is wrong with it, or an empty string.
std::string read(const json::Value& entry, Fault& fault) {
  if (entry.get<json::Dictionary>() == nullptr) return "must be an object";
  const KindName* const kind = kindOf(entry);
  if (kind == nullptr) {
    std::vector<std::string_view> names(kKinds.size());
    std::transform(kKinds.begin(), kKinds.end(), names.begin(), [](const KindName& one) { return one.name; });
    return "needs a \"fault\", one of " + console::listed(names);
  }
  if (hasOtherKeys(entry, *kind)) {
    std::vector<std::string_view> known{"fault", "times"};
    std::copy_if(kind->keys.begin(), kind->keys.end(), std::back_inserter(known),
                 [](std::string_view key) { return !key.empty(); });
    return "has a key that \"" + std::string(kind->name) + "\" does not take; it takes " +
           console::listed(known);
  }
  const auto times = wholeNumber(entry, "times", 1, 1, kMostTimes);
  if (!times) return "\"times\" must be a whole number from 1 to 1000000";
  const auto seconds = secondsIn(entry);
  if (!seconds) return "\"seconds\" must be a number from 0 to 3600";
  const bool isAnswer = kind->kind == Kind::answer;
  const json::Value* const reason = entry.find("reason");
  const auto* const text = reason == nullptr ? nullptr : reason->get<std::string>();
  if ((reason != nullptr && text == nullptr) || (text != nullptr && text->size() > kMostReasonBytes))
    return "\"reason\" must be a string of at most 200 bytes";
  fault.reason = text != nullptr ? *text : isAnswer ? "InternalServerError" : "Shutdown";
  const Reason* const known = findReason(fault.reason);
  if (isAnswer && known == nullptr && entry.find("status") == nullptr)
    return "needs a \"status\", since Apple documents no such \"reason\"";
  const auto status = wholeNumber(entry, "status", known == nullptr ? 0 : known->status, 300, 599);
  if (isAnswer && !status) return "\"status\" must be a whole number from 300 to 599";
  fault.kind = kind->kind;
  fault.status = static_cast<int>(status.value_or(0));
  fault.times = static_cast<std::size_t>(*times);
  fault.delay = std::chrono::milliseconds(static_cast<std::int64_t>(*seconds * 1000));
  return "";
}

}  // namespace

std::variant<std::vector<Fault>, std::string> readFaults(const json::Value& order) {
  const json::Value* const list = order.find("faults");
  const auto* const entries = list == nullptr ? nullptr : list->get<json::Array>();
  if (entries == nullptr || order.get<json::Dictionary>()->size() != 1)
    return R"(the body must be an object with one key, "faults", an array; an empty one ends all faults)";
  if (entries->size() > kMostFaults) return "\"faults\" has more than 1000 entries; \"times\" repeats one";
  std::vector<Fault> faults(entries->size());
  for (std::size_t i = 0; i < faults.size(); ++i) {
    const std::string problem = read((*entries)[i], faults[i]);
    if (!problem.empty()) return "entry " + std::to_string(i + 1) + " of \"faults\" " + problem;
  }
  return faults;
}

void FaultQueue::set(const std::vector<Fault>& faults) {
  const std::lock_guard lock(mutex_);
  waiting_.assign(faults.begin(), faults.end());
}

std::optional<Fault> FaultQueue::take() {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty()) return std::nullopt;
  Fault next = waiting_.front();
  if (--waiting_.front().times == 0) waiting_.pop_front();
  return next;
}

}  // namespace quorvantis::apns
