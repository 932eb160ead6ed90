// The Objective-C classes where transcripts can't show their behaviour: object identity, ownership, and what
// subclasses may override.
#import <QuorvantisPush/QuorvantisPush.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "device/device.h"
#include "facade/shared_slot.h"
#include "platform/Object.h"
#import "platform/ios/CompletionHandler.h"
#include "tests/gnustep/standins.h"

// GNUstep's counts of living objects; its header hides them from optimised builds.
extern "C" BOOL GSDebugAllocationActive(BOOL active);
extern "C" int GSDebugAllocationCount(Class aClass);
extern "C" int GSDebugAllocationTotal(Class aClass);

// Wraps the runtime's lock with the linker's help: records what is locked.
static std::vector<id> lockedClasses;
extern "C" int __real_objc_sync_enter(id object);
extern "C" int __wrap_objc_sync_enter(id object) {
  lockedClasses.push_back(object);
  return __real_objc_sync_enter(object);
}

using quorvantis::standins::textOf;
using Events = std::vector<std::string>;

namespace {

int liveDelegates = 0;
Events calls;
std::map<std::string, id> settingsObjects;  // the objects that the settings were handed, not retained

/// The reason of what `work` raised; empty when it did not raise.
template <class Work>
std::string raisedBy(Work work) {
  @try {
    work();
  } @catch (NSException* exception) {
    return *textOf([exception reason]);
  }
  return "";
}

}  // namespace

/// Answers to some of the callbacks, and keeps the last argument.
@interface TestDelegate : NSObject {
 @public
  NSMutableSet* callbacks;
  id last;
}
@end

@implementation TestDelegate

- (instancetype)init {
  self = [super init];
  ++liveDelegates;
  callbacks = [[NSMutableSet alloc] initWithObjects:@"onReceiveNotification:", @"onRegisterToken:", nil];
  return self;
}

- (void)dealloc {
  --liveDelegates;
  [callbacks release];
  [last release];
  [super dealloc];
}

- (BOOL)respondsToSelector:(SEL)selector {
  NSString* name = NSStringFromSelector(selector);
  return [name hasPrefix:@"on"] ? [callbacks containsObject:name] : [super respondsToSelector:selector];
}

- (void)keep:(id)argument from:(SEL)selector {
  calls.push_back(sel_getName(selector));
  [last autorelease];
  last = [argument retain];
}

- (void)onReceiveNotification:(NSDictionary*)notification {
  [self keep:notification from:_cmd];
}

- (void)onRegisterToken:(id)token {
  [self keep:token from:_cmd];
}

- (void)onError:(id)error {
  [self keep:error from:_cmd];
}

@end

/// Overrides the operation by which messages are sent that are known at run time only.
@interface PerformingDelegate : TestDelegate
@end

@implementation PerformingDelegate

- (id)performSelector:(SEL)selector withObject:(id)object {
  calls.push_back("performSelector:withObject:");
  return nil;
}

@end

/// Overrides what the library sends to itself.
@interface SubPush : Push
@end

@implementation SubPush

+ (NSString*)description {
  return @"A subclass";
}

- (BOOL)checkAppHash {
  calls.push_back(sel_getName(_cmd));
  return [super checkAppHash];
}

- (NSString*)hexadecimalStringFromData:(NSData*)data {
  calls.push_back(sel_getName(_cmd));
  return @"overridden";
}

- (void)didReceiveRemoteNotification:(NSDictionary*)userInfo {
  calls.push_back(sel_getName(_cmd));
  [super didReceiveRemoteNotification:userInfo];
}

@end

/// Releases itself in its initialiser.
@interface UnmadePush : Push
@end

@implementation UnmadePush

- (instancetype)init {
  EXPECT_EQ(raisedBy([self] { [self resetBadge]; }), "");
  [self release];
  return nil;
}

@end

/// Owned by a client, and sends it messages when it is deallocated.
@interface PartingDelegate : TestDelegate {
 @public
  PushRequestData* client;
}
@end

@implementation PartingDelegate

- (void)dealloc {
  EXPECT_EQ([client userDefaultsPrefix], nil) << "what was declared after it has gone before it";
  EXPECT_EQ([client delegate], nil);
  [client cancel];
  [client downloadFinished:@"pushlibRegistrarToken"];
  [client setDelegate:[[[TestDelegate alloc] init] autorelease]];
  [super dealloc];
}

