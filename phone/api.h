// A phone's HTTP interface, as docs/phone.md describes it: from a request to its answer, without the
// connection. Threads: any, several at a time; the phone itself is used on the worker's thread.
#pragma once

#include <httplib.h>

#include <functional>
#include <string>

#include "json/value.h"
#include "phone/phone.h"
#include "phone/streams.h"
#include "phone/transcript.h"
#include "phone/worker.h"
#include "report/lint_service.h"

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
      ApiOptions options);

  /// Answers a request that the gate let in and whose path begins with "/api/".
  void answer(const httplib::Request& request, httplib::Response& response, const std::string& body);

 private:
  void playLines(httplib::Response& response, const std::string& body);
  void beginAnew(httplib::Response& response, const std::string& body);
  void lint(httplib::Response& response, const std::string& body);
  void orderFaults(httplib::Response& response, const std::string& body);
  void tellLines(const httplib::Request& request, httplib::Response& response);
  void waitForLine(const httplib::Request& request, httplib::Response& response);
  void tellStatus(httplib::Response& response);

  Phone& phone_;
  Worker& worker_;
  const Transcript& transcript_;
  report::LintService& linter_;
  const ApiOptions options_;
  Streams streams_;
};

/// Answers with the reason for a refusal.
void refuse(httplib::Response& response, int status, const std::string& reason, json::Dictionary more = {});

}  // namespace quorvantis::phone
