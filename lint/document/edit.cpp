#include "lint/document/edit.h"

#include "base/utf8.h"

namespace quorvantis::lint {

std::size_t utf16Length(std::string_view text, std::size_t bytes) {
  std::size_t units = 0;
  for (text = text.substr(0, bytes); !text.empty();) {
    const auto character = base::takeCharacter(text);
    units += character > U'\uFFFF' ? 2 : 1;
  }
  return units;
}

}  // namespace quorvantis::lint
