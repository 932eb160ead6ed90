#include "phone/line.h"

#include <functional>

#include "json/write.h"
#include "scenario/named_object.h"
#include "scenario/step_row.h"

namespace quorvantis::phone {

namespace {

using scenario::optional;
using scenario::required;

constexpr std::string_view kKey = "phone";

const auto kOn = required("on", scenario::boolean(), kKey);
const auto kUserInfo = required("userInfo", scenario::object(), kKey);
const auto kCollapseId = optional("collapseId", scenario::text());
const auto kExpires = optional("expires", scenario::integer());
const auto kExpiresIn = optional("expiresIn", scenario::integer());
const auto kAction = optional("action", scenario::text());
const auto kNotification = required("notification", scenario::count(), kKey);

struct ActRow {
  const char* name;
  std::vector<std::string_view> keys;
  std::function<Act(const json::Dictionary&)> read;
};

const std::vector<ActRow>& actTable() {
  static const auto& table = *new std::vector<ActRow>{
      {"end", {}, [](const json::Dictionary&) { return End(); }},
      {"airplaneMode", {kOn.name}, [](const json::Dictionary& act) { return AirplaneMode{kOn.from(act)}; }},
      {"arrive",
       {kUserInfo.name, kCollapseId.name, kExpires.name, kExpiresIn.name},
       [](const json::Dictionary& act) {
         return Arrive{kUserInfo.from(act), kCollapseId.from(act), kExpires.from(act), kExpiresIn.from(act)};
       }},
      {"remove",
       {kNotification.name},
       [](const json::Dictionary& act) { return Remove{kNotification.from(act)}; }},
      {"tap",
       {kNotification.name, kAction.name},
       [](const json::Dictionary& act) {
         return Tap{kNotification.from(act), kAction.from(act)};
       }},
      {"uninstall", {}, [](const json::Dictionary&) { return Uninstall(); }},
      {"install", {}, [](const json::Dictionary&) { return Install(); }}};
  return table;
}

Act readAct(const json::Dictionary& object) {
  const std::string& name = scenario::nameUnder(kKey, object);
  scenario::Names names;
  for (const ActRow& row : actTable()) {
    names.emplace_back(row.name);
    if (row.name != name) continue;
    scenario::Names known{kKey};
    known.insert(known.end(), row.keys.begin(), row.keys.end());
    scenario::refuseOtherKeys(object, json::write(name), known);
    return row.read(object);
  }
  throw scenario::unknownName("act", name, names);
}

json::Dictionary objectOf(const End&) {
  return {{"phone", "end"}};
}

json::Dictionary objectOf(const AirplaneMode& act) {
  return {{"phone", "airplaneMode"}, {kOn.name.data(), act.on}};
}

json::Dictionary objectOf(const Arrive& act) {
  json::Dictionary object{{"phone", "arrive"}, {kUserInfo.name.data(), act.userInfo}};
  if (act.collapseId) object.emplace(kCollapseId.name, *act.collapseId);
  if (act.expires) object.emplace(kExpires.name, *act.expires);
  if (act.expiresIn) object.emplace(kExpiresIn.name, *act.expiresIn);
  return object;
}

json::Dictionary objectOf(const Remove& act) {
  return {{"phone", "remove"}, {kNotification.name.data(), act.notification}};
}

json::Dictionary objectOf(const Tap& act) {
  json::Dictionary object{{"phone", "tap"}, {kNotification.name.data(), act.notification}};
  if (act.action) object.emplace(kAction.name, *act.action);
  return object;
}

json::Dictionary objectOf(const Uninstall&) {
  return {{"phone", "uninstall"}};
}

json::Dictionary objectOf(const Install&) {
  return {{"phone", "install"}};
}

}  // namespace

std::string textOf(const Act& act) {
  return std::visit([](const auto& one) { return json::write(objectOf(one)); }, act);
}

Line readLine(json::Dictionary object, bool serverIsElsewhere) {
  if (object.contains(kKey) && !object.contains("do")) return readAct(object);
  return scenario::readStep(std::move(object), serverIsElsewhere);
}

std::vector<Line> readLines(std::string_view scenario, bool serverIsElsewhere) {
  std::vector<Line> lines;
  for (const scenario::ScenarioLine& line : scenario::linesOf(scenario)) {
    try {
      if (line.text.starts_with(kActComment)) {
        lines.emplace_back(
            readAct(scenario::readObject(line.text.substr(std::string_view(kActComment).size()))));
      } else if (!line.isComment()) {
        lines.emplace_back(scenario::readStep(line.text, serverIsElsewhere, line.number));
      }
    } catch (const scenario::StepError& error) {
      throw scenario::ScenarioError(line.number, error.what());
    }
  }
  return lines;
}

}  // namespace quorvantis::phone
