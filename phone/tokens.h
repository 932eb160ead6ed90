// The device tokens that a phone has and had, readable on other threads than the phone's. Threads: any.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::phone {

class Tokens {
 public:
  struct Known {
    std::optional<std::int64_t> invalidSince;  ///< milliseconds since 1970; nothing while it is valid
  };

  /// The phone was started afresh, or now has another token (nothing: none).
  void begin(const std::optional<std::string>& token);
  void change(const std::optional<std::string>& token);

  /// Nothing when the phone never had it.
  [[nodiscard]] std::optional<Known> find(std::string_view token) const;

 private:
  mutable std::mutex mutex_;
  std::optional<std::string> current_;
  std::map<std::string, std::int64_t, std::less<>> earlier_;
};

}  // namespace quorvantis::phone
