#include "tool/serve.h"

#include <csignal>
#include <exception>
#include <iostream>

#include "console/stop_signals.h"
#include "console/terminal.h"
#include "console/wording.h"
#include "scenario/push_service.h"
#include "server/authority_file.h"
#include "server/push_server.h"

namespace quorvantis::tool {

namespace {

void printField(std::string_view name, const std::string& value) {
  if (!value.empty()) std::cout << "    " << console::padded(name, 13) << console::printable(value) << '\n';
}

void printRequest(const server::ReceivedRequest& request) {
  std::cout << "POST " << request.path << "  (" << console::printable(request.mediaType) << ")\n";
  const server::ParsedRequest parsed = server::parseRequest(request.body);
  if (!parsed.request) return;
  const server::PushRequest& fields = *parsed.request;
  printField("tarea", fields.task);
  for (const auto& [name, value] : server::fieldsOf(fields.task)) printField(name, fields.*value);
}

void serveUntilStopped(const ServeOptions& options) {
  const sigset_t stop = console::blockStopSignals();
  if (!options.authority.empty()) server::requireOurs(options.authority);
  const server::Authority authority;
  server::PushServerOptions serverOptions;
  serverOptions.port = options.port;
  serverOptions.dataFile = options.data;
  serverOptions.hashKey = scenario::kHashKey;
  serverOptions.sealAnswers = options.sealAnswers;
  serverOptions.onRequest = printRequest;
  serverOptions.onAnswer = [](const server::Answer& answer) {
    std::cout << "  " << answer.status << ' ' << console::printable(answer.body) << "\n\n" << std::flush;
  };
  serverOptions.onRefused = [](const server::RefusedRequest& request) {
    std::cout << console::printable(request.method) << ' ' << console::printable(request.path)
              << "  refused\n  " << request.status << ' ' << console::printable(request.reason) << "\n\n"
              << std::flush;
  };
  const server::PushServer server(authority, serverOptions);
  if (!options.authority.empty()) server::writeAuthority(options.authority, authority);
  std::cout << "Push server for " << scenario::kPushHost << " on https://127.0.0.1:" << server.port()
            << server::kEndpointPath << "\n"
            << (options.authority.empty()
                    ? "Write its authority's certificate to a file with --authority FILE."
                    : "Its authority's certificate is in " + options.authority + ".")
            << "\nStop it with Ctrl-C.\n\n"
            << std::flush;

  int signal = 0;
  sigwait(&stop, &signal);
  std::cout << "Stopped.\n" << std::flush;
}

}  // namespace

int serve(const ServeOptions& options) {
  serveUntilStopped(options);
  return 0;
}

}  // namespace quorvantis::tool