@end

/// Replaces itself by another object while it is asked.
@interface ReplacingDelegate : TestDelegate {
 @public
  PushRequestData* client;
  id successor;
}
@end

@implementation ReplacingDelegate

- (BOOL)respondsToSelector:(SEL)selector {
  if (client != nil && sel_isEqual(selector, @selector(onRegisterToken:))) [client setDelegate:successor];
  return [super respondsToSelector:selector];
}

@end

@interface SubRequestData : PushRequestData
@end

@implementation SubRequestData

- (id)delegate {
  return nil;
}

- (NSString*)crearCamposComunes {
  return @"fields";
}

- (void)sendConnexion:(NSString*)connexion postParameters:(NSString*)parameters url:(NSString*)url {
  calls.push_back(*textOf(parameters));
}

@end

namespace {

PushRequestData* endingClient = nil;
/// Between functions of different types, by way of the one that compilers take for none.
template <class To, class From>
To* castFunction(From* function) {
  return reinterpret_cast<To*>(reinterpret_cast<void (*)()>(function));
}

template <class Function>
IMP asMethod(Function* function) {
  return castFunction<std::remove_pointer_t<IMP>>(function);
}

IMP deallocTransport = nullptr;

void tellTheClientWhileEnding(id transport, SEL selector) {
  [endingClient cancel];
  [endingClient downloadFinished:@"pushlibRegistrarToken"];
  [endingClient setDelegate:nil];
  castFunction<void(id, SEL)>(deallocTransport)(transport, selector);
}

TestDelegate* lateDelegate = nil;

NSDictionary* replaceTheDelegateWhileAsked(id, SEL) {
  [endingClient setDelegate:lateDelegate];
  return @{@"pushlibRegistrarToken" : [@"{}" dataUsingEncoding:NSUTF8StringEncoding]};
}

void countCancel(id, SEL) { calls.push_back("transport cancel"); }

/// Replaces a class's method as long as this exists.
class Replaced {
 public:
  Replaced(Class aClass, SEL selector, IMP by)
      : method_(class_getInstanceMethod(aClass, selector)),
        original_(method_setImplementation(method_, by)) {}
  ~Replaced() { method_setImplementation(method_, original_); }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
  [[nodiscard]] IMP original() const { return original_; }

 private:
  Method method_;
  IMP original_;
};

void keepSettingsObject(id, SEL, id object, NSString* key) { settingsObjects[*textOf(key)] = object; }

class ObjectiveC : public testing::Test {
 protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    quorvantis::standins::useDevice(&device);
    calls.clear();
    settingsObjects.clear();
  }

  void TearDown() override {
    device.endProcess();
    quorvantis::emptySharedSlot();
    drain();
    quorvantis::standins::useDevice(nullptr);
    [pool release];
  }

  void drain() {
    [pool drain];
    pool = [[NSAutoreleasePool alloc] init];
  }

  void settle() {
    device.queue.settle([](const quorvantis::device::MainQueue::Task& task) { task(); });
  }

  /// The names of the events since the last call.
  Events events() {
    Events names;
    for (const auto& event : device.record.take()) names.push_back(*event.at("event").get<std::string>());
    return names;
  }

  NSDictionary* payload(NSDictionary* aps) { return [NSDictionary dictionaryWithObject:aps forKey:@"aps"]; }

  NSAutoreleasePool* pool = nil;
  quorvantis::device::Device device;
};

TEST_F(ObjectiveC, AsksTheDelegateBeforeEachSend) {
  TestDelegate* delegate = [[[TestDelegate alloc] init] autorelease];
  [[Push shared] setDelegate:delegate];
  const Events once = {"onReceiveNotification:"};
  [[Push shared] didReceiveRemoteNotification:@{}];
  EXPECT_EQ(calls, once);
  [delegate->callbacks removeObject:@"onReceiveNotification:"];
  [[Push shared] didReceiveRemoteNotification:@{}];
  EXPECT_EQ(calls, once);
  [delegate->callbacks addObject:@"onReceiveNotification:"];
  [[Push shared] didReceiveRemoteNotification:@{}];
  EXPECT_EQ(calls, (Events{"onReceiveNotification:", "onReceiveNotification:"}));
}

