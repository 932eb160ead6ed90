// HTTP/2 as the service speaks it: the bytes that a client sends become requests, and answers become bytes.
// Knows no socket. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "apns/request.h"

namespace quorvantis::apns {

class Http2Session {
 public:
  using Stream = std::int32_t;

  /// Who is told what the client does. Called from within `receive`, and may answer from there.
  class Owner {
   public:
    virtual ~Owner() = default;
    /// The first of its headers are there.
    virtual void began(Stream stream) = 0;
    /// The request is whole, or its body longer than anybody needs to read.
    virtual void requested(Stream stream, const Request& request) = 0;
    /// The stream is no more. Comes for every stream, and may come before it is answered.
    virtual void closed(Stream stream) = 0;
  };

  /// A client may have this many requests open at once.
  static constexpr std::uint32_t kMostStreams = 1000;

  explicit Http2Session(Owner& owner);
  ~Http2Session();
  Http2Session(const Http2Session&) = delete;
  Http2Session& operator=(const Http2Session&) = delete;

  /// False when this is no HTTP/2; then nothing more can be received, and what is to be sent says so.
  bool receive(std::string_view bytes);
  /// Takes some of what is to be sent; empty: nothing now.
  std::string takeOutput();

  /// Once for each request, and only until its stream is closed.
  void answer(Stream stream, const Answer& answer);
  /// The request as far as it came; null when it was handed over or there is none.
  [[nodiscard]] const Request* unfinished(Stream stream) const;
  /// Takes no new request, and tells the client why.
  void goAway(std::string_view reason);
  /// The same, and the request that was just handed over counts as new: the client may send it elsewhere.
  void goAwayBefore(Stream stream, std::string_view reason);
  /// Whether nothing is left to be received or sent.
  [[nodiscard]] bool isOver() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::apns
