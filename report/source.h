// Where payloads come from: files, folders of them, patterns, and standard input as "-". Main thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "console/input.h"

namespace quorvantis::report {

/// Far more than Apple's service accepts; larger files are not read.
inline constexpr std::size_t kLargestFile = std::size_t{4} << 20;

/// The files for each argument: for a folder all .json and .apns files in it at any depth except hidden ones,
/// sorted; for a pattern (*, ?, […]) that is not itself a file, the matching files, sorted. An argument
/// without files is kept, so that readPayload reports why.
std::vector<std::string> payloadFiles(const std::vector<std::string>& arguments);

console::Input readPayload(const std::string& file);

}  // namespace quorvantis::report
