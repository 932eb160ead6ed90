// A provider's request as received, and the answer to it. Plain values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::apns {

/// The headers that the service reads.
enum class Header { authorization, topic, pushType, priority, expiration, collapseId, id };

inline constexpr std::size_t kHeaders = 7;

class Request {
 public:
  /// The limit for every kind of payload.
  static constexpr std::size_t kMostPayloadBytes = 5120;
  /// The limit for all headers, as HTTP/2 counts them: names, values and 32 bytes for each.
  static constexpr std::size_t kMostHeaderBytes = std::size_t{32} * 1024;

  /// Adds a header, such as ":method" or ":path", and returns how many bytes of it are kept: none of those
  /// that the service does not read, and of the others one byte more than the longest valid value has.
  std::size_t addHeader(std::string_view name, std::string_view value);
  /// Adds a piece of the body, and keeps no more than the limit.
  void addBody(std::string_view bytes);

  /// Nothing when it is missing; the first one when there are several. Only the beginning of a value that is
  /// too long to be valid.
  [[nodiscard]] const std::optional<std::string>& header(Header header) const {
    return headers_[static_cast<std::size_t>(header)];
  }
  [[nodiscard]] const std::string& method() const { return method_; }
  [[nodiscard]] const std::string& path() const { return path_; }
  /// Only the beginning when it is longer than the limit.
  [[nodiscard]] const std::string& body() const { return body_; }
  [[nodiscard]] std::size_t bodyBytes() const { return bodyBytes_; }
  [[nodiscard]] bool repeatsHeader() const { return repeatsHeader_; }
  [[nodiscard]] std::size_t headerBytes() const { return headerBytes_; }
  [[nodiscard]] bool hasTooManyHeaders() const { return headerBytes_ > kMostHeaderBytes; }

 private:
  std::string method_;
  std::string path_;
  std::array<std::optional<std::string>, kHeaders> headers_;
  std::string body_;
  std::size_t bodyBytes_ = 0;
  std::size_t headerBytes_ = 0;
  bool repeatsHeader_ = false;
};

/// The answer to a provider.
struct Answer {
  int status = 200;
  std::string reason = {};                     ///< empty with 200
  std::optional<std::int64_t> timestamp = {};  ///< with 410, in milliseconds since 1970
  std::string id = {};                         ///< `apns-id`
};

/// The JSON text of an error's body.
std::string bodyOf(const Answer& answer);

}  // namespace quorvantis::apns
