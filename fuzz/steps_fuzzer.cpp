// Lines posted to a running phone, one at a time: nothing ends the process, and the saved scenario gives the
// same events on a fresh phone.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "phone/phone.h"
#include "scenario/named_object.h"

namespace quorvantis::fuzz {

namespace {

/// Requests end at once, without a server.
phone::PhoneOptions options() {
  return {.server = scenario::OutsideServer{"127.0.0.1:1", {"127.0.0.1", 1}, "nobody"}};
}

std::vector<std::string> eventsIn(const phone::Transcript& transcript) {
  std::vector<std::string> events;
  std::size_t next = 1;
  for (;;) {
    const auto reading = transcript.read(next);
    if (reading.lines.empty()) return events;
    next += reading.lines.size();
    for (const phone::SharedText& line : reading.lines) {
      const json::Dictionary object = scenario::readObject(*line);
      if (object.contains("event")) events.push_back(*line);
    }
  }
}

void play(phone::Phone& phone, const scenario::ScenarioLine& text) {
  try {
    const phone::Line line = phone::readLine(scenario::readObject(text.text), true);
    phone.play(line);
  } catch (const scenario::StepError& error) {
    check(error.what()[0] != '\0', "a refusal says why");
  }
}

}  // namespace

}  // namespace quorvantis::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvantis;
  const std::string text(reinterpret_cast<const char*>(data), size);
  phone::Transcript transcript;
  phone::Phone phone(fuzz::options(), transcript);
  for (const scenario::ScenarioLine& line : scenario::linesOf(text)) fuzz::play(phone, line);
  if (phone.isPrompting()) {
    phone.play(scenario::readStep({{"do", "authorization"}, {"granted", true}}));
  }
  const std::vector<std::string> events = fuzz::eventsIn(transcript);
  phone.begin(phone::readLines(phone.scenario().takeAll(), true));
  fuzz::check(fuzz::eventsIn(transcript) == events, "what is saved gives the same events");
  return 0;
}
