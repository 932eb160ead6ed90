#include "server/authority_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "server/server_error.h"

namespace quorvantis::server {

void requireOurs(const std::string& path) {
  if (std::filesystem::is_symlink(path))
    throw ServerError(path + ": is a symbolic link, which is not followed; name the file itself");
  if (!std::filesystem::exists(path)) return;
  std::string text;
  if (std::filesystem::is_regular_file(path)) {
    std::ifstream file(path, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), {});
    if (file && (text.empty() || Authority::isCertificate(text))) return;
  }
  throw ServerError(
      path +
      ": the file there is not a certificate that this program has written, and is left alone; name "
      "another file");
}

void writeAuthority(const std::string& path, const Authority& authority) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << authority.certificate() << std::flush;
  if (!file)
    throw ServerError(path + ": the authority's certificate can't be written to this file; name another one");
}

}  // namespace quorvantis::server
