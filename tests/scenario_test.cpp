// Steps that are played one at a time, as a person asks for them.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "json/write.h"
#include "scenario/host.h"
#include "scenario/player.h"
#include "scenario/step_table.h"

namespace quorvantis::scenario {
namespace {

struct Phone {
  void play(std::string_view step) { player.play(readStep(step)); }

  std::string takeLines() {
    std::string lines;
    for (const device::Event& event : device.record.take()) lines += json::write(event) + '\n';
    return lines;
  }

  device::Device device;
  PushService service{device};
  std::unique_ptr<Host> host = makeHost(device);
  Player player{device, *host, &service};
};

constexpr const char* kHost = R"({"appHash":"f00d","do":"host"})";
constexpr const char* kActivate = R"({"do":"activate","value":true})";
constexpr const char* kAdvance = R"({"do":"advance","seconds":1})";
constexpr const char* kTap =
    R"({"arrives":"tap","do":"notification","userInfo":{"aps":{"alert":{},"type":"pushlib-abrirurl","urlnoti":"https://a.b/"}}})";

constexpr const char* kAlert =
    R"({"arrives":"background","do":"notification","userInfo":{"aps":{"alert":{},"type":"pushlib-abrirurl","urlnoti":"https://a.b/"}}})";

std::string played(std::initializer_list<const char*> steps) {
  Phone phone;
  for (const char* step : steps) phone.play(step);
  return phone.takeLines();
}

TEST(SteppedPhone, WaitsForAPersonsAnswerAndContinuesAsAScenarioWould) {
  for (const char* answer :
       {R"({"do":"authorization","granted":true})", R"({"do":"authorization","error":"no"})"}) {
    std::string lines;
    {
      Phone phone;
      phone.device.authorization.reset();
      for (const char* step : {kHost, kActivate, kAdvance}) phone.play(step);
      EXPECT_TRUE(phone.player.isStopped());
      lines = phone.takeLines();
      EXPECT_TRUE(lines.ends_with(R"({"event":"authorizationRequested","options":7})"
                                  "\n"))
          << lines;
      phone.player.goOn();
      EXPECT_EQ(phone.takeLines(), "") << "nobody has answered";
      phone.play(answer);
      phone.player.goOn();
      EXPECT_FALSE(phone.player.isStopped());
      phone.play(kTap);
      phone.play(kAdvance);
      lines += phone.takeLines();
    }
    EXPECT_EQ(lines, played({kHost, kActivate, answer, kAdvance, kTap, kAdvance}));
  }
}

TEST(SteppedPhone, EndsTheApplicationsProcess) {
  device::Device device;
  PushService service{device};
  const std::unique_ptr<Host> host = makeHost(device);
  {
    Player player(device, *host, &service);
    for (const char* step : {kHost, kActivate, kAlert}) player.play(readStep(step));
  }
  EXPECT_EQ(device.screen.alerts(), std::vector<int>());
  std::ignore = device.record.take();
  device.queue.settle([](const auto& task) { task(); });
  EXPECT_TRUE(device.record.take().empty()) << "what was due ended with it";
}

TEST(StepTable, IsInTheDocument) {
  std::string expected;
  const auto row = [&](const std::string& step, const std::string& key, const std::string& value,
                       const std::string& about) {
    for (const std::string& cell : {step, key, value, about})
      expected += (cell.empty() ? "| " : "| " + cell + ' ');
    expected += "|\n";
  };
  for (const StepRow& step : stepTable()) {
    std::string name = json::write(step.name);
    if (step.variant) name += ", " + json::write(step.variant->key) + ": " + json::write(step.variant->value);
    row(name, "", "", step.about);
    for (const KeyFacts& key : step.keys()) {
      row("", json::write(key.name), key.kind.description, key.isRequired ? "required" : "");
    }
  }
  std::ifstream document(QUORVANTIS_SCENARIOS_DOCUMENT);
  std::string found;
  std::string line;
  while (std::getline(document, line) && line != "| Step | Key | Its value | |") {
  }
  std::getline(document, line);
  while (std::getline(document, line) && !line.empty()) found += line + '\n';
  EXPECT_EQ(found, expected);

  std::string rest(std::istreambuf_iterator<char>(document), {});
  for (const auto& fault : kNamed<Fault>) {
    EXPECT_NE(rest.find("\n| \"" + std::string(fault.name) + "\" |"), std::string::npos) << fault.name;
  }
}

TEST(Step, IsWrittenAsALineThatReadsBackAsTheSameStep) {
  for (const char* line : {kHost, kTap, kAdvance, R"({"do":"advance","seconds":1.0})"}) {
    EXPECT_EQ(readStep(line).text(), line);
  }
  EXPECT_EQ(readStep(R"( {"value":1, "do":"activate"} )").text(), R"({"do":"activate","value":1})");
}

TEST(Step, IsRefusedWithOnlyTheReason) {
  const auto reasonFor = [](std::string_view text, bool serverIsElsewhere) -> std::string {
    try {
      readStep(text, serverIsElsewhere);
      return "";
    } catch (const StepError& error) {
      return error.what();
    }
  };
  EXPECT_EQ(reasonFor(R"({"do":"setle"})", false), R"(unknown step "setle"; did you mean "settle"?)");
  EXPECT_EQ(reasonFor(R"({"do":"tapOK","alert":0})", false), R"("alert" must be a whole number, 1 or more)");
  EXPECT_EQ(reasonFor(R"({"do":"server","answers":[]})", false), "");
  EXPECT_NE(reasonFor(R"({"do":"server","answers":[]})", true), "");
}

TEST(Step, ForAnEmbeddedServerIsRefusedWithoutOne) {
  device::Device device;
  const std::unique_ptr<Host> host = makeHost(device);
  Player player(device, *host, nullptr);
  EXPECT_THROW(player.play(readStep(R"({"do":"server","answers":[{"status":200,"body":""}]})")), StepError);
}

}  // namespace
}  // namespace quorvantis::scenario
