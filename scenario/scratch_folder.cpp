#include "scenario/scratch_folder.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp is POSIX's

#include <cerrno>
#include <string>
#include <system_error>

namespace quorvantis::scenario {

ScratchFolder::ScratchFolder() {
  std::error_code problem;
  std::string name = (std::filesystem::temp_directory_path(problem) / "quorvantis-push-XXXXXX").string();
  if (!problem && mkdtemp(name.data()) == nullptr) problem.assign(errno, std::generic_category());
  if (problem) {
    throw std::system_error(problem, "no folder can be made for temporary files; set TMPDIR to one that can");
  }
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace quorvantis::scenario
