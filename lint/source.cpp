#include "lint/source.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace quorvantis::lint {

namespace {

struct Closer {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};

PayloadSource readFrom(std::FILE* stream) {
  std::string bytes(kLargestFile + 1, '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream));
  if (std::ferror(stream) != 0) return {{}, std::strerror(errno)};
  if (bytes.size() > kLargestFile) return {{}, "larger than 4 MiB, which is no payload"};
  bytes.shrink_to_fit();
  return {std::move(bytes), {}};
}

}  // namespace

PayloadSource readPayloadSource(const std::string& file) {
  if (file == "-") return readFrom(stdin);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) return {{}, "it is a folder"};
  const std::unique_ptr<std::FILE, Closer> stream(std::fopen(file.c_str(), "rbe"));
  if (stream == nullptr) return {{}, std::strerror(errno)};
  return readFrom(stream.get());
}

}  // namespace quorvantis::lint
