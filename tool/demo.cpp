#include "tool/demo.h"

#include <algorithm>
#include <iostream>
#include <memory>

#include "scenario/host.h"
#include "scenario/player.h"
#include "scenario/push_service.h"
#include "tool/demo_scenes.h"
#include "tool/demo_story.h"
#include "tool/exit_status.h"

namespace quorvantis::tool {

namespace {

/// The moments of `expected` that did not happen in that order.
std::vector<std::string> missingFrom(const std::vector<std::string>& moments,
                                     const std::vector<std::string>& expected) {
  std::vector<std::string> missing;
  auto from = moments.begin();
  for (const std::string& moment : expected) {
    const auto found = std::find(from, moments.end(), moment);
    if (found == moments.end()) {
      missing.push_back(moment);
    } else {
      from = std::next(found);
    }
  }
  return missing;
}

std::vector<std::string> presentIn(const std::vector<std::string>& moments,
                                   const std::vector<std::string>& unwanted) {
  std::vector<std::string> present;
  std::copy_if(unwanted.begin(), unwanted.end(), std::back_inserter(present), [&](const std::string& moment) {
    return std::find(moments.begin(), moments.end(), moment) != moments.end();
  });
  return present;
}

class Demo {
 public:
  explicit Demo(const console::Terminal& terminal)
      : service_(device_, scenario::DefaultAnswer::fromRegistrations,
                 [this](const server::Answer& answer) {
                   device_.record.add(answeredEvent(answer.status, answer.body));
                 }),
        host_(scenario::makeHost(device_)),
        player_(device_, *host_, &service_),
        story_(terminal, device_) {}

  /// Whether everything went as expected.
  bool play() {
    bool allWell = true;
    std::size_t number = 0;
    for (const Act& act : demoActs()) {
      story_.act(act.title);
      for (const Scene& scene : act.scenes) allWell = play(scene, ++number) && allWell;
      story_.settings(device_.settings.values());
      std::cout << '\n';
    }
    return allWell;
  }

 private:
  bool play(const Scene& scene, std::size_t number) {
    story_.scene(number, scene.title, scene.about);
    std::vector<std::string> moments;
    for (const scenario::Step& step : scenario::readScenario(scene.steps, false)) {
      story_.step(step);
      player_.play(step);
      const std::vector<device::Event> events = device_.record.take();
      story_.events(events);
      std::transform(events.begin(), events.end(), std::back_inserter(moments), momentOf);
    }
    const auto missing = missingFrom(moments, scene.mustSee);
    const auto unexpected = presentIn(moments, scene.mustNotSee);
    story_.verdict(missing, unexpected);
    return missing.empty() && unexpected.empty();
  }

  device::Device device_;
  scenario::PushService service_;
  std::unique_ptr<scenario::Host> host_;
  scenario::Player player_;
  Story story_;
};

}  // namespace

int demo() {
  const console::Terminal terminal = console::Terminal::ofStandardOutput();
  for (const std::string& line :
       console::wrap("One simulated phone, and a push server on this machine that it reaches over real "
                     "HTTPS. Host is an "
                     "application that links the library, Push is the library, System is the phone's "
                     "operating system, Maker is the service that registers users and devices.",
                     terminal.width())) {
    std::cout << line << '\n';
  }
  std::cout << '\n';
  const bool allWell = Demo(terminal).play();
  std::cout << terminal.styled(allWell ? console::Style::green : console::Style::red,
                               allWell ? "Everything went as expected." : "Something went wrong: see above.")
            << std::endl;
  return allWell ? 0 : kFailed;
}

}  // namespace quorvantis::tool
