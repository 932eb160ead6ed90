// The device's model of the maker's transport: requests wait their turn in the main queue, are posted one
// after the other, and their answers are kept by the requests' identities.
//
// Threads: driven from one thread; cancel() and answers() may be called from any. `finished` runs on the
// thread that settles the device's queue. A request whose Connexion is gone at its turn is never posted.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "device/device.h"

namespace quorvantis::device {

class Connexion {
 public:
  explicit Connexion(Device& device);
  ~Connexion();
  Connexion(const Connexion&) = delete;
  Connexion& operator=(const Connexion&) = delete;

  /// Called once for each request when it ends. May be empty.
  void setFinished(std::function<void(const std::string& identity)> finished);

  void setEncryption(bool encryption);
  void setHashKey(std::string key);
  void setConnexionValue(std::optional<std::string> value);
  void setConnexionUrl(std::optional<std::string> url);

  /// Queues a request with the current value, URL and key. Never blocks.
  void send(std::optional<std::string> parameters);

  /// Cancels the oldest request that has not ended.
  void cancel();

  /// The answers' bytes by identity.
  [[nodiscard]] std::map<std::string, std::string> answers() const;

 private:
  struct Pending;
  struct State;

  Device& device_;
  std::shared_ptr<State> state_;
};

}  // namespace quorvantis::device
