// Streams a phone's lines to readers as they come, as server-sent events (HTML's standard, section 9.2). A
// slow reader holds up only its own connection. Threads: any.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>

#include "phone/transcript.h"
#include "server/http.h"

namespace quorvantis::phone {

class Streams {
 public:
  explicit Streams(const Transcript& transcript) : transcript_(transcript) {}

  /// The answer with the lines from the number `from` on, and those that follow. Nothing when there are
  /// already too many readers.
  std::optional<server::HttpResponse> open(std::size_t from);

 private:
  const Transcript& transcript_;
  const std::shared_ptr<std::atomic<int>> readers_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace quorvantis::phone
