// Where payloads come from: files, and standard input as "-". Main thread.
#pragma once

#include <cstddef>
#include <string>

namespace quorvantis::lint {

/// Far more than Apple's service carries; what is larger is no payload, and is not read.
inline constexpr std::size_t kLargestFile = std::size_t{4} << 20;

struct PayloadSource {
  std::string bytes;
  std::string problem;  ///< why there are no bytes; empty when they were read
};

PayloadSource readPayloadSource(const std::string& file);

}  // namespace quorvantis::lint
