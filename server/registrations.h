// Who is registered with the push server, in a SQLite database. Its calls throw ServerError when the database
// fails.
//
// Threads: one at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "server/push_request.h"

namespace quorvantis::server {

struct Registration {
  std::string token;
  std::string app, device, library, geo;  ///< the JSON texts, as they came last
  std::int64_t registeredAt = 0;          ///< seconds since 1970; of the first token, if it was changed since
  std::int64_t updatedAt = 0;
};

class Registrations {
 public:
  /// Opens the file, or makes it; memory for an empty name. Throws ServerError, which names the file.
  explicit Registrations(const std::string& file);
  ~Registrations();
  Registrations(const Registrations&) = delete;
  Registrations& operator=(const Registrations&) = delete;

  /// Enters the token with its texts, or renews them.
  void add(const PushRequest& request);
  /// Puts the new token in the place of the old one. False, and nothing is changed, when the old one is
  /// unknown.
  bool change(const PushRequest& request);
  [[nodiscard]] std::optional<Registration> find(const std::string& token) const;

 private:
  struct Database;
  std::unique_ptr<Database> database_;
};

}  // namespace quorvantis::server
