#include "platform/QuorvantisConnexion.h"

#include "device/connexion.h"
#include "platform/simulated/Front.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

using namespace simulated;

class ConnexionInstance final : public Instance {
 public:
  device::Connexion connexion{device::Device::current()};
};

/// Nullptr for nil.
device::Connexion* connexionOf(const QuorvantisConnexion& handle) {
  return handle ? &known<ConnexionInstance>(handle)->connexion : nullptr;
}

}  // namespace

QuorvantisConnexion QuorvantisConnexion::init() {
  return makeInstance<QuorvantisConnexion, ConnexionInstance>();
}

void QuorvantisConnexion::setDelegate(const Object& delegate) const {
  auto* connexion = connexionOf(*this);
  if (connexion == nullptr) return;
  connexion->setFinished([weak = WeakObject(delegate)](const std::string& identity) {
    sendTo<QuorvantisConnexionDelegate>(weak.lock(), {"downloadFinished:"}, [&](auto& receiver) {
      receiver.downloadFinished(NSString::stringWithUTF8String(identity));
    });
  });
}

void QuorvantisConnexion::setEncryption(bool encryption) const {
  if (auto* connexion = connexionOf(*this)) connexion->setEncryption(encryption);
}

void QuorvantisConnexion::setHashKey(const NSString& key) const {
  if (auto* connexion = connexionOf(*this)) connexion->setHashKey(textOf(key).value_or(""));
}

void QuorvantisConnexion::setConnexionValue(const NSString& value) const {
  if (auto* connexion = connexionOf(*this)) connexion->setConnexionValue(textOf(value));
}

void QuorvantisConnexion::setConnexionUrl(const NSString& url) const {
  if (auto* connexion = connexionOf(*this)) connexion->setConnexionUrl(textOf(url));
}

void QuorvantisConnexion::sendConnexion(const NSString& parameters) const {
  if (auto* connexion = connexionOf(*this)) connexion->send(textOf(parameters));
}

void QuorvantisConnexion::cancel() const {
  if (auto* connexion = connexionOf(*this)) connexion->cancel();
}

NSDictionary QuorvantisConnexion::receivedData() const {
  const auto* connexion = connexionOf(*this);
  if (connexion == nullptr) return nullptr;
  json::Dictionary answers;
  for (auto& [identity, bytes] : connexion->answers()) answers.emplace(identity, json::Data{bytes});
  return objectFrom(answers).as<NSDictionary>();
}

}  // namespace quorvantis::platform
