// Where payloads come from: files, folders of them, patterns, and standard input as "-". Main thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "console/input.h"

namespace quorvantis::lint {

/// Far more than Apple's service carries; what is larger is no payload, and is not read.
inline constexpr std::size_t kLargestFile = std::size_t{4} << 20;

/// The files that are meant, argument by argument: of a folder all .json and .apns files in it at any depth,
/// sorted, hidden ones aside; of a pattern (*, ?, […]) that names no file itself what it matches, sorted.
/// What leads to no file stays, for readPayload to say why.
std::vector<std::string> payloadFiles(const std::vector<std::string>& arguments);

console::Input readPayload(const std::string& file);

}  // namespace quorvantis::lint
