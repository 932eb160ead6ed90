// Mutates JSON structurally, so that more inputs get past the reader and into the handling of the protocol's
// keys. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvantis::fuzz {

/// The text with one value in it replaced, added, moved or removed; text that is not JSON is unchanged.
std::string mutateJSON(const std::string& text, unsigned seed);

}  // namespace quorvantis::fuzz
