// The service's HTTP/2: turns the bytes that a client sends into requests, and answers into bytes.
// Independent of sockets. One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "apns/budget.h"
#include "apns/request.h"

namespace quorvantis::apns {

class Http2Session {
 public:
  using Stream = std::int32_t;

  /// Receives what the client does. Called from within `receive`, and may answer from there.
  class Owner {
   public:
    virtual ~Owner() = default;
    /// Its first headers have arrived.
    virtual void began(Stream stream) = 0;
    /// The request is complete, or its body is longer than needed.
    virtual void requested(Stream stream, const Request& request) = 0;
    /// The stream is closed. Called for every stream, possibly before it is answered.
    virtual void closed(Stream stream) = 0;
  };

  /// The number of requests that a client may have open at once.
  static constexpr std::uint32_t kMostStreams = 1000;

  /// What a client keeps the service from forgetting comes out of `pool`, beyond a little for each
  /// connection. Neither is owned.
  Http2Session(Owner& owner, MemoryPool& pool);
  ~Http2Session();
  Http2Session(const Http2Session&) = delete;
  Http2Session& operator=(const Http2Session&) = delete;

  /// False when this is not HTTP/2; then nothing more can be received, and the pending output says so. A
  /// client that sends without end what are no requests is sent away: the session is then over with its
  /// output.
  bool receive(std::string_view bytes);
  /// Takes some of the pending output; empty: none for now.
  std::string takeOutput();

  /// The client sends what is accepted: it may send as much at once as all its streams may carry, if the pool
  /// has that much to spare.
  void trust();
  /// Once for each request, and only until its stream is closed.
  void answer(Stream stream, const Answer& answer);
  /// The request as far as it has arrived; null when it was handed over or there is none.
  [[nodiscard]] const Request* unfinished(Stream stream) const;
  /// Accepts no new requests, and sends the client the reason.
  void goAway(std::string_view reason);
  /// The same, but the request that was just handed over counts as new: the client may send it elsewhere.
  void goAwayBefore(Stream stream, std::string_view reason);
  /// Whether nothing is left to be received or sent.
  [[nodiscard]] bool isOver() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::apns
