// A phone in interactive use: the simulated device with the library on it, and what the system does around
// the application, which scenarios don't have: the permission prompt, the list of notifications, airplane
// mode, an application that has ended. All of its rules are here. What happens is written to the transcript,
// line by line:
//
//   {"do":…}     a step, as in a scenario            {"event":…}   what then happened, as `run` prints it
//   {"phone":…}  an act that affects the phone       {"screen":…}  what the system then shows by itself
//
// Threads: one, which is the library's main thread; the transcript may be read on any.
#pragma once

#include <atomic>
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

/// The phone's state does not allow the request; what() says why, and what to do instead.
class NotNow : public scenario::StepError {
 public:
  using StepError::StepError;
};

/// The transcript holds all that it may; what() says what helps.
class Full : public scenario::StepError {
 public:
  using StepError::StepError;
};

struct PhoneOptions {
  device::Build build = device::Build::device;
  std::string settings =
      {};  ///< the file that keeps the phone's settings; empty: they are lost with the phone
  std::optional<scenario::OutsideServer> server = {};  ///< nothing: an embedded one
  std::string version = {};                            ///< the tool's, for saved scenarios
};

class Phone {
 public:
  /// A fresh phone, to which these lines are done, as by begin(); `transcript` outlives it. Throws
  /// device::SettingsError, and what begin() throws.
  Phone(PhoneOptions options, Transcript& transcript, const std::vector<Line>& lines = {});
  ~Phone();
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  /// Throws NotNow, Full, or scenario::StepError for a step that turns out impossible; the phone and the
  /// transcript are then unchanged.
  void play(const Line& line);

  /// Begins again with a fresh phone, which keeps nothing but the settings' file, or not even that when it
  /// has become unusable, and does these lines to it: as `run` does, without a prompt, and going on where an
  /// application that has ended could not. Throws scenario::StepError for a step that turns out impossible;
  /// those before it were played.
  void begin(const std::vector<Line>& lines);

  /// A remote notification that comes by itself, and waits while the prompt is on the screen.
  void receive(Arrive notification);

  /// Adds a line to the transcript, unless it is full, for something that happened outside the phone.
  void record(const json::Dictionary& line);

  /// What was done since the phone was started afresh, as a scenario.
  [[nodiscard]] SavedScenario::Text scenario() const { return saved_.text(); }

  /// How many notifications wait for the permission prompt's answer; nothing: there is no prompt. Any thread.
  [[nodiscard]] std::optional<std::size_t> waitingForAnswer() const;
  /// Any thread.
  [[nodiscard]] bool isFull() const { return transcript_.isFull(); }

  /// May be called on any thread.
  [[nodiscard]] const Tokens& tokens() const { return tokens_; }
  /// The device token in hexadecimal digits; nothing: it has none.
  [[nodiscard]] std::optional<std::string> token() const;
  [[nodiscard]] const std::string& systemVersion() const;
  /// What a fresh phone will have stored at its start.
  [[nodiscard]] json::Dictionary keptValues() const;
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
  void perform(const Tap& act);
  void perform(const Uninstall& act);
  void perform(const Install& act);
  void performAll(const json::Array& steps);
  void makeReadyFor(const scenario::Step& step);
  void deliverWaiting();
  void applyAirplaneMode();
  void noteRegistration(const scenario::Step& step);
  void noteCode(const scenario::Step& step);
  [[nodiscard]] std::optional<std::string> registeredToken() const;

  // What the system does by itself.
  void reach(const Arrive& notification);
  void notify(const json::Dictionary& userInfo);
  void present(std::int64_t options, const json::Dictionary& userInfo);
  void list(const char* how, const json::Dictionary& userInfo);
  void setBadge(const json::Dictionary& userInfo);
  void endIfRaised();
  void end(json::Value selector);
  [[nodiscard]] bool mayNotify() const;

  void recordEvent(const device::Event& event, const json::Dictionary* userInfo);
  void reportOversize(const json::Dictionary& userInfo);
  void reportSettingsFailure();
  SharedText show(const char* what, json::Dictionary more = {});
  void record(const Act& act);
  SharedText add(std::string line);
  void flush();
  void checkRoom() const;
  void warnWhenNearlyFull();

  const PhoneOptions options_;
  Transcript& transcript_;
  const std::string start_;  // distinguishes this process's phones from those of another
  std::size_t phones_ = 0;

  std::unique_ptr<World> world_;
  std::vector<SharedText> unpublished_;  // lines that are not yet in the transcript
  SavedScenario saved_;
  Tokens tokens_;

  bool isReplaying_ = false;
  bool hasWarned_ = false;                      // that the transcript is nearly full
  std::atomic<std::size_t> waiting_ = 0;        // for the prompt's answer
  std::atomic<bool> isPromptOnScreen_ = false;  // as isPrompting(), for other threads
};

}  // namespace quorvantis::phone
