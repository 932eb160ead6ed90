#include "scenario/step_table.h"

#include <algorithm>

#include "device/events.h"
#include "scenario/delivery.h"

namespace quorvantis::scenario {

namespace {

using device::Device;
using json::Dictionary;
using Text = std::optional<std::string>;

/// Assigns to a field of a part of the device.
template <class Part, class T>
auto into(Part Device::*part, T Part::*field) {
  return [part, field](const World& world, const T& value) { (world.device.*part).*field = value; };
}

device::AuthorizationBehaviour& decided(const World& world) {
  auto& authorization = world.device.authorization;
  return authorization ? *authorization : authorization.emplace();
}

std::vector<std::string_view> callbackNames() {
  return {"onGetToken:", "onReceiveNotification:", "onRegisterToken:", "onUpdateToken:", "onError:"};
}

void setDelegate(const World& world, const std::optional<std::vector<std::string>>& callbacks) {
  world.host.setDelegate(callbacks ? std::optional(std::set(callbacks->begin(), callbacks->end()))
                                   : std::nullopt);
}

void deliver(const World& world, Arrival arrival, const Dictionary& userInfo, const std::string& action) {
  world.host.perform([&] { world.host.deliver(arrival, userInfo, action); });
}

void tapOK(const World& world, std::int64_t alert) {
  const std::vector<int> shown = world.device.screen.alerts();
  if (std::find(shown.begin(), shown.end(), alert) == shown.end()) {
    throw StepError("alert " + std::to_string(alert) + " is not on screen");
  }
  world.host.perform([&] { world.device.screen.tap(static_cast<int>(alert)); });
}

void relaunch(const World& world) {
  world.device.endProcess();
  world.host.terminate();
  world.host.launch();
}

void show(const World& world) {
  world.device.record.add(device::events::settings(storedValues(world.device)));
}

/// Sends a message to the host application, with the values of the keys.
template <class... Values>
auto sending(void (Host::*message)(Values...)) {
  return [message](const World& world, const std::remove_cvref_t<Values>&... values) {
    world.host.perform([&] { (world.host.*message)(values...); });
  };
}

/// The row of an operation of the step "call".
template <class Act, class... Keys>
StepRow call(const char* operation, const char* about, Act act, Keys... keys) {
  return {
      "call", {{"operation", operation}}, about, {does(act, std::move(keys)...)}, Needs::runningApplication};
}

/// The row of an operation that returns a value.
template <class Ask>
StepRow question(const char* operation, const char* about, Ask ask) {
  return call(operation, about, [operation, ask](const World& world) {
    world.host.perform(
        [&] { world.device.record.add(device::events::returned(operation, ask(world.host))); });
  });
}

StepRow notification(Arrival arrival, const char* about) {
  return {"notification",
          {{"arrives", nameOf(arrival)}},
          about,
          {does([arrival](const World& world,
                          const Dictionary& userInfo) { deliver(world, arrival, userInfo, kDefaultAction); },
                required("userInfo", object()))},
          Needs::runningApplication};
}

std::vector<StepRow> makeTable() {
  return {
      {"device",
       {},
       "sets facts of the device",
       {sets("systemVersion", text(), into(&Device::facts, &device::Facts::systemVersion)),
        sets("name", text(), into(&Device::facts, &device::Facts::name)),
        sets("model", text(), into(&Device::facts, &device::Facts::model)),
        sets("country", orNull(text()), into(&Device::facts, &device::Facts::country)),
        sets("languages", orNull(texts()), into(&Device::facts, &device::Facts::languages)),
        sets("token", orNull(hexadecimal()), into(&Device::facts, &device::Facts::token)),
        sets("tokenError", text(), into(&Device::facts, &device::Facts::tokenError))}},
      {"application",
       {},
       "sets facts of the application",
       {sets("state", choice<device::ApplicationState>(),
             into(&Device::application, &device::Application::state)),
        sets("version", orNull(text()), into(&Device::application, &device::Application::version)),
        sets("canOpenURL", boolean(), into(&Device::application, &device::Application::canOpenURL))}},
      {"library",
       {},
       "sets what the library's bundle says, and whether it is found",
       {sets("version", orNull(text()), into(&Device::library, &device::LibraryBundle::version)),
        sets("loaded", boolean(), into(&Device::library, &device::LibraryBundle::loaded))}},
      {"store",
       {},
       "another component of the application writes the settings",
       {sets("set", storable(),
             [](const World& world, const Dictionary& values) { world.device.storeFromElsewhere(values); }),
        sets("remove", texts(),
             [](const World& world, const std::vector<std::string>& keys) {
               world.device.removeFromElsewhere(keys);
             })}},
      {"host",
       {},
       "the application configures the library",
       {sets("appHash", orNull(text()), sending(&Host::setAppHash)),
        sets("deactivateGPS", boolean(), sending(&Host::setDeactivateGPS)),
        sets("foreground", boolean(), sending(&Host::setActiveInForeground)),
        sets("delegate",
             orNull(someOf(callbackNames(),
                           "an array of callbacks (" + console::listed(callbackNames(), " or ") + ")")),
             setDelegate)},
       Needs::runningApplication},
      {"registration",
       {},
       "sets how the registration framework answers",
       {sets("finishes", boolean(), into(&Device::registration, &device::RegistrationBehaviour::finishes)),
        sets("stores", storable(), into(&Device::registration, &device::RegistrationBehaviour::stores))}},
      {"authorization",
       {},
       "sets how requests for permission end",
       {sets("granted", boolean(),
             [](const World& world, bool granted) { decided(world).granted = granted; }),
        sets("error", orNull(text()),
             [](const World& world, const Text& error) { decided(world).error = error; })}},
      {"server",
       {},
       "queues answers of the push server",
       {does(
           [](const World& world, const std::vector<QueuedAnswer>& answers) {
             if (world.service == nullptr) throw StepError(kServerIsElsewhere);
             for (const QueuedAnswer& answer : answers) world.service->queue(answer);
           },
           required("answers", answers()))},
       Needs::ownPushServer},
      {"activate",
       {},
       "the application switches notifications on or off",
       {does(sending(&Host::activate), required("value", byte()))},
       Needs::runningApplication},
      {"deliverToken",
       {},
       "the system hands a device token to the application",
       {does(sending(&Host::deliverToken), required("hex", hexadecimal()))},
       Needs::runningApplication},
      question("checkAppHash", "asks whether the hash is set",
               [](Host& host) { return host.checkAppHash(); }),
      question("getVersion", "asks for the library's version",
               [](Host& host) {
                 const Text version = host.getVersion();
                 return version ? json::Value(*version) : json::Value();
               }),
      call("resetBadge", "takes the badge off the icon", sending(&Host::resetBadge)),
      call("registerFinish", "says that the registration of the user is done",
           sending(&Host::registerFinish)),
      call("application:didRegisterForRemoteNotificationsWithDeviceToken:",
           "says to the library itself that the system gave a token", sending(&Host::didRegister),
           required("hex", hexadecimal())),
      call("application:didFailToRegisterForRemoteNotificationsWithError:",
           "says to the library itself that the system gave none", sending(&Host::didFailToRegister),
           required("error", text())),
      notification(Arrival::foreground, "the system asks whether to show a notification"),
      notification(Arrival::background, "the system hands over a notification in the background"),
      {"notification",
       {{"arrives", nameOf(Arrival::tap)}},
       "the user taps on a notification, or on a button of it",
       {does(
           [](const World& world, const Dictionary& userInfo, const Text& action) {
             deliver(world, Arrival::tap, userInfo, action.value_or(kDefaultAction));
           },
           required("userInfo", object()), optional("action", text()))},
       Needs::runningApplication},
      {"deliver",
       {},
       "a notification reaches the phone, and the system does what the application's state asks",
       {does(
           [](const World& world, const Dictionary& userInfo) {
             for (const Arrival arrival : arrivalsOf(userInfo, world.device.application.state)) {
               deliver(world, arrival, userInfo, kDefaultAction);
             }
           },
           required("userInfo", object()))},
       Needs::runningApplication},
      {"tapOK",
       {},
       "the user taps the button of an alert",
       {does(tapOK, required("alert", count()))},
       Needs::runningApplication},
      {"settle",
       {},
       "runs all that is due now",
       {does([](const World& world) { world.device.queue.settle(world.runner()); })},
       Needs::runningApplication},
      {"advance",
       {},
       "settles, then moves the clock and runs what falls due",
       {does([](const World& world,
                std::chrono::nanoseconds time) { world.device.queue.advance(time, world.runner()); },
             required("seconds", seconds()))},
       Needs::runningApplication},
      {"relaunch", {}, "the application's process ends and starts again", {does(relaunch)}},
      {"show", {}, "prints what is stored", {does(show)}},
  };
}

}  // namespace

std::vector<KeyFacts> StepRow::keys() const {
  std::vector<KeyFacts> all;
  for (const Rule& rule : rules) all.insert(all.end(), rule.keys.begin(), rule.keys.end());
  return all;
}

json::Dictionary storedValues(Device& device) {
  Dictionary values = device.settings.values();
  values.erase("AppleLanguages");
  return values;
}

const std::vector<StepRow>& stepTable() {
  static const auto& table = *new std::vector<StepRow>(makeTable());
  return table;
}

}  // namespace quorvantis::scenario
