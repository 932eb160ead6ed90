// Checks whether a text is an absolute address, and finds the form that every phone opens. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::lint {

struct Link {
  /// Why the text is not an absolute address (RFC 3986); then the rest is undefined. Empty when it is one, at
  /// least after encoding its characters.
  std::string problem;

  bool hasHostBeyondASCII = false;
  bool hasStrayPercent = false;        ///< one that is not followed by two hexadecimal digits
  bool hasEncoded = false;             ///< a "%" with its digits
  bool hasCharactersToEncode = false;  ///< outside such a host
  std::string encoded;                 ///< the fully encoded text; empty when there is no such form
};

Link linkFrom(std::string_view text);

}  // namespace quorvantis::lint