TEST_F(ObjectiveC, SendsTheDelegateTheCallbackItself) {
  TestDelegate* delegate = [[[PerformingDelegate alloc] init] autorelease];
  [[Push shared] setDelegate:delegate];
  [[Push shared] onRegisterToken:@"f00d"];
  [[Push shared] setDelegate:nil];
  PushRequestData* client = [[[PushRequestData alloc] init] autorelease];
  [delegate->callbacks addObject:@"onError:"];
  [client setDelegate:delegate];
  [client downloadFinished:@"pushlibRegistrarToken"];
  [client setDelegate:nil];
  EXPECT_EQ(calls, (Events{"onRegisterToken:", "onError:"}));
}

TEST_F(ObjectiveC, SendsNothingToNil) {
  [[Push shared] setDelegate:nil];
  device.facts.systemVersion = "9.3";
  EXPECT_EQ(raisedBy([] { [[Push shared] activePushNotifications:YES]; }), "");
  EXPECT_FALSE([[Push shared] checkAppHash]);

  TestDelegate* delegate = [[[TestDelegate alloc] init] autorelease];
  [[Push shared] setDelegate:delegate];
  EXPECT_FALSE([[Push shared] checkAppHash]);
  EXPECT_EQ(calls, Events{}) << "a delegate without onError: was told";
  [[Push shared] activePushNotifications:YES];
  EXPECT_EQ(calls, Events{"onError:"}) << "on a system that is too old the delegate is not asked";
  [[Push shared] setDelegate:[[[NSObject alloc] init] autorelease]];
  EXPECT_NE(raisedBy([] { [[Push shared] activePushNotifications:YES]; }).find("onError:"),
            std::string::npos);
  [[Push shared] setDelegate:nil];
}

TEST_F(ObjectiveC, PassesTheSameObjects) {
  TestDelegate* delegate = [[[TestDelegate alloc] init] autorelease];
  [[Push shared] setDelegate:delegate];
  const Replaced set([[NSUserDefaults standardUserDefaults] class], @selector(setObject:forKey:),
                     asMethod(&keepSettingsObject));

  NSDictionary* alert = @{@"title" : @"t"};
  NSString* type = [NSMutableString stringWithString:@"pushlib-extras"];
  NSNumber* badge = [NSNumber numberWithDouble:3.5];
  NSMutableArray* extra = [NSMutableArray arrayWithObject:@"x"];
  NSDictionary* aps = @{@"alert" : alert, @"type" : type, @"badge" : badge, @"extra2" : extra};
  [[Push shared] didReceiveRemoteNotification:payload(aps)];
  NSMutableString* hash = [NSMutableString stringWithString:@"f00d"];
  [[Push shared] setAppHash:hash];
  EXPECT_TRUE([[Push shared] checkAppHash]);

  EXPECT_EQ([delegate->last objectForKey:@"alert"], alert);
  EXPECT_EQ([delegate->last objectForKey:@"type"], type);
  EXPECT_EQ([delegate->last objectForKey:@"badge"], badge);
  EXPECT_EQ(settingsObjects.at("pushExtra2"), extra);
  EXPECT_EQ(settingsObjects.at("pushAppHash"), hash);
  EXPECT_EQ([[Push shared] appHash], hash);
  [[Push shared] onRegisterToken:extra];
  EXPECT_EQ(delegate->last, extra);
  [[Push shared] setDelegate:nil];
}

TEST_F(ObjectiveC, PushDoesNotRetainItsDelegate) {
  TestDelegate* delegate = [[TestDelegate alloc] init];
  Push* push = [Push shared];
  [push setDelegate:delegate];
  EXPECT_EQ([push delegate], delegate);
  [push didReceiveRemoteNotification:@{}];
  drain();
  EXPECT_EQ([delegate retainCount], 1U);
  [[Push shared] setDelegate:nil];
  EXPECT_EQ([[Push shared] delegate], nil);
  [delegate release];
  EXPECT_EQ(liveDelegates, 0);
}

TEST_F(ObjectiveC, TheRequestClientRetainsItsDelegate) {
  PushRequestData* client = [[PushRequestData alloc] init];
  TestDelegate* delegate = [[TestDelegate alloc] init];
  [client setDelegate:delegate];
  [delegate release];
  drain();
  EXPECT_EQ(liveDelegates, 1);
  EXPECT_EQ([client delegate], delegate);
  [client setDelegate:nil];
  drain();
  EXPECT_EQ(liveDelegates, 0);

  delegate = [[TestDelegate alloc] init];
  [client setDelegate:delegate];
  [delegate release];
  [client release];
  drain();
  EXPECT_EQ(liveDelegates, 0);
}

