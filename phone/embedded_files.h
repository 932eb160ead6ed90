// The page's files, embedded in the program. Any thread.
#pragma once

#include <span>
#include <string_view>

namespace quorvantis::phone {

struct EmbeddedFile {
  std::string_view path;  ///< as a browser requests it: "/page/state/fold.js"
  std::string_view bytes;
};

std::span<const EmbeddedFile> embeddedFiles();

}  // namespace quorvantis::phone
