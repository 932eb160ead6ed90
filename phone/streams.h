// Streams a phone's lines to readers as they come, as server-sent events (HTML's standard, section 9.2). A
// slow reader holds up only its own connection. Threads: any.
#pragma once

#include <httplib.h>

#include <cstddef>
#include <memory>

#include "phone/transcript.h"

namespace quorvantis::phone {

class Streams {
 public:
  explicit Streams(const Transcript& transcript) : transcript_(transcript) {}

  /// Answers with the lines from the number `from` on, and those that follow. False when there are already
  /// too many readers.
  bool open(std::size_t from, httplib::Response& response);

 private:
  const Transcript& transcript_;
  const std::shared_ptr<int> readers_ = std::make_shared<int>();  // each holds a share
};

}  // namespace quorvantis::phone
