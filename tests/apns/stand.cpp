// stand AUTHORITY TOPIC TOKEN OLD-TOKEN [name=value...]: the service in front of a phone that only writes
// down what comes, one JSON line each, to standard output. Standard input takes orders for faults, one JSON
// line each; its end ends the program.
#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iostream>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <variant>

#include "apns/service.h"
#include "base/hexadecimal.h"
#include "json/read.h"
#include "json/write.h"

namespace {

using namespace quorvantis;

constexpr std::int64_t kOldTokenEnded = 1'700'000'000'123;

class WritingPhone final : public apns::Phone {
 public:
  WritingPhone(const std::string& token, const std::string& old, bool isQuiet)
      : token_(*base::bytesFromHexadecimal(token)),
        old_(*base::bytesFromHexadecimal(old)),
        isQuiet_(isQuiet) {}

  [[nodiscard]] std::optional<apns::KnownToken> find(std::string_view token) const override {
    if (token == token_) return apns::KnownToken{};
    if (token == old_) return apns::KnownToken{kOldTokenEnded};
    return std::nullopt;
  }

  void arrive(apns::Notification notification, const apns::Report& report) override {
    json::Dictionary line = lineOf(report);
    line["payload"] = std::move(notification.payload);
    line["collapseId"] = notification.collapseId;
    if (notification.expires) line["expires"] = *notification.expires;
    write(line);
  }

  void refused(const apns::Report& report) override { write(lineOf(report)); }

 private:
  static json::Dictionary lineOf(const apns::Report& report) {
    return {{"status", report.status},
            {"reason", report.reason},
            {"detail", report.detail},
            {"id", report.id},
            {"pushType", report.pushType}};
  }

  void write(const json::Dictionary& line) {
    if (isQuiet_) return;
    const std::lock_guard lock(mutex_);
    std::cout << json::write(line) << '\n' << std::flush;
  }

  const std::string token_;
  const std::string old_;
  const bool isQuiet_;
  std::mutex mutex_;
};

std::string contents(const std::string& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

void order(apns::Service& service, const std::string& line) {
  const auto value = json::read(line);
  const auto faults = apns::readFaults(std::get<json::Value>(value));
  const auto* const problem = std::get_if<std::string>(&faults);
  if (problem == nullptr) service.faults().set(std::get<0>(faults));
  std::cout << json::write(json::Dictionary{{"ordered", problem == nullptr ? "" : *problem}}) << '\n'
            << std::flush;
}

int stand(int count, char** words) {
  std::map<std::string, std::string> named;
  for (int i = 5; i < count; ++i) {
    const std::string word = words[i];
    const auto equals = word.find('=');
    named[word.substr(0, equals)] = word.substr(equals + 1);
  }
  const server::Authority authority = apns::makeAuthority();
  std::ofstream(words[1]) << authority.certificate();
  WritingPhone phone(words[3], words[4], named.contains("quiet"));
  apns::ServiceOptions options{.rules = {.topic = words[2]}};
  if (named.contains("key"))
    options.rules.key = std::make_shared<const jose::SigningKey>(contents(named["key"]));
  if (named.contains("clients")) options.clientAuthority = contents(named["clients"]);
  if (named.contains("request"))
    options.patience.request = std::chrono::milliseconds(std::stoi(named["request"]));
  if (named.contains("answer"))
    options.patience.answer = std::chrono::milliseconds(std::stoi(named["answer"]));
  if (named.contains("idle")) options.patience.idle = std::chrono::milliseconds(std::stoi(named["idle"]));
  apns::Service service(authority, phone, std::move(options));
  std::cout << json::write(json::Dictionary{{"port", std::int64_t{service.port()}}}) << '\n' << std::flush;
  for (std::string line; std::getline(std::cin, line);) order(service, line);
  return 0;
}

}  // namespace

int main(int count, char** words) {
  try {
    return stand(count, words);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
