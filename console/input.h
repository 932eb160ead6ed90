// Reads a command's input: a file, or standard input as "-". Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvantis::console {

struct Input {
  std::string bytes;
  std::string problem;  ///< why it can't be read; empty on success
};

/// Reads the input, unless it has more than `most` bytes (some mebibytes).
Input readInput(const std::string& file, std::size_t most = SIZE_MAX);

/// The input's name for messages.
std::string nameOfInput(const std::string& file);

}  // namespace quorvantis::console