TEST_F(ObjectiveC, TheRequestClientWorksOnItsOwn) {
  SubRequestData* client = [[[SubRequestData alloc] init] autorelease];
  TestDelegate* delegate = [[[TestDelegate alloc] init] autorelease];
  [delegate->callbacks addObject:@"onError:"];
  [client setDelegate:delegate];
  [client downloadFinished:@"pushlibRegistrarToken"];
  EXPECT_EQ(calls, Events{"onError:"}) << "the field counts, not an override of its getter";
  EXPECT_EQ(textOf(delegate->last), "Error --> registerToken");

  calls.clear();
  [client registerForRemoteNotificationsWithDeviceToken:@"00ab" appHash:nil pushVersion:nil];
  EXPECT_EQ(calls, Events{"&tarea=pushlibRegistrarToken&token=00ab&fields"});

  PushRequestData* plain = [[[PushRequestData alloc] init] autorelease];
  EXPECT_EQ(textOf([plain userDefaultsPrefix]), "quorvantis_");
  [plain setUserDefaultsPrefix:@""];
  device.storeFromElsewhere({{"jsonDevice", 1.0}});
  EXPECT_EQ(textOf([plain crearCamposComunes]), "jsonApp=(null)&jsonDevice=1&jsonLibreria=(null)&jsonGeo={}");
  [client setDelegate:nil];
}

TEST_F(ObjectiveC, ReadsTheDelegateOnceAtTheSend) {
  PushRequestData* client = [[[PushRequestData alloc] init] autorelease];
  ReplacingDelegate* replacing = [[[ReplacingDelegate alloc] init] autorelease];
  replacing->client = client;
  replacing->successor = [[[TestDelegate alloc] init] autorelease];
  [client setDelegate:replacing];
  endingClient = client;
  lateDelegate = replacing;
  const Replaced answers(NSClassFromString(@"DeviceConnexion"), @selector(receivedData),
                         asMethod(&replaceTheDelegateWhileAsked));
  [client setDelegate:nil];
  [client downloadFinished:@"pushlibRegistrarToken"];
  EXPECT_EQ(calls, Events{"onRegisterToken:"}) << "the delegate of the moment of sending is told";
  EXPECT_EQ([client delegate], replacing -> successor);
  replacing->client = nil;
}

// Like plain fields: they exist before init, which only sets what it must, and become nil one after the other
// at the end.
TEST_F(ObjectiveC, FieldsExistFromAllocationToDeallocation) {
  Push* push = [Push alloc];
  TestDelegate* delegate = [[[TestDelegate alloc] init] autorelease];
  [push setAppHash:@"f00d"];
  [push setDeactivateGPS:YES];
  [push setDelegate:delegate];
  [push registerForRemoteNotificationsWithDeviceToken:[NSData data]];
  EXPECT_EQ(events(), (Events{"stored", "synchronized"}));
  for (int times = 0; times < 2; ++times) {
    push = [push init];
    EXPECT_EQ(textOf([push appHash]), "f00d");
    EXPECT_TRUE([push deactivateGPS]);
    EXPECT_EQ([push delegate], delegate);
    [push activePushNotificationsInForegroundApp:YES];
  }
  [push setDelegate:nil];
  quorvantis::standins::forgetDelegate(push);

  PushRequestData* client = [PushRequestData alloc];
  [client setUserDefaultsPrefix:@"early"];
  [client setDelegate:delegate];
  [client downloadFinished:@"pushlibRegistrarToken"];
  EXPECT_EQ(textOf([client crearCamposComunes]),
            "jsonApp=(null)&jsonDevice=(null)&jsonLibreria=(null)&jsonGeo={}");
  client = [[client init] init];
  EXPECT_EQ(textOf([client userDefaultsPrefix]), "quorvantis_");
  EXPECT_EQ([client delegate], delegate);
  [client release];
}

TEST_F(ObjectiveC, FieldsMaySendMessagesDuringAClientsDestruction) {
  PushRequestData* client = [[PushRequestData alloc] init];
  PartingDelegate* parting = [[PartingDelegate alloc] init];
  parting->client = client;
  [client setDelegate:parting];
  [parting release];
  drain();
  [client release];
  drain();
  EXPECT_EQ(liveDelegates, 0);

  endingClient = [[PushRequestData alloc] init];
  const Replaced dealloc(NSClassFromString(@"DeviceConnexion"), @selector(dealloc),
                         asMethod(&tellTheClientWhileEnding));
  deallocTransport = dealloc.original();
  [endingClient release];
  drain();
}

