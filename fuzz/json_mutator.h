// Mutates JSON as JSON, so that more inputs get past the reader, and into what the protocol's words lead to.
// Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorvantis::fuzz {

/// The text with one value in it replaced, added, moved or removed; nothing is done to what is no JSON.
std::string mutateJSON(const std::string& text, unsigned seed);

}  // namespace quorvantis::fuzz
