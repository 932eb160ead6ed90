// Whether a provider's request is taken, and why not. Any thread; one Provider belongs to one connection.
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

/// What a connection's client has shown of itself.
struct Provider {
  enum class Certificate { none, trusted, untrusted };

  Certificate certificate = Certificate::none;
  std::string certificateTopic;  ///< what it is for; empty: for any
  std::string tokenText;         ///< the provider token in use, once one was found to be good
  std::optional<ProviderToken> token;
};

struct Rules {
  std::string topic;                              ///< the application's bundle identifier
  std::shared_ptr<const jose::SigningKey> key{};  ///< null: signatures are not looked at
};

struct Judgement {
  Answer answer;
  Report report;
  std::optional<Notification> notification;  ///< what is taken
};

/// `now` in seconds since 1970. Remembers a good provider token.
Judgement judge(const Request& request, Provider& provider, const Rules& rules, const Phone& phone,
                std::int64_t now);

/// The refusal for this reason, whatever the request is like; `now` in seconds since 1970.
Judgement refusalFor(const Request& request, const Reason& reason, std::int64_t now);

}  // namespace quorvantis::apns
