#include "tool/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "device/text.h"
#include "scenario/names.h"
#include "tool/exit_status.h"

namespace quorvantis::tool {

namespace {

constexpr const char* kVersion = "quorvantis-push " QUORVANTIS_VERSION;
constexpr const char* kStatuses =
    "Exit status: 0 on success; 1 on failure or when a problem was found (an error in a payload, a port in "
    "use, a failed write to standard output); 2 when the arguments or the input can't be read.";
constexpr const char* kOldestSystem = "10.0";
constexpr const char* kAppleStandInPort = "8445";
constexpr const char* kTopic = "com.example.app";

/// The status of the command that runs; CLI11's callbacks return nothing.
class CommandStatus : public CLI::Error {
 public:
  explicit CommandStatus(int status) : CLI::Error("CommandStatus", "", status) {}
};

/// Runs the command; `scenario` is the file that it reads.
[[noreturn]] void end(const std::function<int()>& command, const std::string& scenario = "") {
  throw CommandStatus(statusOf(command, scenario));
}

/// CLI11 keeps references to these while it parses.
struct Options {
  PayloadOptions payload;
  RunOptions run;
  ServeOptions serve;
  PhoneOptions phone;
};

std::string problemOfEmpty(const std::string& value) {
  return value.empty() ? "must not be empty" : "";
}

CLI::App* addCommand(CLI::App& app, const char* name, const char* about) {
  CLI::App* command = app.add_subcommand(name, about);
  command->set_version_flag("--version", kVersion);
  command->footer(kStatuses);
  return command;
}

void addDemo(CLI::App& app, int (*demo)()) {
  addCommand(app, "demo", "Watch a simulated phone register and get notifications")->callback([demo] {
    end(demo);
  });
}

std::string problemOfVersion(const std::string& version) {
  const bool isVersion = !version.empty() && version.front() != '.' &&
                         version.find_first_not_of("0123456789.") == std::string::npos;
  if (!isVersion) return "must be an iOS version, such as 16.4";
  return device::compareNumerically(version, kOldestSystem) < 0
             ? "must be 10.0 or later, the versions that the library supports"
             : "";
}

void addFailOn(CLI::App& command, std::optional<lint::Severity>& failOn) {
  static constexpr const char* kNever = "never";
  std::vector<std::string> names(lint::kSeverityNames.rbegin(), lint::kSeverityNames.rend());
  names.emplace_back(kNever);
  command
      .add_option_function<std::string>(
          "--fail-on",
          [&failOn](const std::string& name) {
            const auto known = std::find(lint::kSeverityNames.begin(), lint::kSeverityNames.end(), name);
            failOn = name == kNever
                         ? std::nullopt
                         : std::optional(static_cast<lint::Severity>(known - lint::kSeverityNames.begin()));
          },
          "the least finding that makes the exit status 1; error by default")
      ->check(CLI::IsMember(names).description(""))
      ->type_name(CLI::detail::join(names, "|"));
}

void addPayload(CLI::App& app, PayloadOptions& options, int (*payload)(const PayloadOptions&)) {
  CLI::App* command = addCommand(
      app, "payload", "Explain what the library does with a payload, and report what is wrong with it");
  command->footer(
      std::string("\"switch\" in the output stands for activePushNotificationsInForegroundApp:. ") +
      kStatuses);
  using Format = PayloadOptions::Format;
  options.version = QUORVANTIS_VERSION;
  auto* json = command->add_flag_callback(
      "--json", [&options] { options.format = Format::json; }, "print one JSON document, for other programs");
  command
      ->add_flag_callback(
          "--sarif", [&options] { options.format = Format::sarif; },
          "print the findings as a SARIF 2.1.0 log, for code hosts")
      ->excludes(json);
  command
      ->add_flag_callback(
          "--quiet", [&options] { options.format = Format::findings; }, "print only the findings")
      ->excludes("--json")
      ->excludes("--sarif");
  addFailOn(*command, options.failOn);
  command->add_option("--system-version", options.systemVersion, "the phone's iOS version")
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
    // Phones report "17.0", and "17" would compare as older.
    if (options.systemVersion.find('.') == std::string::npos) options.systemVersion += ".0";
    if (std::count(options.files.begin(), options.files.end(), "-") > 1) {
      throw CLI::ValidationError("FILE", "standard input (-) may be named only once");
    }
    end([&] { return payload(options); });
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
  auto* trusted = command.add_option("--authority", authority, "the certificate of that server's authority")
                      ->type_name("PEM")
                      ->needs(where);
  where->needs(trusted);
}

template <class String>
CLI::Option* addNonEmpty(CLI::App& command, const char* name, String& value, const char* about,
                         const char* type) {
  return command.add_option(name, value, about)->check(problemOfEmpty)->type_name(type);
}

void addLimit(CLI::App& command, const char* name, std::size_t& limit, const char* about) {
  command.add_option(name, limit, about)
      ->check(CLI::Range(std::size_t{1}, std::size_t{1'000'000'000}))
      ->type_name("N")
      ->capture_default_str();
}

CLI::Option* addPort(CLI::App& command, const char* name, std::uint16_t& port, const char* about) {
  return command.add_option(name, port, about)->check(problemOfEmpty)->type_name("N");
}

void addRun(CLI::App& app, RunOptions& options, int (*run)(const RunOptions&)) {
  CLI::App* command =
      addCommand(app, "run", "Play a scenario on a fresh simulated phone and print what happens");
  addBuild(*command, options.build);
  addNonEmpty(*command, "--settings", options.settings, "keep the phone's settings in this file", "FILE");
  addOutsideServer(*command, options.server, options.authority);
  command
      ->add_option("FILE", options.scenario, "the scenario, one JSON object per line; - for standard input")
      ->required()
      ->type_name(" ");
  command->callback([&options, run] { end([&] { return run(options); }, options.scenario); });
}

void addPhone(CLI::App& app, PhoneOptions& options, int (*phone)(const PhoneOptions&)) {
  CLI::App* command =
      addCommand(app, "phone", "Run a simulated phone to use in a browser, from tests or from a backend");
  options.version = QUORVANTIS_VERSION;
  addPort(
      *command, "--port", options.port,
      "the page's port; any free one by default. With a fixed port, an open page reconnects when the phone "
      "is restarted");
  command->add_flag("!--no-page", options.hasPage,
                    "serve only the interface for tests, and print how to reach it as one line of JSON");
  command->add_flag("--json", options.json, "print each line of the transcript as it happens");
  command->add_flag("--until-eof", options.untilEof,
                    "end when standard input does, as it does when the program that started this has ended");
  addLimit(*command, "--most-lines", options.mostLines, "the phone takes nothing more with as many lines");
  addLimit(*command, "--most-mebibytes", options.mostMebibytes,
           "the phone takes nothing more with as much text");
  addBuild(*command, options.build);
  addNonEmpty(*command, "--settings", options.settings, "keep the phone's settings in this file", "FILE");
  addOutsideServer(*command, options.server, options.authority);
  auto* listen =
      addNonEmpty(*command, "--listen", options.listen,
                  "the numeric address to listen on; one that other machines can reach needs --public-host",
                  "ADDRESS")
          ->capture_default_str();
  addNonEmpty(*command, "--public-host", options.publicHost,
              "the host name in the address of the page, NAME or NAME:PORT", "NAME")
      ->needs(listen);

  auto* apns = command
                   ->add_option_function<std::uint16_t>(
                       "--apns", [&options](const std::uint16_t& port) { options.apns = port; },
                       "stand in for Apple's push service on this port, for a backend's own client")
                   ->expected(0, 1)
                   ->default_str(kAppleStandInPort)
                   ->type_name("PORT");
  options.topic = kTopic;
  addNonEmpty(*command, "--topic", options.topic, "the application's bundle identifier", "ID")
      ->capture_default_str()
      ->needs(apns);
  addNonEmpty(*command, "--apns-authority", options.apnsAuthority,
              "write the certificate of the stand-in's authority to this file", "FILE")
      ->needs(apns);
  addNonEmpty(*command, "--provider-key", options.providerKey,
              "the key that signs provider tokens (the .p8, or its public half); any by default", "FILE")
      ->needs(apns);
  addNonEmpty(*command, "--provider-key-id", options.providerKeyId,
              "that key's ID, which provider tokens must name; not checked by default", "ID")
      ->needs(apns);
  addNonEmpty(*command, "--client-authority", options.clientAuthority,
              "the authority of providers that authenticate with a certificate", "FILE")
      ->needs(apns);
  command->add_flag("--strict", options.strict, "exit with status 1 if an accepted payload had an error")
      ->needs(apns);
  command->add_option("FILE", options.scenario, "a scenario to play first; - for standard input")
      ->type_name(" ");
  command->callback([&options, phone] {
    if (options.untilEof && options.scenario == "-") {
      throw CLI::ValidationError("FILE", "can't be standard input (-) with --until-eof; name a file");
    }
    end([&] { return phone(options); }, options.scenario);
  });
}

void addServe(CLI::App& app, ServeOptions& options, int (*serve)(const ServeOptions&)) {
  CLI::App* command =
      addCommand(app, "serve", "Run the development push server, which only this machine can reach");
  addPort(*command, "--port", options.port, "the port on 127.0.0.1; 0 for any free one")
      ->capture_default_str();
  addNonEmpty(*command, "--data", options.data, "keep the registrations in this file", "FILE");
  command
      ->add_option("--authority", options.authority,
                   "write the certificate of the server's authority to this file")
      ->type_name("FILE");
  command->add_flag("--seal-answers", options.sealAnswers,
                    "encrypt answers with the hash key, as requests are");
  command->callback([&options, serve] { end([&] { return serve(options); }); });
}

bool hasCommand(CLI::App& app, const std::string& name) {
  return !app.get_subcommands([&](const CLI::App* command) { return command->check_name(name); }).empty();
}

/// The command's status, unless its output was lost.
int checked(const CommandStatus& command) {
  if (std::cout.flush()) return command.get_exit_code();
  std::cerr << "quorvantis-push: can't write to standard output; is the disk full?\n";
  return std::max(command.get_exit_code(), kFailed);
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
    std::cerr << "quorvantis-push: unknown command \"" << argv[1] << "\" (see --help)\n";
    return kUnusable;
  }
  try {
    app.parse(argc, argv);
    return 0;
  } catch (const CommandStatus& command) {
    return checked(command);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    std::cerr << "quorvantis-push: " << error.what() << " (see --help)\n";
    return kUnusable;
  }
}

}  // namespace quorvantis::tool
