// A phone that people and programs use while it lives: the simulated device with the library on it, and
// around the application what no scenario expresses, since the system does it by itself: the permission
// prompt that waits for a person, the list of notifications, airplane mode, an application that has ended.
// All rules of these are here. What happens is told line by line:
//
//   {"do":…}     a step, as in a scenario            {"event":…}   what then happened, as `run` prints it
//   {"phone":…}  an act upon the phone               {"screen":…}  what the system then shows by itself
//
// Threads: one, which is the library's main thread; what it tells is read by any.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/device.h"
#include "phone/line.h"
#include "phone/saved_scenario.h"
#include "phone/tokens.h"
#include "phone/transcript.h"
#include "scenario/outside_server.h"

namespace quorvantis::phone {

/// What is asked can't be done to the phone as it is; what() says why, and what can.
class NotNow : public scenario::StepError {
 public:
  using StepError::StepError;
};

struct PhoneOptions {
  device::Build build = device::Build::device;
  std::string settings = {};  ///< the file that keeps the phone's settings; empty: they go with the phone
  std::optional<scenario::OutsideServer> server = {};  ///< nothing: one of its own
  std::string version = {};                            ///< of the tool, for what is saved
};

class Phone {
 public:
  /// A fresh phone, to which these lines are done, as by begin(); `transcript` outlives it. Throws
  /// device::SettingsError, and what begin() throws.
  Phone(PhoneOptions options, Transcript& transcript, const std::vector<Line>& lines = {});
  ~Phone();
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  /// Throws NotNow, or scenario::StepError for a step that turns out impossible; nothing is then done or
  /// told.
  void play(const Line& line);

  /// Begins again with a fresh phone, which keeps nothing but the settings' file, or not even that when it
  /// has become unusable, and does these lines to it: as `run` does, without a prompt, and going on where an
  /// application that has ended could not. Throws scenario::StepError for a step that turns out impossible;
  /// those before it were played.
  void begin(const std::vector<Line>& lines);

  /// A remote notification that comes by itself, and waits while the prompt is on the screen.
  void receive(Arrive notification);

  /// Tells of something that did not come from a phone.
  void tell(const json::Dictionary& line);

  /// What was done since the phone was fresh, as a scenario.
  [[nodiscard]] std::string scenario() const { return saved_.text(); }

  /// On any thread.
  [[nodiscard]] const Tokens& tokens() const { return tokens_; }
  /// The device token in hexadecimal digits; nothing: it has none.
  [[nodiscard]] std::optional<std::string> token() const;
  [[nodiscard]] const std::string& systemVersion() const;
  /// Whether the permission prompt waits for an answer.
  [[nodiscard]] bool isPrompting() const;
  [[nodiscard]] bool serverIsElsewhere() const { return options_.server.has_value(); }

 private:
  struct World;  // all that a fresh phone has anew

  void prepare();
  void makeWorld();
  void goLive();
  void perform(const Line& line);
  void perform(const scenario::Step& step);
  void perform(const Act& act);
  void perform(const End& act);
  void perform(const AirplaneMode& act);
  void perform(const Arrive& act);
  void perform(const Remove& act);
  void makeReadyFor(const scenario::Step& step);
  void deliverWaiting();
  void applyAirplaneMode();

  // What the system does by itself.
  void reach(const Arrive& notification);
  void notify(const json::Dictionary& userInfo);
  void present(std::int64_t options, const json::Dictionary& userInfo);
  void list(const char* how, const json::Dictionary& userInfo);
  void setBadge(const json::Dictionary& userInfo);
  void endIfRaised();
  void end(json::Value selector);
  [[nodiscard]] bool mayNotify() const;

  void tellEvent(const device::Event& event, const json::Dictionary* userInfo);
  void tellOfSize(const json::Dictionary& userInfo);
  void tellOfSettings();
  void show(const char* what, json::Dictionary more = {});
  void record(const Act& act);
  void flush();

  const PhoneOptions options_;
  Transcript& transcript_;
  const std::string start_;  // tells this program's phones from those of another start
  std::size_t phones_ = 0;

  std::unique_ptr<World> world_;
  std::vector<std::string> told_;  // and not yet in the transcript
  SavedScenario saved_;
  Tokens tokens_;

  bool isReplaying_ = false;
};

}  // namespace quorvantis::phone
