#include "tool/demo_story.h"

#include <algorithm>
#include <iostream>

#include "base/hexadecimal.h"
#include "console/alert_box.h"
#include "json/write.h"
#include "server/push_request.h"

namespace quorvantis::tool {

namespace {

using json::Value;

constexpr std::string_view kHost = "Host";
constexpr std::string_view kPush = "Push";
constexpr std::string_view kSystem = "System";
constexpr std::string_view kUser = "User";
constexpr std::string_view kServer = "Server";
constexpr std::string_view kMaker = "Maker";

constexpr std::size_t kActorWidth = 6;
constexpr std::size_t kTextColumn = 2 + kActorWidth + 4 + kActorWidth + 2;

console::Style styleOf(std::string_view actor) {
  if (actor == kHost) return console::Style::green;
  if (actor == kPush) return console::Style::cyan;
  if (actor == kServer) return console::Style::magenta;
  if (actor == kUser) return console::Style::yellow;
  return console::Style::blue;
}

/// A string as it is, anything else as JSON.
std::string shown(const Value* value) {
  if (value == nullptr || value->isNull()) return "nothing";
  const auto* text = value->get<std::string>();
  return text != nullptr ? *text : json::write(*value);
}

std::string field(const device::Event& event, std::string_view key) {
  const auto entry = event.find(key);
  return shown(entry == event.end() ? nullptr : &entry->second);
}

std::string nameOf(const device::Event& event) {
  return field(event, "event");
}

server::PushRequest requestOf(const device::Event& event) {
  return server::parseRequest(field(event, "body")).request.value_or(server::PushRequest{});
}

/// Shortens long runs of hexadecimal digits, such as tokens, to their first and last ones.
std::string abridged(std::string text) {
  constexpr std::size_t kShort = 24;
  constexpr std::size_t kEnd = 10;
  constexpr const char* kDigits = "0123456789abcdef";
  for (std::size_t at = text.find_first_of(kDigits); at != std::string::npos;
       at = text.find_first_of(kDigits, at)) {
    const std::size_t end = std::min(text.find_first_not_of(kDigits, at), text.size());
    if (end - at > kShort) {
      text.replace(at + kEnd, end - at - 2 * kEnd, "\u2026");
      at = text.find_first_not_of(kDigits, at + kEnd);  // past the ellipsis
    } else {
      at = end;
    }
  }
  return text;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

}  // namespace

std::string momentOf(const device::Event& event) {
  std::string name = nameOf(event);
  if (name == "callback" || name == "raised") return name + ' ' + field(event, "selector");
  if (name == "received") return name + ' ' + requestOf(event).task;
  if (name == "stored") return name + ' ' + field(event, "key");
  if (name == "opened") return name + ' ' + field(event, "url");
  if (name == "badge") return name + ' ' + field(event, "number");
  return name;
}

device::Event answeredEvent(int status, const std::string& body) {
  return {{"event", "answered"}, {"status", status}, {"body", body}};
}

void Story::act(const std::string& title) const {
  const std::string rule(terminal_.width(), '=');
  std::cout << terminal_.styled(console::Style::dim, rule) << '\n'
            << terminal_.styled(console::Style::bold, title) << '\n'
            << terminal_.styled(console::Style::dim, rule) << "\n\n";
}

void Story::scene(std::size_t number, const std::string& title, const std::string& about) const {
  std::cout << terminal_.styled(console::Style::bold, std::to_string(number) + ". " + title) << '\n';
  for (const std::string& text : console::wrap(about, terminal_.width() - 3))
    std::cout << "   " << text << '\n';
  std::cout << '\n';
}

void Story::line(std::string_view from, std::string_view to, const std::string& text) const {
  const std::vector<std::string> lines = console::wrap(abridged(text), terminal_.width() - kTextColumn);
  std::cout << "  " << terminal_.styled(styleOf(from), console::padded(from, kActorWidth)) << " -> "
            << terminal_.styled(styleOf(to), console::padded(to, kActorWidth)) << "  " << lines.front()
            << '\n';
  for (std::size_t i = 1; i < lines.size(); ++i)
    std::cout << std::string(kTextColumn, ' ') << lines[i] << '\n';
}

void Story::details(const std::vector<std::pair<std::string, std::string>>& rows) const {
  constexpr std::size_t kIndent = 4;
  std::size_t nameWidth = 0;
  for (const auto& [name, text] : rows) nameWidth = std::max(nameWidth, name.size() + 2);
  for (const auto& [name, text] : rows) {
    std::string head = name;
    for (const std::string& part : console::wrap(abridged(text), terminal_.width() - kIndent - nameWidth)) {
      std::cout << std::string(kIndent, ' ')
                << terminal_.styled(console::Style::dim, console::padded(head, nameWidth)) << part << '\n';
      head.clear();
    }
  }
}

void Story::note(console::Style style, const std::string& text) const {
  for (const std::string& part : console::wrap(text, terminal_.width() - 2)) {
    std::cout << "  " << terminal_.styled(style, part) << '\n';
  }
}

void Story::step(const scenario::Step& step) const {
  const std::string name = shown(step.find("do"));
  if (name == "relaunch") {
    note(console::Style::dim, "(the application is closed and opened again)");
  } else if (name == "host") {
    if (step.find("appHash") != nullptr) line(kHost, kPush, "appHash = " + shown(step.find("appHash")));
    if (step.find("foreground") != nullptr) line(kHost, kPush, "activePushNotificationsInForegroundApp: YES");
  } else if (name == "activate") {
    line(kHost, kPush, "activePushNotifications: YES");
  } else if (name == "store") {
    note(console::Style::dim, "(a backup is restored: " + json::write(*step.find("set")) + ")");
  } else if (name == "application") {
    note(console::Style::dim, "(the application is now " + shown(step.find("state")) + ")");
  } else if (name == "tapOK") {
    line(kUser, kPush, "taps OK");
  } else if (name == "advance") {
    note(console::Style::dim, "(one second later)");
  } else if (name == "notification") {
    notification(shown(step.find("arrives")), json::write(*step.find("userInfo")));
  }
}

void Story::notification(const std::string& arrives, const std::string& userInfo) const {
  if (arrives == "tap") {
    line(kUser, kPush, "taps the notification " + userInfo);
  } else if (arrives == "foreground") {
    line(kSystem, kPush, "a notification arrives: " + userInfo);
  } else {
    line(kSystem, kHost, "a notification arrives: " + userInfo);
    line(kHost, kPush, "\u2026didReceiveRemoteNotification:fetchCompletionHandler:");
  }
}

void Story::events(const std::vector<device::Event>& events) const {
  std::vector<std::string> keys;
  for (const device::Event& event : events) {
    if (nameOf(event) == "stored") {
      keys.push_back(field(event, "key"));
      continue;
    }
    stored(std::exchange(keys, {}));
    this->event(event);
  }
  stored(keys);
}

void Story::stored(const std::vector<std::string>& keys) const {
  if (!keys.empty()) line(kPush, kSystem, "stores " + joined(keys));
}

void Story::event(const device::Event& event) const {
  const std::string name = nameOf(event);
  if (name == "registerUser") {
    line(kPush, kMaker,
         "register this user and device: \"" + field(event, "userType") + "\", version " +
             field(event, "version") + ", hash " + field(event, "hash"));
    line(kMaker, kPush, "registerFinish");
  } else if (name == "authorizationRequested") {
    line(kPush, kSystem, "may we show badge, sound and alert?");
    const auto& error = device_.authorization->error;
    line(error ? kSystem : kUser, kPush, error ? "error: " + *error : "yes");
  } else if (name == "registerForRemoteNotifications") {
    line(kPush, kSystem, "registerForRemoteNotifications");
    const auto& token = device_.facts.token;
    line(kSystem, kHost,
         token ? "device token " + base::hexadecimal(*token) : "error: " + device_.facts.tokenError);
    line(kHost, kPush,
         token ? "registerForRemoteNotificationsWithDeviceToken:"
               : "\u2026didFailToRegisterForRemoteNotificationsWithError:");
  } else if (name == "callback") {
    line(kPush, kHost, field(event, "selector") + ' ' + field(event, "argument"));
  } else if (name == "log") {
    line(kPush, kSystem, "logs " + field(event, "tag") + ' ' + field(event, "message"));
  } else if (name == "synchronized") {
    line(kPush, kSystem, "writes the user defaults to disk");
  } else if (name == "received") {
    line(kPush, kServer, "POST " + field(event, "path") + " (sealed, over HTTPS). Unsealed, it says:");
    request(field(event, "body"));
  } else if (name == "answered") {
    line(kServer, kPush, field(event, "status") + ' ' + field(event, "body"));
  } else if (name == "presented") {
    line(kPush, kSystem, "show the notification");
  } else if (name == "badge") {
    line(kPush, kSystem, "badge " + field(event, "number"));
  } else if (name == "vibrated") {
    line(kPush, kSystem, "vibrate");
  } else if (name == "alertShown") {
    line(kPush, kUser, "shows an alert");
    alert(event);
  } else if (name == "alertHidden") {
    line(kPush, kSystem, "hides the alert's window");
  } else if (name == "opened") {
    line(kPush, kSystem, "open " + field(event, "url"));
  } else if (name == "raised") {
    note(console::Style::red,
         "An exception: " + field(event, "selector") + " is not understood. A real application ends here.");
  }
}

void Story::request(const std::string& body) const {
  const auto fields = server::parseRequest(body).request.value_or(server::PushRequest{});
  std::vector<std::pair<std::string, std::string>> rows{{"tarea", fields.task}};
  for (const auto& [name, value] : server::fieldsOf(fields.task)) rows.emplace_back(name, fields.*value);
  std::erase_if(rows, [](const auto& row) { return row.second.empty(); });
  details(rows);
}

void Story::alert(const device::Event& event) const {
  constexpr std::size_t kWidth = 40;
  const auto text = [&](const char* part) {
    const auto* given = event.at(part).get<std::string>();
    return given == nullptr ? std::string() : *given;
  };
  for (const std::string& row : console::alertBox(text("title"), text("message"), {"OK"}, kWidth)) {
    std::cout << std::string(kTextColumn, ' ') << row << '\n';
  }
}

void Story::settings(const json::Dictionary& values) const {
  note(console::Style::bold, "What is now stored on the phone:");
  std::vector<std::pair<std::string, std::string>> rows;
  for (const auto& [key, value] : values) rows.emplace_back(key, shown(&value));
  details(rows);
}

void Story::verdict(const std::vector<std::string>& missing,
                    const std::vector<std::string>& unexpected) const {
  std::cout << '\n';
  if (missing.empty() && unexpected.empty()) {
    note(console::Style::green, "As expected.");
  } else {
    if (!missing.empty()) note(console::Style::red, "WRONG: this did not happen: " + joined(missing));
    if (!unexpected.empty())
      note(console::Style::red, "WRONG: this should not have happened: " + joined(unexpected));
  }
  std::cout << '\n';
}

}  // namespace quorvantis::tool
