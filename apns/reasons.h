// The reasons that Apple's service gives when it does not take a request, in its documentation's order, which
// is the order in which they are looked for. Plain values.
#pragma once

#include <span>
#include <string_view>

namespace quorvantis::apns {

struct Examination;

struct Reason {
  int status;
  std::string_view name;
  /// What is wrong and how to mend it, in words.
  std::string_view detail;
  /// Whether a request is to be refused for it; null where no request by itself causes it.
  bool (*holds)(const Examination&);
};

std::span<const Reason> reasons();

/// Null for a name that is none.
const Reason* findReason(std::string_view name);

}  // namespace quorvantis::apns