TEST_F(ObjectiveC, ClientsForwardACancel) {
  PushRequestData* client = [[[PushRequestData alloc] init] autorelease];
  const Replaced cancel(NSClassFromString(@"DeviceConnexion"), @selector(cancel), asMethod(&countCancel));
  [client cancel];
  EXPECT_EQ(calls, Events{"transport cancel"});
}

// A block that is passed on outlives its scope, but not its handler.
TEST_F(ObjectiveC, HandlersOwnACopyOfTheirBlock) {
  const auto calledTimes = std::make_shared<int>(0);
  const auto handlerOfABlockThatIsGone = [](std::shared_ptr<int> times) {
    return quorvantis::platform::ios::handlerFrom(^{
      ++*times;
    });
  };
  @autoreleasepool {
    const auto handler = handlerOfABlockThatIsGone(calledTimes);
    EXPECT_EQ(calledTimes.use_count(), 2);
    id block = [static_cast<QuorvantisPushCompletionHandler*>(handler.get()) block];
    ((void (^)(void))block)();
    EXPECT_EQ(*calledTimes, 1);
  }
  EXPECT_EQ(calledTimes.use_count(), 1);
  EXPECT_FALSE(quorvantis::platform::ios::handlerFrom(nil));
}

TEST_F(ObjectiveC, LocksItsClassWhileItMakesTheSharedInstance) {
  lockedClasses.clear();
  [SubPush shared];
  EXPECT_EQ(lockedClasses, (std::vector<id>{[Push class]}));
}

TEST_F(ObjectiveC, ShowsItsAlertAnimatedOnTheWholeScreen) {
  NSDictionary* aps = @{@"alert" : @{}, @"type" : @"pushlib-abrirurl", @"urlnoti" : @"https://example.com"};
  [[Push shared] didReceiveRemoteNotification:payload(aps)];
  const auto* alert = device.screen.find(1);
  ASSERT_NE(alert, nullptr);
  EXPECT_TRUE(alert->fillsScreen);
  EXPECT_TRUE(alert->animated);
  EXPECT_TRUE(device.screen.tap(1));
}

TEST_F(ObjectiveC, SharedIsOfTheReceivingClassAndSendsItselfMessages) {
  EXPECT_EQ([UnmadePush shared], nil);
  Push* push = [SubPush shared];
  EXPECT_EQ([push class], [SubPush class]);
  EXPECT_EQ([Push shared], push);
  [push setAppHash:@"f00d"];
  [push registerForRemoteNotificationsWithDeviceToken:[NSData dataWithBytes:"\1" length:1]];
  [push application:[UIApplication sharedApplication]
      didReceiveRemoteNotification:@{}
            fetchCompletionHandler:^(UIBackgroundFetchResult){
            }];
  EXPECT_EQ(calls, (Events{"checkAppHash", "hexadecimalStringFromData:", "didReceiveRemoteNotification:"}));
  EXPECT_EQ(device.userDefault("tokenMovil"), "overridden");

  events();
  [push onError:nil];
  EXPECT_EQ(device.record.take().at(0).at("tag"), "[A subclass]");
}

TEST_F(ObjectiveC, ASecondInstanceIsIndependent) {
  Push* second = [[[Push alloc] init] autorelease];
  EXPECT_NE(second, [Push shared]);
  [second setAppHash:@"second"];
  [second setDeactivateGPS:YES];
  EXPECT_EQ([[Push shared] appHash], nil);
  EXPECT_FALSE([[Push shared] deactivateGPS]);
  [second activePushNotifications:2];
  EXPECT_EQ(events(), Events{});
  [second activePushNotifications:YES];
  EXPECT_EQ(events(), Events{"registerUser"});
  settle();
  UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
  EXPECT_EQ([center delegate], second);
  [center setDelegate:nil];
}

