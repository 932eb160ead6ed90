#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <string>

namespace quorvantis::tool {

namespace {

constexpr const char* kVersion = "quorvantis-push 1.0";

/// The status of the command that runs; CLI11's callbacks return nothing.
class CommandStatus : public CLI::Error {
 public:
  explicit CommandStatus(int status) : CLI::Error("CommandStatus", "", status) {}
};

/// The options of every command, which outlive the parsing.
struct Options {
  RunOptions run;
  ServeOptions serve;
};

CLI::App* addCommand(CLI::App& app, const char* name, const char* about) {
  CLI::App* command = app.add_subcommand(name, about);
  command->set_version_flag("--version", kVersion);
  return command;
}

void addDemo(CLI::App& app, int (*demo)()) {
  addCommand(app, "demo", "Watch a simulated phone register and get notifications")->callback([demo] {
    throw CommandStatus(demo());
  });
}

void addRun(CLI::App& app, RunOptions& options, int (*run)(const RunOptions&)) {
  static const auto& builds = *new std::map<std::string, device::Build>{
      {"device", device::Build::device}, {"simulator", device::Build::simulator}};
  CLI::App* command =
      addCommand(app, "run", "Play a scenario on a fresh simulated phone, print what happened");
  command
      ->add_option_function<std::string>(
          "--build", [&options](const std::string& name) { options.build = builds.at(name); },
          "the library's build: device (handles notifications) or simulator")
      ->check(CLI::IsMember(builds).description(""))
      ->type_name("device|simulator");
  command->add_option("--settings", options.settings, "keep the phone's settings in this file")
      ->type_name("FILE");
  auto* server =
      command->add_option("--server", options.server, "use a push server that runs on this machine")
          ->type_name("HOST:PORT");
  auto* authority = command->add_option("--authority", options.authority, "the certificate of its authority")
                        ->type_name("PEM")
                        ->needs(server);
  server->needs(authority);
  command->add_option("FILE", options.scenario, "the scenario, one JSON object a line; - for standard input")
      ->required()
      ->type_name(" ");
  command->callback([&options, run] { throw CommandStatus(run(options)); });
}

void addServe(CLI::App& app, ServeOptions& options, int (*serve)(const ServeOptions&)) {
  CLI::App* command = addCommand(app, "serve", "Run the push server for development, on this machine alone");
  command->add_option("--port", options.port, "the port of 127.0.0.1; 0 for any that is free")
      ->capture_default_str()
      ->type_name("N");
  command->add_option("--data", options.data, "keep the registrations in this file")->type_name("FILE");
  command
      ->add_option("--authority", options.authority, "write the certificate of the server's authority here")
      ->type_name("FILE");
  command->add_flag("--seal-answers", options.sealAnswers, "protect the answers as the requests are");
  command->callback([&options, serve] { throw CommandStatus(serve(options)); });
}

bool hasCommand(CLI::App& app, const std::string& name) {
  return !app.get_subcommands([&](const CLI::App* command) { return command->check_name(name); }).empty();
}

}  // namespace

int runCommandLine(int argc, char** argv, const Commands& commands) {
  CLI::App app(commands.about, "quorvantis-push");
  app.set_version_flag("--version", kVersion);
  app.require_subcommand(1);
  Options options;
  if (commands.demo != nullptr) addDemo(app, commands.demo);
  if (commands.run != nullptr) addRun(app, options.run, commands.run);
  if (commands.serve != nullptr) addServe(app, options.serve, commands.serve);

  if (argc > 1 && argv[1][0] != '-' && !hasCommand(app, argv[1])) {
    std::cerr << "quorvantis-push: there is no command \"" << argv[1] << "\" (see --help)\n";
    return 2;
  }
  try {
    app.parse(argc, argv);
    return 0;
  } catch (const CommandStatus& status) {
    return status.get_exit_code();
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "quorvantis-push: " << error.what() << " (see --help)\n";
    return 2;
  }
}

}  // namespace quorvantis::tool
