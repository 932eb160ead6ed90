// Push: everything from switching notifications on to passing the device token to the registration client,
// and the forwarding of its results.
#include <array>
#include <cstring>
#include <string>

#include "facade/Push.h"
#include "facade/system_version.h"
#include "platform/QuorvantisLogger.h"
#include "platform/dispatch.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSData;
using platform::NSError;
using platform::NSString;
using platform::Object;
using platform::UIApplication;
using platform::UNUserNotificationCenter;

namespace {

constinit const ConstantString kOldestSystem{"10.0"};
constinit const ConstantString kSystemTooOld{"iOs version less than 10."};
constinit const ConstantString kFirstSystemWithOpaqueData{"13.0"};
constinit const ConstantString kUserType{"push"};
constinit const ConstantString kSubType{""};
constinit const ConstantString kTokenCame{"Intento de registro"};
constinit const ConstantString kTokenFailed{"Fallo al intentar registrar"};

constexpr auto kDigitsOfBytes = [] {
  constexpr std::string_view digits = "0123456789abcdef";
  std::array<std::array<char, 2>, 256> pairs{};
  for (std::size_t byte = 0; byte < pairs.size(); ++byte)
    pairs[byte] = {digits[byte >> 4], digits[byte & 0xF]};
  return pairs;
}();

/// Whether the system is too old, which the delegate is told without being asked.
bool refusesSystem(const PushDelegate& delegate) {
  if (!systemIsOlderThan(kOldestSystem)) return false;
  const NSString& text = kSystemTooOld;
  delegate.send(callbacks::onError, text);
  return true;
}

NSString withoutPunctuation(const NSString& description) {
  const NSString nothing = NSString::stringWithUTF8String("");
  NSString text = description;
  for (const char* mark : {"<", ">", " "}) {
    text = text.stringByReplacingOccurrencesOfString(NSString::stringWithUTF8String(mark), nothing);
  }
  return text;
}

}  // namespace

void Push::activePushNotifications(std::uint8_t activate) {
  if (refusesSystem(delegate_)) return;
  if (activate != 1) return;

  registerLib = platform::QuorvantisRegisterLib::init();
  registerLib.setDelegate(self());
  registerLib.setWaitUntilGPSAdquiredToRegister(false);
  registerLib.setDeactivateGPS(deactivateGPS_);
  registerLib.registerUser(kUserType, pushVersion, kSubType, appHash_);
}

void Push::registerFinish() {
  if (refusesSystem(delegate_)) return;
  const UNUserNotificationCenter center = UNUserNotificationCenter::currentNotificationCenter();
  center.setDelegate(self());
  center.requestAuthorizationWithOptions(
      platform::UNAuthorizationOptionBadge | platform::UNAuthorizationOptionSound |
          platform::UNAuthorizationOptionAlert,
      [](bool /*granted*/, const NSError& error) {
        if (error) return;
        platform::dispatch_async_main(
            [] { UIApplication::sharedApplication().registerForRemoteNotifications(); });
      });
}

void Push::registerForRemoteNotificationsWithDeviceToken(const NSData& deviceToken) {
  if (!checkAppHash()) return;

  const NSString token = systemIsOlderThan(kFirstSystemWithOpaqueData)
                             ? withoutPunctuation(deviceToken.description())
                             : hexadecimalStringFromData(deviceToken);
  callbacks::sendIfResponds(delegate_, callbacks::onGetToken, token);
  // Nil in an object whose class did not call the inherited init.
  if (!recogidaDatos) return;
  recogidaDatos->registerForRemoteNotificationsWithDeviceToken(token, appHash_, pushVersion);
}

NSString Push::hexadecimalStringFromData(const NSData& data) {
  const std::size_t length = data.length();
  if (length == 0) return nullptr;

  std::string text(2 * length, '\0');
  const unsigned char* bytes = data.bytes();
  char* digits = text.data();
  for (std::size_t i = 0; i < length; ++i) std::memcpy(digits + 2 * i, kDigitsOfBytes[bytes[i]].data(), 2);
  return NSString::stringWithUTF8String(text);
}

void Push::applicationDidRegisterForRemoteNotificationsWithDeviceToken(const UIApplication& /*application*/,
                                                                       const NSData& /*deviceToken*/) {
  platform::QuorvantisLogger::info(TAG, kTokenCame);
}

void Push::applicationDidFailToRegisterForRemoteNotificationsWithError(const UIApplication& /*application*/,
                                                                       const NSError& error) {
  platform::QuorvantisLogger::info(TAG, kTokenFailed);
  platform::QuorvantisLogger::info(TAG,
                                   NSString::stringWithFormat("Failed to get token, error: %@", {error}));
}

void Push::onRegisterToken(const Object& token) {
  callbacks::sendIfResponds(delegate_, callbacks::onRegisterToken, token);
}

void Push::onUpdateToken(const Object& token) {
  callbacks::sendIfResponds(delegate_, callbacks::onUpdateToken, token);
}

void Push::onError(const Object& error) {
  platform::QuorvantisLogger::info(TAG, NSString::stringWithFormat("ENTRA AL ONERROR, error: %@", {error}));
}

}  // namespace quorvantis