TEST_F(ObjectiveC, APlainTextAlertRaisesAndLeavesTheLibraryUsable) {
  NSDictionary* aps = @{@"alert" : @"plain", @"badge" : @5};
  EXPECT_NE(
      raisedBy([&] { [[Push shared] didReceiveRemoteNotification:payload(aps)]; }).find("objectForKey:"),
      std::string::npos);
  EXPECT_EQ(events(), Events{});
  [[Push shared] didReceiveRemoteNotification:payload(@{@"alert" : @{}, @"badge" : @5})];
  EXPECT_EQ(events(), Events{"badge"});
}

TEST_F(ObjectiveC, HopsToTheMainQueue) {
  std::vector<Events> turns;
  const auto runner = [&](const quorvantis::device::MainQueue::Task& task) {
    task();
    turns.push_back(events());
  };
  [[Push shared] registerFinish];
  EXPECT_EQ(events(), Events{"authorizationRequested"});
  device.queue.settle(runner);
  ASSERT_GE(turns.size(), 2U);
  EXPECT_EQ(turns[0], Events{}) << "the answer itself registers nothing";
  EXPECT_EQ(turns[1], Events{"registerForRemoteNotifications"});

  NSDictionary* aps = @{@"alert" : @{}, @"type" : @"pushlib-abrirurl", @"urlnoti" : @"https://example.com"};
  quorvantis::standins::deliverResponse(payload(aps), @"any");
  turns.clear();
  device.queue.advance(std::chrono::nanoseconds(999'999'999), runner);
  EXPECT_TRUE(turns.empty());
  device.queue.advance(std::chrono::nanoseconds(1), runner);
  EXPECT_EQ(turns, std::vector<Events>{{"opened"}});
}

TEST_F(ObjectiveC, HasTheDeclaredInterface) {
  EXPECT_FALSE([Push instancesRespondToSelector:@selector(window)]);
  EXPECT_FALSE([Push instancesRespondToSelector:@selector(setWindow:)]);
  EXPECT_EQ(QuorvantisPushVersionNumber, 1.0);
  EXPECT_STREQ(reinterpret_cast<const char*>(QuorvantisPushVersionString),
               "@(#)PROGRAM:QuorvantisPush  PROJECT:QuorvantisPush-1\n");
}

TEST_F(ObjectiveC, AThousandNotificationsLeaveNothingBehind) {
  GSDebugAllocationActive(YES);
  const auto count = [] {
    std::map<std::string, int> live;
    for (const char* name : {"Push", "PushRequestData", "QuorvantisPushCompletionHandler", "TestDelegate",
                             "DeviceConnexion", "DeviceRegisterLib", "DeviceWindow", "DeviceViewController",
                             "DeviceAlertController", "DeviceAlertAction", "DeviceNotification", "DeviceURL",
                             "DeviceError", "NSDoubleNumber", "GSMutableDictionary", "GSDictionary"}) {
      live[name] = GSDebugAllocationCount(NSClassFromString([NSString stringWithUTF8String:name]));
    }
    return live;
  };
  const auto notifyOnce = [&] {
    Push* push = [Push shared];
    TestDelegate* delegate = [[TestDelegate alloc] init];
    [push setDelegate:delegate];
    [push activePushNotificationsInForegroundApp:YES];
    [push activePushNotifications:YES];
    settle();
    NSDictionary* userInfo = payload(@{
      @"alert" : @{@"title" : @"t", @"body" : @"b"},
      @"type" : @"pushlib-abrirurl",
      @"urlnoti" : @"https://example.com",
      @"badge" : [NSNumber numberWithDouble:1.5]
    });
    quorvantis::standins::deliverInForeground(userInfo);
    quorvantis::standins::deliverResponse(userInfo, @"any");
    EXPECT_NE(raisedBy([&] { [push didReceiveRemoteNotification:payload(@{@"alert" : @"plain"})]; }), "");
    for (const int alert : device.screen.alerts()) device.screen.tap(alert);
    device.queue.advance(std::chrono::seconds(1), [](const auto& task) { task(); });
    EXPECT_EQ(calls, Events{"onReceiveNotification:"});
    calls.clear();
    [push setDelegate:nil];
    [delegate release];
    events();
    quorvantis::emptySharedSlot();
    drain();
  };
  notifyOnce();
  const auto before = count();
  for (int i = 0; i < 1000; ++i) notifyOnce();
  EXPECT_EQ(count(), before);
  EXPECT_GT(GSDebugAllocationTotal([Push class]), 1000) << "nothing was counted";
  GSDebugAllocationActive(NO);
}

}  // namespace
