#include "fuzz/transport_double.h"

#include "device/transport.h"

namespace quorvantis {

namespace {

std::optional<std::string> answer;

}  // namespace

namespace fuzz {

void answerRequestsWith(std::optional<std::string> body) {
  answer = std::move(body);
}

}  // namespace fuzz

namespace device {

struct Transport::Connection {};

Transport::Transport(const Network& network) : network_(network) {}
Transport::~Transport() = default;

std::optional<std::string> Transport::post(const Request& /*request*/, const Stop& /*stop*/) {
  const bool isTooLong = answer && answer->size() > network_.limits().answerBytes;
  return isTooLong ? std::nullopt : answer;
}

}  // namespace device
}  // namespace quorvantis
