// A new folder for files that last as long as this object.
#pragma once

#include <filesystem>

namespace quorvantis::scenario {

class ScratchFolder {
 public:
  /// Throws std::system_error.
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace quorvantis::scenario
