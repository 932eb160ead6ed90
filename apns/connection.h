// One client's connection, from its handshake to its end. Runs on the connection's thread.
#pragma once

#include <chrono>
#include <map>

#include "apns/faults.h"
#include "apns/http2_session.h"
#include "apns/judgement.h"
#include "apns/phone.h"
#include "server/connection.h"

namespace quorvantis::apns {

/// Time limits.
struct Patience {
  std::chrono::milliseconds handshake = std::chrono::seconds(10);
  std::chrono::milliseconds request = std::chrono::seconds(30);  ///< from its headers to its end
  std::chrono::milliseconds answer = std::chrono::seconds(30);   ///< until the client has read it
  std::chrono::milliseconds idle = std::chrono::minutes(10);     ///< with no open request
};

class Connection final : private Http2Session::Owner {
 public:
  /// References are not owned.
  Connection(server::Connection& wire, const Rules& rules, const Patience& patience, Phone& phone,
             FaultQueue& faults, MemoryPool& pool);

  /// Returns when the connection has ended.
  void serve();

 private:
  using Clock = std::chrono::steady_clock;
  using Stream = Http2Session::Stream;

  void began(Stream stream) override;
  void requested(Stream stream, const Request& request) override;
  void closed(Stream stream) override;

  void converse();
  bool sendAll();
  void act(Stream stream, const Request& request, const Fault& fault);
  Judgement decide(const Request& request);
  void give(const Judgement& judgement);
  void answerWhatIsDue(Clock::time_point now);
  void refuseUnfinished(Clock::time_point begunBefore, std::string_view reason);
  [[nodiscard]] Clock::time_point nextDeadline() const;

  server::Connection& wire_;
  const Rules& rules_;
  const Patience& patience_;
  Phone& phone_;
  FaultQueue& faults_;
  Provider provider_;
  std::map<Stream, Clock::time_point> unfinished_;  ///< requests that are still being read, and since when
  std::multimap<Clock::time_point, std::pair<Stream, Answer>> delayed_;
  Clock::time_point lastHeard_ = Clock::now();
  bool hasArrivals_ = false;
  bool isCut_ = false;
  Http2Session session_;  // goes first
};

}  // namespace quorvantis::apns
