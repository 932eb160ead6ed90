#include "phone/rehearsal.h"

#include <string>

#include "json/write.h"
#include "phone/phone.h"

namespace quorvantis::phone {

namespace {

// The first byte of the helper's reply.
constexpr char kGood = 'g';
constexpr char kFull = 'f';
constexpr char kImpossible = 'i';
constexpr char kLine = 'l';  // with the number of the line that is impossible

std::string answer(const std::string& scenario, device::Build build, const Limits& limits) {
  Transcript transcript(limits);
  try {
    const Phone phone({.build = build}, transcript, readLines(scenario, false));
  } catch (const Full& error) {
    return kFull + std::string(error.what());
  } catch (const scenario::ScenarioError& error) {
    return kLine + std::to_string(error.line()) + '\n' + error.what();
  } catch (const scenario::StepError& error) {
    return kImpossible + std::string(error.what());
  }
  return {kGood};
}

}  // namespace

Rehearsal::Rehearsal(device::Build build, Limits limits)
    : helper_([=](const std::string& scenario) { return answer(scenario, build, limits); }) {}

void Rehearsal::play(const std::string& scenario, const json::Dictionary& stored) {
  const std::string before =
      stored.empty() ? "" : json::write(json::Dictionary{{"do", "store"}, {"set", stored}}) + '\n';
  const std::lock_guard lock(mutex_);
  helper_.send(before + scenario);
  const std::string reply = helper_.receive();
  if (reply.front() == kFull) throw Full(reply.substr(1));
  if (reply.front() == kLine) {
    const std::size_t end = reply.find('\n');
    const std::size_t line = std::stoul(reply.substr(1, end - 1));
    throw scenario::ScenarioError(before.empty() ? line : line - 1, reply.substr(end + 1));
  }
  if (reply.front() == kImpossible) throw scenario::StepError(reply.substr(1));
}

}  // namespace quorvantis::phone
