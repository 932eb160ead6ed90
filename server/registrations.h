// The push server's registrations, in an SQLite database. All operations throw ServerError when the database
// fails.
//
// Threads: one at a time.
#pragma once

#include <memory>
#include <string>

#include "server/push_request.h"

namespace quorvantis::server {

class Registrations {
 public:
  /// Opens the file, or creates it, accessible only by this user; an empty name stands for memory. Throws
  /// ServerError, which names the file, when it can't be written or is not a database of this server.
  explicit Registrations(const std::string& file);
  ~Registrations();
  Registrations(const Registrations&) = delete;
  Registrations& operator=(const Registrations&) = delete;

  /// Adds or updates the token with its texts. An existing token keeps its registration time.
  void add(const PushRequest& request);
  /// Replaces the old token with the new one. Returns false, and changes nothing, when the old one is
  /// unknown.
  bool change(const PushRequest& request);

 private:
  struct Database;
  std::unique_ptr<Database> database_;
};

}  // namespace quorvantis::server
