// Who is registered with the push server, in a SQLite database. Its calls throw ServerError when the database
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
  /// Opens the file, or makes it, for this user alone; memory for an empty name. Throws ServerError, which
  /// names the file, when it can't be written, or is no database of this server's.
  explicit Registrations(const std::string& file);
  ~Registrations();
  Registrations(const Registrations&) = delete;
  Registrations& operator=(const Registrations&) = delete;

  /// Enters the token with its texts, or renews them. When it was registered first is kept.
  void add(const PushRequest& request);
  /// Puts the new token in the place of the old one. False, and nothing is changed, when the old one is
  /// unknown.
  bool change(const PushRequest& request);

 private:
  struct Database;
  std::unique_ptr<Database> database_;
};

}  // namespace quorvantis::server
