#include "bench/payloads.h"

#include <algorithm>
#include <random>

namespace quorvantis::bench {

namespace {

std::string aps(const std::string& entries) {
  return R"({"aps":{"alert":{"title":"Offer of the day","body":"Two for the price of one until Sunday"},)" +
         entries + R"(},"campaign":"autumn"})";
}

}  // namespace

const std::vector<Payload>& everyKind() {
  static const auto& kinds = *new std::vector<Payload>{
      silentWith(6),
      {"untyped, five extras",
       aps(R"("extra1":"17","extra2":"blue","extra3":"https://www.example.com/a","extra4":4,"extra5":"x")")},
      {"pushlib-normal", aps(R"("type":"pushlib-normal","sound":"default")")},
      {"pushlib-abrirapp", aps(R"("type":"pushlib-abrirapp","sound":"default")")},
      {"pushlib-abrirurl", aps(R"("type":"pushlib-abrirurl","urlnoti":"https://www.example.com/offers/1")")},
      {"pushlib-normal, badge and vibration", aps(R"("type":"pushlib-normal","badge":3)"), true, true},
      {"pushlib-abrirurl, alert shown",
       aps(R"("type":"pushlib-abrirurl","urlnoti":"https://www.example.com/offers/1")"), true, false},
      {"pushlib-extras, five stored",
       aps(R"("type":"pushlib-extras","extra1":"17","extra2":"blue","extra3":"https://www.example.com/a",)"
           R"("extra4":4,"extra5":"x")")},
  };
  return kinds;
}

Payload silentWith(int keys) {
  std::vector<std::string> entries{R"("content-available":1)"};
  for (int i = 1; i < keys; ++i) {
    entries.push_back("\"key" + std::to_string(1000 + i) + "\":\"v" + std::to_string(i) + "\"");
  }
  std::shuffle(entries.begin(), entries.end(), std::mt19937(7));
  std::string text = "{\"aps\":{";
  for (const std::string& entry : entries) text += entry + ",";
  text.back() = '}';
  return {"silent, " + std::to_string(keys) + " keys", text + "}"};
}

}  // namespace quorvantis::bench
