#include "report/source.h"

#include <glob.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quorvantis::report {

namespace {

namespace fs = std::filesystem;

bool isHidden(const fs::path& path) {
  return path.filename().string().starts_with('.');
}

bool isPayload(const fs::path& path) {
  return path.extension() == ".json" || path.extension() == ".apns";
}

void listFolder(const fs::path& folder, std::vector<std::string>& files) {
  std::error_code problem;
  std::vector<fs::path> entries;
  for (fs::directory_iterator entry(folder, problem), end; !problem && entry != end;
       entry.increment(problem)) {
    if (!isHidden(entry->path())) entries.push_back(entry->path());
  }
  // Said when it is read as a file.
  if (problem) files.push_back(folder.string());
  std::sort(entries.begin(), entries.end());
  for (const fs::path& path : entries) {
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(path, ignored))) {
      listFolder(path, files);
    } else if (isPayload(path) && !fs::is_directory(path, ignored)) {
      files.push_back(path.string());
    }
  }
}

void listMatches(const std::string& pattern, std::vector<std::string>& files) {
  glob_t found{};
  if (glob(pattern.c_str(), 0, nullptr, &found) == 0) {
    for (std::size_t i = 0; i < found.gl_pathc; ++i) files.emplace_back(found.gl_pathv[i]);
  }
  globfree(&found);
}

}  // namespace

std::vector<std::string> payloadFiles(const std::vector<std::string>& arguments) {
  std::vector<std::string> files;
  for (const std::string& argument : arguments) {
    const std::size_t before = files.size();
    std::error_code ignored;
    const fs::file_status status = fs::status(argument, ignored);
    if (fs::is_directory(status)) {
      listFolder(argument, files);
    } else if (!fs::exists(status) && argument.find_first_of("*?[") != std::string::npos) {
      listMatches(argument, files);
    }
    if (files.size() == before) files.push_back(argument);
  }
  return files;
}

console::Input readPayload(const std::string& file) {
  std::error_code ignored;
  if (file != "-" && fs::is_directory(file, ignored)) {
    return {{}, "the folder contains no .json or .apns file"};
  }
  return console::readInput(file, kLargestFile);
}

}  // namespace quorvantis::report
