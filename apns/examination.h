// A request with everything that its judgement needs, computed once. One thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "apns/judgement.h"
#include "apns/push_type.h"
#include "json/value.h"

namespace quorvantis::apns {

/// What follows "/3/device/" in a path; nothing for another path.
std::optional<std::string_view> deviceTokenIn(std::string_view path);

struct Examination {
  Examination(const Request& given, const Provider& from, const Rules& by, const Phone& phone,
              std::int64_t second);

  const Request& request;
  const Provider& provider;
  const Rules& rules;
  const std::int64_t now;

  const Room room;
  std::optional<std::string_view> deviceToken;
  std::optional<KnownToken> known;
  const PushType* pushType;  ///< null: there is no such type
  std::string topic;         ///< the certificate's when none was sent; empty: it has none, either
  std::optional<json::Value> payload;
  std::string_view tokenText;  ///< empty: none was sent
  std::optional<ProviderToken> token;
  bool isTokenGood = false;

 private:
  void readTopic();
  void readProviderToken();
};

}  // namespace quorvantis::apns
