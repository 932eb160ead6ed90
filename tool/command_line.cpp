#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "device/text.h"
#include "scenario/names.h"

namespace quorvantis::tool {

namespace {

constexpr const char* kVersion = "quorvantis-push " QUORVANTIS_VERSION;
/// What each command's status means; docs and tests have the same.
constexpr const char* kStatuses =
    "Status: 0 when all went well; 1 when something went wrong or was found wrong (an error in a payload, a "
    "port "
    "in use, standard output that can't be written to); 2 when what was given can't be read.";
constexpr const char* kOldestSystem = "10.0";
constexpr const char* kAppleStandInPort = "8445";
constexpr const char* kTopic = "com.example.app";

/// The status of the command that runs; CLI11's callbacks return nothing.
class CommandStatus : public CLI::Error {
 public:
  explicit CommandStatus(int status) : CLI::Error("CommandStatus", "", status) {}
};

/// The options of every command, which outlive the parsing.
struct Options {
  PayloadOptions payload;
  RunOptions run;
  ServeOptions serve;
  PhoneOptions phone;
};

std::string problemOfNothing(const std::string& value) {
  return value.empty() ? "needs a value" : "";
}

CLI::App* addCommand(CLI::App& app, const char* name, const char* about) {
  CLI::App* command = app.add_subcommand(name, about);
  command->set_version_flag("--version", kVersion);
  command->footer(kStatuses);
  return command;
}

void addDemo(CLI::App& app, int (*demo)()) {
  addCommand(app, "demo", "Watch a simulated phone register and get notifications")->callback([demo] {
    throw CommandStatus(demo());
  });
}

std::string problemOfVersion(const std::string& version) {
  const bool isVersion = !version.empty() && version.front() != '.' &&
                         version.find_first_not_of("0123456789.") == std::string::npos;
  if (!isVersion) return "takes a version of iOS, such as 16.4";
  return device::compareNumerically(version, kOldestSystem) < 0
             ? "takes iOS 10.0 or newer, as the library does"
             : "";
}

void addPayload(CLI::App& app, PayloadOptions& options, int (*payload)(const PayloadOptions&)) {
  CLI::App* command = addCommand(
      app, "payload", "Say what the library does with a notification's payload, and what is wrong");
  command->footer(std::string("\"switch\" in the output is activePushNotificationsInForegroundApp:. ") +
                  kStatuses);
  using Format = PayloadOptions::Format;
  options.version = kVersion + std::string_view(kVersion).find(' ') + 1;
  auto* json = command->add_flag_callback(
      "--json", [&options] { options.format = Format::json; }, "print one JSON document, for other programs");
  command
      ->add_flag_callback(
          "--sarif", [&options] { options.format = Format::sarif; },
          "print the findings as a SARIF 2.1.0 log, for code hosts")
      ->excludes(json);
  command->add_option("--system-version", options.systemVersion, "the phone's version of iOS")
      ->check(problemOfVersion)
      ->type_name("V")
      ->capture_default_str();
  command
      ->add_option("FILE", options.files,
                   "a payload, an .apns file for the simulator, a folder of them, or a pattern such as "
                   "'campaigns/*.apns'; - for standard input")
      ->required()
      ->type_name(" ");
  command->callback([&options, payload] {
    // As a phone says it: "17" would be older than "17.0".
    if (options.systemVersion.find('.') == std::string::npos) options.systemVersion += ".0";
    if (std::count(options.files.begin(), options.files.end(), "-") > 1) {
      throw CLI::ValidationError("FILE", "standard input can be read once");
    }
    throw CommandStatus(payload(options));
  });
}

void addBuild(CLI::App& command, device::Build& build) {
  using scenario::kNamed;
  std::vector<std::string> names;
  names.reserve(kNamed<device::Build>.size());
  for (const auto& named : kNamed<device::Build>) names.emplace_back(named.name);
  command
      .add_option_function<std::string>(
          "--build", [&build](const std::string& name) { build = *scenario::valueOf<device::Build>(name); },
          "the library's build: device (handles notifications) or simulator")
      ->check(CLI::IsMember(names).description(""))
      ->type_name(CLI::detail::join(names, "|"));
}

void addOutsideServer(CLI::App& command, std::optional<std::string>& server,
                      std::optional<std::string>& authority) {
  auto* where = command.add_option("--server", server, "use a push server that runs on this machine")
                    ->type_name("HOST:PORT");
  auto* trusted = command.add_option("--authority", authority, "the certificate of its authority")
                      ->type_name("PEM")
                      ->needs(where);
  where->needs(trusted);
}

/// An option with a text that must not be empty.
template <class Text>
CLI::Option* addText(CLI::App& command, const char* name, Text& text, const char* about, const char* type) {
  return command.add_option(name, text, about)->check(problemOfNothing)->type_name(type);
}

CLI::Option* addPort(CLI::App& command, const char* name, std::uint16_t& port, const char* about) {
  return command.add_option(name, port, about)->check(problemOfNothing)->type_name("N");
}

void addRun(CLI::App& app, RunOptions& options, int (*run)(const RunOptions&)) {
  CLI::App* command =
      addCommand(app, "run", "Play a scenario on a fresh simulated phone, print what happened");
  addBuild(*command, options.build);
  addText(*command, "--settings", options.settings, "keep the phone's settings in this file", "FILE");
  addOutsideServer(*command, options.server, options.authority);
  command->add_option("FILE", options.scenario, "the scenario, one JSON object a line; - for standard input")
      ->required()
      ->type_name(" ");
  command->callback([&options, run] { throw CommandStatus(run(options)); });
}

void addPhone(CLI::App& app, PhoneOptions& options, int (*phone)(const PhoneOptions&)) {
  CLI::App* command = addCommand(
      app, "phone", "Hold a simulated phone in the browser, test against it, reach it as a backend does");
  options.version = kVersion + std::string_view(kVersion).find(' ') + 1;
  addPort(*command, "--port", options.port,
          "the port of the page; one that is free when left out. With a port, a page that is open comes back "
          "when the phone is started again");
  command->add_flag("!--no-page", options.hasPage,
                    "serve the interface for tests alone, and print how to reach it in one line of JSON");
  command->add_flag("--json", options.json, "print the transcript's lines as they come");
  addBuild(*command, options.build);
  addText(*command, "--settings", options.settings, "keep the phone's settings in this file", "FILE");
  addOutsideServer(*command, options.server, options.authority);
  auto* listen =
      addText(*command, "--listen", options.listen,
              "the numeric address to listen at; one that others can reach needs --public-host", "ADDRESS")
          ->capture_default_str();
  addText(*command, "--public-host", options.publicHost,
          "the name by which pages reach it, NAME or NAME:PORT", "NAME")
      ->needs(listen);

  auto* apns = command
                   ->add_option_function<std::uint16_t>(
                       "--apns", [&options](const std::uint16_t& port) { options.apns = port; },
                       "stand in for Apple's push service at this port, for a backend's own client")
                   ->expected(0, 1)
                   ->default_str(kAppleStandInPort)
                   ->type_name("PORT");
  options.topic = kTopic;
  addText(*command, "--topic", options.topic, "the application's bundle identifier", "ID")
      ->capture_default_str()
      ->needs(apns);
  addText(*command, "--apns-authority", options.apnsAuthority,
          "write the certificate of the stand-in's authority here", "FILE")
      ->needs(apns);
  addText(*command, "--provider-key", options.providerKey,
          "the key that signs provider tokens (the .p8, or its public half); any when left out", "FILE")
      ->needs(apns);
  addText(*command, "--client-authority", options.clientAuthority,
          "the authority of providers that connect by certificate", "FILE")
      ->needs(apns);
  command
      ->add_flag("--strict", options.strict,
                 "status 1 when a payload was taken in which the linter finds an error")
      ->needs(apns);
  command->add_option("FILE", options.scenario, "a scenario to play first; - for standard input")
      ->type_name(" ");
  command->callback([&options, phone] { throw CommandStatus(phone(options)); });
}

void addServe(CLI::App& app, ServeOptions& options, int (*serve)(const ServeOptions&)) {
  CLI::App* command = addCommand(app, "serve", "Run the push server for development, on this machine alone");
  addPort(*command, "--port", options.port, "the port of 127.0.0.1; 0 for any that is free")
      ->capture_default_str();
  addText(*command, "--data", options.data, "keep the registrations in this file", "FILE");
  command
      ->add_option("--authority", options.authority, "write the certificate of the server's authority here")
      ->type_name("FILE");
  command->add_flag("--seal-answers", options.sealAnswers, "protect the answers as the requests are");
  command->callback([&options, serve] { throw CommandStatus(serve(options)); });
}

bool hasCommand(CLI::App& app, const std::string& name) {
  return !app.get_subcommands([&](const CLI::App* command) { return command->check_name(name); }).empty();
}

/// The command's status, unless what it printed was lost.
int statusOf(const CommandStatus& command) {
  if (std::cout.flush()) return command.get_exit_code();
  std::cerr << "quorvantis-push: standard output can't be written to any more; is the disk full?\n";
  return std::max(command.get_exit_code(), 1);
}

}  // namespace

int runCommandLine(int argc, char** argv, const Commands& commands) {
  CLI::App app(commands.about, "quorvantis-push");
  app.set_version_flag("--version", kVersion);
  app.require_subcommand(1);
  app.footer(kStatuses);
  Options options;
  if (commands.demo != nullptr) addDemo(app, commands.demo);
  if (commands.payload != nullptr) addPayload(app, options.payload, commands.payload);
  if (commands.run != nullptr) addRun(app, options.run, commands.run);
  if (commands.serve != nullptr) addServe(app, options.serve, commands.serve);
  if (commands.phone != nullptr) addPhone(app, options.phone, commands.phone);

  if (argc > 1 && argv[1][0] != '-' && !hasCommand(app, argv[1])) {
    std::cerr << "quorvantis-push: there is no command \"" << argv[1] << "\" (see --help)\n";
    return 2;
  }
  try {
    app.parse(argc, argv);
    return 0;
  } catch (const CommandStatus& command) {
    return statusOf(command);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "quorvantis-push: " << error.what() << " (see --help)\n";
    return 2;
  }
}

}  // namespace quorvantis::tool
