// Prints what happened on the device as a timeline: who did what to whom. Main thread.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "console/terminal.h"
#include "device/device.h"
#include "scenario/scenario.h"

namespace quorvantis::tool {

/// An event in a few words: its name and what distinguishes it ("callback
/// onGetToken:", "received pushlibRegistrarToken", "stored tokenMovil", "opened https://…", "badge 3",
/// "raised objectForKey:").
std::string momentOf(const device::Event& event);

/// The event that the demo adds to the record for each answer of the push server.
device::Event answeredEvent(int status, const std::string& body);

class Story {
 public:
  Story(const console::Terminal& terminal, const device::Device& device)
      : terminal_(terminal), device_(device) {}

  void act(const std::string& title) const;
  void scene(std::size_t number, const std::string& title, const std::string& about) const;
  /// What a person or the system does.
  void step(const scenario::Step& step) const;
  /// What came of it.
  void events(const std::vector<device::Event>& events) const;
  void settings(const json::Dictionary& values) const;
  void verdict(const std::vector<std::string>& missing, const std::vector<std::string>& unexpected) const;

 private:
  void line(std::string_view from, std::string_view to, const std::string& text) const;
  void details(const std::vector<std::pair<std::string, std::string>>& rows) const;
  void note(console::Style style, const std::string& text) const;
  void event(const device::Event& event) const;
  void notification(const std::string& arrives, const std::string& userInfo) const;
  void request(const std::string& body) const;
  void alert(const device::Event& event) const;
  void stored(const std::vector<std::string>& keys) const;

  const console::Terminal& terminal_;
  const device::Device& device_;
};

}  // namespace quorvantis::tool
