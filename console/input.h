// What a command is given to read: a file, or standard input as "-". Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvantis::console {

struct Input {
  std::string bytes;
  std::string problem;  ///< why there are no bytes; empty when they were read
};

/// Reads all of it, but no more than is needed to see that it is too large: larger than `most` bytes, some
/// mebibytes.
Input readInput(const std::string& file, std::size_t most = SIZE_MAX);

/// The input as messages name it.
std::string nameOfInput(const std::string& file);

}  // namespace quorvantis::console
