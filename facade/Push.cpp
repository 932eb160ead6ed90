// Push: its life, its configuration, and what the host may ask it.
#include "facade/Push.h"
#include "platform/NSBundle.h"
#include "platform/NSUserDefaults.h"
#include "registration/settings_keys.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSBundle;
using platform::NSString;
using platform::NSUserDefaults;
using platform::Object;

namespace {

constinit const ConstantString kBundleIdentifier{"com.quorvantis.QuorvantisPush"};
constinit const ConstantString kWebSite{"https://www.quorvantis.com"};
constinit const ConstantString kPushName{"Push"};
constinit const ConstantString kNoHash{"You must insert fist the Aplication Hash"};
constinit const ConstantString kEmpty{""};

}  // namespace

Push::Push(void* front) : UIResponder(front) {}

Push::~Push() = default;

void Push::emptyFields() {
  appHash_ = nullptr;
  TAG = nullptr;
  registerLib = nullptr;
  recogidaDatos = {};
  dirAAbrir = nullptr;
  pushVersion = nullptr;
  valorConexion = nullptr;
  urlConexion = nullptr;
  conn = nullptr;
  responseData = nullptr;
  aplication = nullptr;
}

void Push::init() {
  activeInForegroundApp = false;
  pushVersion = NSBundle::bundleForClass({"Push"})
                    .infoDictionary()
                    .objectForKey(platform::CFBundleShortVersionString)
                    .as<NSString>();
  dirAAbrir = kWebSite;
  recogidaDatos = makePushRequestData();
  recogidaDatos->setDelegate(self());
  TAG = NSString::stringWithFormat("[%@]", {className()});
}

NSString Push::className() const {
  return kPushName;
}

platform::Ref<PushRequestData> Push::makePushRequestData() {
  return platform::make<PushRequestData>();
}

void Push::activePushNotificationsInForegroundApp(bool active) {
  activeInForegroundApp = active;
}

bool Push::checkAppHash() {
  if (!appHash_ || appHash_.isEqualToString(kEmpty)) {
    const NSString& text = kNoHash;
    callbacks::sendIfResponds(delegate_, callbacks::onError, text);
    return false;
  }
  NSUserDefaults::standardUserDefaults().setObject(appHash_, settings_keys::pushAppHash);
  NSUserDefaults::standardUserDefaults().synchronize();
  return true;
}

NSString Push::getVersion() {
  return NSBundle::bundleWithIdentifier(kBundleIdentifier)
      .infoDictionary()
      .objectForKey(platform::CFBundleShortVersionString)
      .as<NSString>();
}

bool Push::respondsToSelector(platform::Selector selector) const {
  return callbacks::All::implements<Push>(selector);
}

void Push::performSelector(platform::Selector selector, const Object& withObject) {
  callbacks::All::send(*this, selector, withObject);
}

}  // namespace quorvantis
