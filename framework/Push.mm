// The exported class Push: each method runs the body of its core; what the core sends to itself comes back as
// a message, so that a subclass may override it.
#import <QuorvantisPush/QuorvantisPush.h>

#include "facade/Push.h"
#include "framework/make_request_data.h"
#import "platform/ios/CompletionHandler.h"
#include "platform/ios/bridge.h"

using quorvantis::PushDelegate;
using quorvantis::platform::Object;
using quorvantis::platform::Ref;
using quorvantis::platform::Selector;
using quorvantis::platform::ios::autoreleased;
using quorvantis::platform::ios::handlerFrom;
using quorvantis::platform::ios::objectOf;
using quorvantis::platform::ios::retained;
using quorvantis::platform::ios::selectorOf;
using Application = quorvantis::platform::UIApplication;
using Bytes = quorvantis::platform::NSData;
using Center = quorvantis::platform::UNUserNotificationCenter;
using Dictionary = quorvantis::platform::NSDictionary;
using Text = quorvantis::platform::NSString;

const double QuorvantisPushVersionNumber = QUORVANTIS_VERSION;
const unsigned char QuorvantisPushVersionString[] =
    "@(#)PROGRAM:QuorvantisPush  PROJECT:QuorvantisPush-" QUORVANTIS_VERSION_MAJOR "\n";

namespace {

class PushCore final : public quorvantis::Push {
 public:
  explicit PushCore(::Push* object) : quorvantis::Push(object) {}

  using quorvantis::Push::emptyFields;
  bool checkAppHash() override { return [object() checkAppHash]; }
  [[nodiscard]] Text hexadecimalStringFromData(const Bytes& data) override {
    return retained<Text>([object() hexadecimalStringFromData:objectOf(data)]);
  }
  void didReceiveRemoteNotification(const Dictionary& userInfo) override {
    [object() didReceiveRemoteNotification:objectOf(userInfo)];
  }

 protected:
  [[nodiscard]] Text className() const override { return retained<Text>([[object() class] description]); }
  [[nodiscard]] Ref<quorvantis::PushRequestData> makePushRequestData() override {
    return quorvantis::framework::makeRequestData();
  }

 private:
  [[nodiscard]] ::Push* object() const { return static_cast<::Push*>(front()); }
};

// The host's delegate is any object, and is not retained, not even during a callback.
constexpr PushDelegate::Table kDelegateTable{
    [](void* object, Selector selector) -> bool {
      return [static_cast<id>(object) respondsToSelector:selectorOf(selector)];
    },
    [](void* object, Selector selector, const Object& argument) {
      quorvantis::platform::ios::send(static_cast<id>(object), selector, argument);
    }};

}  // namespace

@implementation Push

static PushCore& coreOf(Push* object) { return *static_cast<PushCore*>(object->_core); }

static Ref<quorvantis::Push> allocInit(void* receiver) {
  Push* object = [[static_cast<Class>(receiver) alloc] init];
  return object == nil ? Ref<quorvantis::Push>() : Ref<quorvantis::Push>::adopt(&coreOf(object));
}

+ (Push*)shared {
  const quorvantis::Push* shared = quorvantis::Push::sharedMadeBy(&allocInit, self);
  return shared == nullptr ? nil : autoreleased(shared->self());
}

// The fields exist from allocation to deallocation, as plain ones do: before init, and while they are
// released.
+ (instancetype)allocWithZone:(NSZone*)zone {
  Push* object = [super allocWithZone:zone];
  object->_core = new PushCore(object);
  return object;
}

- (instancetype)init {
  self = [super init];
  coreOf(self).quorvantis::Push::init();
  return self;
}

- (void)dealloc {
  coreOf(self).emptyFields();
  coreOf(self).emptyFields();  // what their destruction has set
  delete &coreOf(self);
  [super dealloc];
}

- (NSString*)appHash {
  return autoreleased(coreOf(self).appHash());
}

- (void)setAppHash:(NSString*)appHash {
  coreOf(self).setAppHash(retained<Text>(appHash));
}

- (BOOL)deactivateGPS {
  return coreOf(self).deactivateGPS();
}

- (void)setDeactivateGPS:(BOOL)deactivateGPS {
  coreOf(self).setDeactivateGPS(deactivateGPS);
}

- (id)delegate {
  return static_cast<id>(coreOf(self).delegate().object());
}

- (void)setDelegate:(id)delegate {
  coreOf(self).setDelegate(delegate == nil ? PushDelegate() : PushDelegate(delegate, kDelegateTable));
}

- (void)activePushNotificationsInForegroundApp:(BOOL)active {
  coreOf(self).quorvantis::Push::activePushNotificationsInForegroundApp(active);
}

- (void)activePushNotifications:(BOOL)activate {
  coreOf(self).quorvantis::Push::activePushNotifications(static_cast<std::uint8_t>(activate));
}

- (void)registerForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken {
  coreOf(self).quorvantis::Push::registerForRemoteNotificationsWithDeviceToken(retained<Bytes>(deviceToken));
}

- (NSString*)hexadecimalStringFromData:(NSData*)data {
  return autoreleased(coreOf(self).quorvantis::Push::hexadecimalStringFromData(retained<Bytes>(data)));
}

- (BOOL)checkAppHash {
  return coreOf(self).quorvantis::Push::checkAppHash();
}

- (NSString*)getVersion {
  return autoreleased(coreOf(self).quorvantis::Push::getVersion());
}

- (void)resetBadge {
  coreOf(self).quorvantis::Push::resetBadge();
}

- (void)registerFinish {
  coreOf(self).quorvantis::Push::registerFinish();
}

- (void)onRegisterToken:(id)token {
  coreOf(self).quorvantis::Push::onRegisterToken(retained(token));
}

- (void)onUpdateToken:(id)token {
  coreOf(self).quorvantis::Push::onUpdateToken(retained(token));
}

- (void)onError:(id)error {
  coreOf(self).quorvantis::Push::onError(retained(error));
}

- (void)didReceiveRemoteNotification:(NSDictionary*)userInfo {
  coreOf(self).quorvantis::Push::didReceiveRemoteNotification(retained<Dictionary>(userInfo));
}

- (void)application:(UIApplication*)application
    didRegisterForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken {
  coreOf(self).quorvantis::Push::applicationDidRegisterForRemoteNotificationsWithDeviceToken(
      retained<Application>(application), retained<Bytes>(deviceToken));
}

- (void)application:(UIApplication*)application
    didFailToRegisterForRemoteNotificationsWithError:(NSError*)error {
  coreOf(self).quorvantis::Push::applicationDidFailToRegisterForRemoteNotificationsWithError(
      retained<Application>(application), retained<quorvantis::platform::NSError>(error));
}

- (void)application:(UIApplication*)application
    didReceiveRemoteNotification:(NSDictionary*)userInfo
          fetchCompletionHandler:(void (^)(UIBackgroundFetchResult))completionHandler {
  coreOf(self).quorvantis::Push::applicationDidReceiveRemoteNotification(
      retained<Application>(application), retained<Dictionary>(userInfo), handlerFrom(completionHandler));
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
  using namespace quorvantis::platform;
  coreOf(self).quorvantis::Push::userNotificationCenterWillPresentNotification(
      retained<Center>(center), retained<quorvantis::platform::UNNotification>(notification),
      handlerFrom(completionHandler).as<UNNotificationPresentationHandler>());
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
  coreOf(self).quorvantis::Push::userNotificationCenterDidReceiveNotificationResponse(
      retained<Center>(center), retained<quorvantis::platform::UNNotificationResponse>(response),
      handlerFrom(completionHandler));
}

@end
