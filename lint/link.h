// Whether a text is the whole address of something that can be opened, and how it is written so that every
// phone opens it. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::lint {

struct Link {
  /// What keeps the text from being an absolute address (RFC 3986); empty when it is one, if only after its
  /// characters were encoded. Then the rest means nothing.
  std::string problem;

  bool hasHostBeyondASCII = false;
  bool hasStrayPercent = false;        ///< one without two hexadecimal digits behind it
  bool hasEncoded = false;             ///< a "%" with its digits
  bool hasCharactersToEncode = false;  ///< outside such a host
  std::string encoded;  ///< the text with nothing left to encode; empty when there is no such form
};

Link judgeLink(std::string_view text);

}  // namespace quorvantis::lint
