#include "tool/scratch_folder.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp is POSIX's

#include <cerrno>
#include <string>
#include <system_error>

namespace quorvantis::tool {

ScratchFolder::ScratchFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "quorvantis-push-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace quorvantis::tool
