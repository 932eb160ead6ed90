// The body of the push server's answer to a first registration and to a token's change.
#include <cstdint>

#include "base/utf8.h"
#include "fuzz/json_mutator.h"
#include "fuzz/phone.h"
#include "fuzz/transport_double.h"
#include "json/read.h"

namespace quorvantis::fuzz {

namespace {

using device::Event;
using json::Value;

struct Task {
  std::string_view name, success, unusable;
};

constexpr Task kRegister{"pushlibRegistrarToken", "onRegisterToken:", "Error --> registerToken"};
constexpr Task kChange{"pushlibCambioToken", "onUpdateToken:", "Error --> changeToken"};

/// The member of an answer; null when there is none, or the answer is not an object.
Value member(const Value* answer, std::string_view name) {
  const Value* found = answer == nullptr ? nullptr : answer->find(name);
  return found == nullptr ? Value() : *found;
}

bool isFailure(const Event& event) {
  return textOf(event, "event") == "log" && textOf(event, "message").starts_with("ENTRA AL ONERROR, error: ");
}

/// The library reports what follows from the answer's body, and nothing else.
void checkOutcome(const Task& task, std::string_view body, const Event& event) {
  body = base::withoutByteOrderMark(body);  // as the system's own decoding
  if (body.empty() || body == "error") {
    check(isFailure(event) && textOf(event, "message").ends_with(task.unusable), "an unusable answer");
    return;
  }
  const auto read = json::read(body, {.keepUnsignedIntegers = true});
  const auto* answer = std::get_if<Value>(&read);
  if (member(answer, "error") == Value("si")) return check(isFailure(event), "a refusal");
  check(textOf(event, "selector") == task.success, "a success");
  check(event.at("argument") == member(answer, "token"), "the token passes through as it came");
}

/// The application gets a token, and the library registers it.
void registerToken(Phone& phone, const Task& task, const std::string& token, const std::string& body) {
  phone.host->perform([&] { phone.host->deliverToken(token); });
  std::size_t requests = 0;
  for (const Event& event : phone.takeEvents()) {
    if (textOf(event, "event") != "request") continue;
    ++requests;
    check(textOf(event, "task") == task.name, "the task that the stored token asks for");
  }
  check(requests == 1, "one request for a token");

  phone.settle();
  const std::vector<Event> events = phone.takeEvents();
  check(events.size() == 1, "one outcome for a request");
  checkOutcome(task, body, events.front());
}

}  // namespace

}  // namespace quorvantis::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvantis::fuzz;
  const std::string body(reinterpret_cast<const char*>(data), size);
  Phone& phone = Phone::shared();
  phone.relaunch();
  phone.device.removeFromElsewhere({"tokenMovil"});
  phone.host->setAppHash("f00d");
  answerRequestsWith(body);
  registerToken(phone, kRegister, "first", body);
  registerToken(phone, kChange, "second", body);

  // An answer is not used for the next request.
  answerRequestsWith(std::nullopt);
  registerToken(phone, kChange, "third", "");
  return 0;
}
