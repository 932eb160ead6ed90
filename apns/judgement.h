// Whether a provider's request is accepted, and why not. Any thread; one Provider belongs to one connection.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "apns/phone.h"
#include "apns/provider_token.h"
#include "apns/reasons.h"
#include "apns/request.h"
#include "jose/jws.h"

namespace quorvantis::apns {

/// What is known of a connection's client.
struct Provider {
  enum class Certificate { none, trusted, untrusted };

  Certificate certificate = Certificate::none;
  std::string certificateTopic;  ///< the topic it is for; empty: any
  std::string tokenText;         ///< the first valid provider token
  std::optional<ProviderToken> token;
};

struct Rules {
  std::string topic;                              ///< the application's bundle identifier
  std::shared_ptr<const jose::SigningKey> key{};  ///< null: signatures are not checked
  std::string keyId{};                            ///< empty: any
};

struct Judgement {
  Answer answer;
  Report report;
  std::optional<Notification> notification;  ///< if the request is accepted
};

/// `now` in seconds since 1970. Remembers a valid provider token.
Judgement judge(const Request& request, Provider& provider, const Rules& rules, const Phone& phone,
                std::int64_t now);

/// A refusal for this reason, regardless of the request; `now` in seconds since 1970.
Judgement refusalFor(const Request& request, const Reason& reason, std::int64_t now);

}  // namespace quorvantis::apns
