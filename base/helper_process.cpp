#include "base/helper_process.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "base/descriptors.h"

namespace quorvantis::base {

namespace {

constexpr char kAnswered = 'a';
constexpr char kFailed = 'f';

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// Not one of the three standard descriptors, which may be closed.
int movedUp(int descriptor) {
  constexpr int kFirstFree = 3;
  const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, kFirstFree);
  close(descriptor);
  if (moved < 0) fail("no descriptor is left for a helper process");
  return moved;
}

bool writeAll(int descriptor, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = sendTo(descriptor, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

bool readAll(int descriptor, char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t got = ::recv(descriptor, bytes, size, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    bytes += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

/// A message is its size, then its bytes.
bool writeMessage(int descriptor, const std::string& message) {
  const std::uint64_t size = message.size();
  std::array<char, sizeof size> header;
  std::memcpy(header.data(), &size, sizeof size);
  return writeAll(descriptor, header.data(), header.size()) &&
         writeAll(descriptor, message.data(), message.size());
}

bool readMessage(int descriptor, std::string& message) {
  std::uint64_t size = 0;
  std::array<char, sizeof size> header;
  if (!readAll(descriptor, header.data(), header.size())) return false;
  std::memcpy(&size, header.data(), sizeof size);
  message.resize(size);
  return readAll(descriptor, message.data(), message.size());
}

[[noreturn]] void serve(int descriptor, const HelperProcess::Answer& answer) {
  for (std::string request; readMessage(descriptor, request);) {
    std::string reply;
    try {
      reply = kAnswered + answer(request);
    } catch (const std::exception& error) {
      reply = kFailed + std::string(error.what());
    }
    if (!writeMessage(descriptor, reply)) break;
  }
  _exit(0);  // the objects in this copy belong to the other process
}

}  // namespace

HelperProcess::HelperProcess(const Answer& answer) {
  const Ends ends = openSocketPair();
  if (ends[0] < 0) fail("no helper process can be reached");
  descriptor_ = movedUp(ends[0]);
  const int other = movedUp(ends[1]);
  std::cout.flush();
  process_ = fork();
  if (process_ == 0) {
    close(descriptor_);
    serve(other, answer);
  }
  const int problem = errno;
  close(other);
  if (process_ > 0) return;
  close(descriptor_);
  errno = problem;
  fail("no helper process can be started");
}

HelperProcess::~HelperProcess() {
  close(descriptor_);
  // It may still be working on an answer that nobody waits for.
  kill(process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
}

void HelperProcess::send(const std::string& request) {
  if (!writeMessage(descriptor_, request)) throw std::runtime_error("a helper process has ended");
}

std::string HelperProcess::receive() {
  std::string reply;
  if (!readMessage(descriptor_, reply) || reply.empty())
    throw std::runtime_error("a helper process has ended");
  const bool isAnswer = reply.front() == kAnswered;
  reply.erase(0, 1);
  if (!isAnswer) throw std::runtime_error(reply);
  return reply;
}

}  // namespace quorvantis::base
