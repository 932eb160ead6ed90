// A notification: from the parsed payload, and from an .apns file's bytes, to the host's report.
#include <simdjson.h>

#include <memory>

#include "bench/pairs.h"
#include "bench/payloads.h"
#include "bench/phone.h"
#include "bench/plain_handler.h"
#include "json/read.h"
#include "platform/NSJSONSerialization.h"
#include "platform/simulated/values.h"

namespace quorvantis::bench {

namespace {

using platform::NSData;
using platform::NSDictionary;

NSDictionary parsed(const std::string& text) {
  return platform::simulated::objectFrom(std::get<json::Value>(json::read(text))).as<NSDictionary>();
}

NSData dataOf(const std::string& bytes) {
  return platform::simulated::objectFrom(json::Data{bytes}).as<NSData>();
}

void prepare(const Payload& payload) {
  Phone& phone = Phone::only();
  phone.forget();
  phone.device.application.state =
      payload.active ? device::ApplicationState::active : device::ApplicationState::background;
  phone.push.activePushNotificationsInForegroundApp(payload.showInForeground);
}

/// Keeps the device's record from growing without bounds, at the same cost for both sides.
void forgetNowAndThen() {
  static int rounds = 0;
  if (++rounds % 64 == 0) Phone::only().forget();
}

void deliver(const NSDictionary& payload) {
  Phone& phone = Phone::only();
  phone.push.applicationDidReceiveRemoteNotification(platform::UIApplication::sharedApplication(), payload,
                                                     nullptr);
  phone.host.last = nullptr;
}

struct Plain {
  explicit Plain(const Payload& payload)
      : handler(Phone::only().device, [this](const nlohmann::json& report) { heard += report.size(); }) {
    handler.showInForeground = payload.showInForeground;
  }
  std::size_t heard = 0;
  PlainHandler handler;
};

/// Registers one variant, which is created when it first runs.
template <class Make>
void measurePayload(const Payload& payload, const std::string& row, const std::string& variant, Make make) {
  benchmark::RegisterBenchmark((row + "|" + variant).c_str(), [payload, make](benchmark::State& state) {
    prepare(payload);
    auto work = make();
    for (auto round : state) {
      static_cast<void>(round);
      work();
      forgetNowAndThen();
    }
  });
}

void handled(const Payload& payload) {
  const std::string row = "Notification handled: " + payload.name;
  measurePayload(payload, row, "library",
                 [payload] { return [parsed = parsed(payload.text)] { deliver(parsed); }; });
  measurePayload(payload, row, "nlohmann, plain", [payload] {
    return [plain = std::make_shared<Plain>(payload), parsed = nlohmann::json::parse(payload.text)] {
      plain->handler.handle(parsed);
    };
  });
  measurePayload(payload, row, "limit", [payload] {
    const NSDictionary whole = parsed(payload.text);
    return [aps = whole.objectForKey(platform::NSString::stringWithUTF8String("aps"))] {
      std::vector<platform::simulated::DictionaryInstance::Entry> report;
      const auto* entries = platform::simulated::known<platform::simulated::DictionaryInstance>(aps);
      report.reserve(entries->entries().size());
      for (const auto& entry : entries->entries()) report.push_back(entry);
      benchmark::DoNotOptimize(report.data());
    };
  });
}

void read(const Payload& payload) {
  const std::string row = ".apns bytes to report: " + payload.name;
  measurePayload(payload, row, "library", [payload] {
    return [data = dataOf(payload.text)] {
      deliver(platform::NSJSONSerialization::JSONObjectWithData(data, 0).as<NSDictionary>());
    };
  });
  measurePayload(payload, row, "nlohmann, plain", [payload] {
    return [plain = std::make_shared<Plain>(payload), payload] {
      plain->handler.handle(nlohmann::json::parse(payload.text));
    };
  });
  measurePayload(payload, row, "simdjson, a parser for each", [payload] {
    return [payload] {
      simdjson::dom::parser parser;
      benchmark::DoNotOptimize(parser.parse(payload.text).error());
    };
  });
  measurePayload(payload, row, "limit", [payload] {
    return [parser = std::make_shared<simdjson::dom::parser>(),
            text = std::make_shared<simdjson::padded_string>(payload.text)] {
      benchmark::DoNotOptimize(parser->parse(*text).error());
    };
  });
}

}  // namespace

void registerNotifications() {
  for (const Payload& payload : everyKind()) handled(payload);
  for (const int keys : {25, 100, 200, 400}) handled(silentWith(keys));
  for (const Payload& payload : everyKind()) {
    if (!payload.active && payload.name != "pushlib-extras, five stored") read(payload);
  }
  for (const int keys : {25, 100, 400}) read(silentWith(keys));
}

}  // namespace quorvantis::bench
