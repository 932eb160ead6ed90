// What the user sees on top of the application: alerts, each in its own window. Main thread.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "device/record.h"

namespace quorvantis::device {

/// A place on the screen, in points.
struct Frame {
  double x = 0, y = 0, width = 0, height = 0;

  friend bool operator==(const Frame&, const Frame&) = default;
};

inline constexpr Frame kScreenBounds{0, 0, 390, 844};

struct Alert {
  json::Value title, message;  ///< null: none
  std::vector<std::string> buttons;
  double windowLevel = 0;
  bool fillsScreen = false;  ///< whether its window does
  bool animated = false;
  std::function<void()> onTap;  ///< the first button's; destroyed after the alert was dismissed
};

/// The window level of the system's own alerts.
inline constexpr double kAlertWindowLevel = 2000;

class Screen {
 public:
  explicit Screen(Record& record) : record_(record) {}

  /// Presents an alert and returns its number: 1 for the first one in this launch.
  int present(Alert alert);

  /// The user taps the first button: the alert is dismissed and the button's handler runs. False when no such
  /// alert is on screen.
  bool tap(int number);

  /// Hides the alert's window.
  void hide(int number);

  /// The alert with that number, nullptr when it is not on screen. Valid until the next call.
  [[nodiscard]] const Alert* find(int number) const;

  /// The numbers of the alerts on screen.
  [[nodiscard]] std::vector<int> alerts() const;

  /// The process has ended: nothing is on screen, and numbering starts over.
  void clear();

 private:
  Record& record_;
  std::map<int, Alert> alerts_;
  int shown_ = 0;
};

}  // namespace quorvantis::device
