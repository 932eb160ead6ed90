// A phone's HTTP interface, as docs/phone.md describes it: from a request to its answer, without the
// connection. Threads: any, several at a time; the phone itself is used on the worker's thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "json/value.h"
#include "phone/phone.h"
#include "phone/rehearsal.h"
#include "phone/streams.h"
#include "phone/transcript.h"
#include "phone/worker.h"
#include "report/lint_service.h"
#include "server/http_server.h"

namespace quorvantis::phone {

/// What the interface needs besides the phone.
struct ApiOptions {
  json::Dictionary about;      ///< the constant part of "status"
  std::function<void()> stop;  ///< starts to shut the program down, and returns
  /// Orders faults of the stand-in for Apple's service; returns what is wrong with the order, empty when
  /// nothing is. Null: there is no stand-in.
  std::function<std::string(const json::Value& order)> orderFaults;
};

class Api {
 public:
  /// References are not owned.
  Api(Phone& phone, Worker& worker, const Transcript& transcript, report::LintService& linter,
      Rehearsal& rehearsal, ApiOptions options);

  /// All of its requests, whose paths begin with "/api/". Their handlers refer to this object.
  [[nodiscard]] std::vector<server::HttpRoute> routes();

 private:
  using Request = server::HttpRequest;
  using Response = server::HttpResponse;

  Response playLines(const Request& request);
  Response beginAnew(const Request& request);
  Response lint(const Request& request);
  Response orderFaults(const Request& request);
  Response tellLines(const Request& request);
  Response waitForLine(const Request& request);
  Response tellScenario(const Request& request);
  Response tellSchema(const Request& request);
  Response tellStatus(const Request& request);
  Response stop(const Request& request);

  Phone& phone_;
  Worker& worker_;
  const Transcript& transcript_;
  report::LintService& linter_;
  Rehearsal& rehearsal_;
  const ApiOptions options_;
  Streams streams_;
};

/// The answer that gives the reason for a refusal.
server::HttpResponse refusal(int status, const std::string& reason, json::Dictionary more = {});

}  // namespace quorvantis::phone
