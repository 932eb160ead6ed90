// Standard input and output of a command that runs until it is stopped: neither a reader that has gone to
// sleep nor an input without an end keeps it from ending.
//
// Threads: any; one waits for the input's end and one writes, at a time.
#pragma once

#include <string_view>

#include "server/socket.h"

namespace quorvantis::tool {

class StandardStreams {
 public:
  /// From here on, writing to a pipe that nobody reads fails in place of ending the process by SIGPIPE.
  /// Throws server::ServerError.
  StandardStreams();

  /// Reads and discards standard input until it ends. Returns whether it has: false after stop().
  bool awaitEndOfInput();

  /// Writes to standard output. False when nobody reads it any more, when it can't be written, or when its
  /// reader has taken nothing for a second after stop().
  bool write(std::string_view text);

  /// Ends the waits of the others, soon.
  void stop();

 private:
  /// Whether standard output takes a few bytes at once.
  bool isOutputReady();

  server::Pipe stop_;  // readable once it is stopped
};

}  // namespace quorvantis::tool
