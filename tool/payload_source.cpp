#include "tool/payload_source.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace quorvantis::tool {

namespace {

PayloadSource readFrom(std::istream& stream) {
  std::string bytes(kLargestFile + 1, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (stream.bad()) return {{}, std::string("reading failed: ") + std::strerror(errno)};
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  if (bytes.size() > kLargestFile) return {{}, "larger than 4 MiB, which is no payload"};
  bytes.shrink_to_fit();
  return {std::move(bytes), {}};
}

}  // namespace

PayloadSource readPayloadSource(const std::string& file) {
  if (file == "-") return readFrom(std::cin);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) return {{}, "it is a folder"};
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return {{}, std::strerror(errno)};
  return readFrom(stream);
}

}  // namespace quorvantis::tool
