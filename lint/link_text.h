// Whether a text is the whole address of something that can be opened. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::lint {

/// What keeps the text from being an absolute address (RFC 3986); empty when it is one. Characters that would
/// have to be percent-encoded are let pass.
std::string problemOfLink(std::string_view text);

}  // namespace quorvantis::lint
