#include "console/input.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "base/c_handle.h"
#include "console/wording.h"

namespace quorvantis::console {

namespace {

Input readFrom(std::FILE* stream, std::size_t most) {
  Input input;
  std::array<char, 1 << 16> part;
  while (const std::size_t size = std::fread(part.data(), 1, part.size(), stream)) {
    input.bytes.append(part.data(), size);
    if (input.bytes.size() > most) return {{}, "it is larger than " + grouped(most >> 20) + " MiB"};
  }
  if (std::ferror(stream) != 0) return {{}, std::strerror(errno)};
  return input;
}

}  // namespace

Input readInput(const std::string& file, std::size_t most) {
  if (file == "-") return readFrom(stdin, most);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) return {{}, "it is a folder"};
  const base::CHandle<std::FILE, std::fclose> stream(std::fopen(file.c_str(), "rbe"));
  if (stream == nullptr) return {{}, std::strerror(errno)};
  return readFrom(stream.get(), most);
}

std::string nameOfInput(const std::string& file) {
  return file == "-" ? "standard input" : printable(file);
}

}  // namespace quorvantis::console
