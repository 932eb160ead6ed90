// The reasons for which Apple's service refuses a request, and one for which it documents none, in the order
// in which they are checked: who may not send learns nothing of device tokens, and nobody is told that a
// token is bad when only the sender's key is. Plain values.
#pragma once

#include <span>
#include <string_view>

namespace quorvantis::apns {

struct Examination;

struct Reason {
  int status;
  std::string_view name;
  /// What is wrong and how to fix it.
  std::string_view detail;
  /// Whether a request must be refused for it; null when the request alone can't cause it.
  bool (*holds)(const Examination&);
};

std::span<const Reason> reasons();

/// The first one of this name; null for an unknown name.
const Reason* findReason(std::string_view name);

}  // namespace quorvantis::apns
