#include "phone/key.h"

#include <fcntl.h>
#include <openssl/crypto.h>
#include <openssl/rand.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "server/socket.h"

namespace quorvantis::phone {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr std::size_t kLength = 32;

/// Empty when the user has none.
fs::path stateFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') return state;
  const char* home = std::getenv("HOME");
  return home != nullptr && *home == '/' ? fs::path(home) / ".local" / "state" : fs::path();
}

bool isKey(std::string_view text) {
  return text.size() == kLength && text.find_first_not_of(kAlphabet) == std::string_view::npos;
}

/// The key in the file, if the file is this user's and nobody else can read it.
std::string readKey(const fs::path& path) {
  const server::Socket file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  struct stat facts {};
  if (file.get() < 0 || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) return {};
  if (facts.st_uid != ::geteuid() || (facts.st_mode & (S_IRWXG | S_IRWXO)) != 0) return {};
  std::array<char, kLength> bytes{};
  if (::read(file.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return {};
  return {bytes.data(), bytes.size()};
}

/// With those above it, only for this user, whatever the process's umask.
void makeFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::exists(folder, error)) return;
  makeFolder(folder.parent_path());
  ::mkdir(folder.c_str(), S_IRWXU);
}

void writeKey(const fs::path& path, const std::string& key) {
  std::error_code error;
  makeFolder(path.parent_path());
  fs::remove(path, error);
  const server::Socket file(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (file.get() < 0) return;
  if (::write(file.get(), key.data(), key.size()) != static_cast<ssize_t>(key.size())) {
    fs::remove(path, error);
  }
}

}  // namespace

std::string newKey() {
  std::array<unsigned char, kLength> random{};
  if (RAND_bytes(random.data(), static_cast<int>(random.size())) != 1) {
    throw std::runtime_error("the system gives no random numbers");
  }
  std::string key;
  for (const unsigned char byte : random) key += kAlphabet[byte % kAlphabet.size()];
  return key;
}

std::string keyFor(std::uint16_t port) {
  const fs::path folder = stateFolder();
  if (folder.empty()) return newKey();
  const fs::path path = folder / "quorvantis-push" / ("phone-" + std::to_string(port) + ".key");
  std::string key = readKey(path);
  if (isKey(key)) return key;
  key = newKey();
  writeKey(path, key);
  return key;
}

bool isSameKey(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace quorvantis::phone
