// The host application over the Objective-C Push.
#import <QuorvantisPush/QuorvantisPush.h>

#include "device/events.h"
#include "facade/shared_slot.h"
#include "scenario/host.h"
#include "tests/gnustep/standins.h"

namespace events = quorvantis::device::events;

using quorvantis::standins::errorFrom;
using quorvantis::standins::objectFrom;
using quorvantis::standins::stringFrom;
using quorvantis::standins::textOf;
using quorvantis::standins::valueFrom;

/// Records its callbacks; the set of callbacks that it responds to can be changed.
@interface RecordingDelegate : NSObject <PushDelegate> {
  NSSet* _callbacks;  // nil: all of them
}
@end

@implementation RecordingDelegate

- (void)dealloc {
  [_callbacks release];
  [super dealloc];
}

- (void)setCallbacks:(NSSet*)callbacks {
  [_callbacks autorelease];
  _callbacks = [callbacks copy];
}

- (BOOL)respondsToSelector:(SEL)selector {
  NSString* name = NSStringFromSelector(selector);
  if (_callbacks != nil && [name hasPrefix:@"on"]) return [_callbacks containsObject:name];
  return [super respondsToSelector:selector];
}

- (void)record:(SEL)selector argument:(id)argument {
  if (![self respondsToSelector:selector]) return [self doesNotRecognizeSelector:selector];
  quorvantis::standins::deviceInUse()->record.add(
      events::callback(sel_getName(selector), valueFrom(argument).value_or(quorvantis::json::Value())));
}

- (void)onGetToken:(NSString*)token {
  [self record:_cmd argument:token];
}

- (void)onReceiveNotification:(NSDictionary*)notification {
  [self record:_cmd argument:notification];
}

- (void)onRegisterToken:(id)token {
  [self record:_cmd argument:token];
}

- (void)onUpdateToken:(id)token {
  [self record:_cmd argument:token];
}

- (void)onError:(NSString*)error {
  [self record:_cmd argument:error];
}

@end

namespace quorvantis::scenario {

namespace {

// GNUstep reports the message that failed in one of these ways.
std::string selectorIn(NSString* reason) {
  const struct {
    NSString* before;
    NSString* after;
  } forms[] = {{@"does not recognize ", @""}, {@" ", @"]: unrecognized selector"}, {@"(in '", @"')"}};
  for (const auto& form : forms) {
    const NSRange start = [reason rangeOfString:form.before];
    if (start.location == NSNotFound) continue;
    NSString* rest = [reason substringFromIndex:NSMaxRange(start)];
    if ([form.after length] == 0) return *textOf(rest);
    const NSRange end = [rest rangeOfString:form.after];
    if (end.location != NSNotFound) return *textOf([rest substringToIndex:end.location]);
  }
  return *textOf(reason);
}

NSData* dataFrom(const std::string& bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

template <class Work>
auto inPool(Work work) {
  @autoreleasepool {
    return work();
  }
}

class ObjcHost final : public Host {
 public:
  explicit ObjcHost(device::Device& device) : device_(device) {
    standins::useDevice(&device);
    pool_ = [[NSAutoreleasePool alloc] init];
    delegate_ = [[RecordingDelegate alloc] init];
    device_.applicationDelegate = {[this](const std::string& token) { deliverToken(token); },
                                   [this](const std::string& error) { didFailToRegister(error); }};
  }
  ~ObjcHost() override {
    device_.applicationDelegate = {};
    [delegate_ release];
    [pool_ drain];
    standins::useDevice(nullptr);
  }
  ObjcHost(const ObjcHost&) = delete;
  ObjcHost& operator=(const ObjcHost&) = delete;

  void launch() override {
    inPool([&] {
      [delegate_ setCallbacks:nil];
      [[Push shared] setDelegate:delegate_];
    });
  }

  void terminate() override { inPool(&emptySharedSlot); }

  void perform(const std::function<void()>& work) override {
    inPool([&] {
      @try {
        work();
      } @catch (NSException* exception) {
        device_.record.add(events::raised(selectorIn([exception reason])));
      }
    });
  }

  void setAppHash(const std::optional<std::string>& appHash) override {
    inPool([&] { [[Push shared] setAppHash:stringFrom(appHash)]; });
  }
  void setDeactivateGPS(bool deactivateGPS) override {
    inPool([&] { [[Push shared] setDeactivateGPS:deactivateGPS]; });
  }
  void setActiveInForeground(bool active) override {
    inPool([&] { [[Push shared] activePushNotificationsInForegroundApp:active]; });
  }
  void setDelegate(const std::optional<std::set<std::string>>& callbacks) override {
    inPool([&] {
      NSMutableSet* names = [NSMutableSet set];
      if (callbacks) {
        for (const std::string& name : *callbacks) [names addObject:stringFrom(name)];
      }
      [delegate_ setCallbacks:names];
      [[Push shared] setDelegate:callbacks ? delegate_ : nil];
    });
  }

  void activate(std::uint8_t value) override { [[Push shared] activePushNotifications:value]; }
  void deliverToken(const std::string& bytes) override {
    [[Push shared] registerForRemoteNotificationsWithDeviceToken:dataFrom(bytes)];
  }
  void deliver(Arrival arrival, const json::Dictionary& userInfo, const std::string& action) override {
    NSDictionary* payload = objectFrom(userInfo);
    switch (arrival) {
      case Arrival::foreground:
        return standins::deliverInForeground(payload);
      case Arrival::background:
        return [[Push shared] application:[UIApplication sharedApplication]
             didReceiveRemoteNotification:payload
                   fetchCompletionHandler:^(UIBackgroundFetchResult) {
                     device_.record.add(events::completed(
                         "application:didReceiveRemoteNotification:fetchCompletionHandler:"));
                   }];
      case Arrival::tap:
        return standins::deliverResponse(payload, stringFrom(action));
    }
  }

  bool checkAppHash() override { return [[Push shared] checkAppHash]; }
  std::optional<std::string> getVersion() override { return textOf([[Push shared] getVersion]); }
  void resetBadge() override { [[Push shared] resetBadge]; }
  void registerFinish() override { [[Push shared] registerFinish]; }
  void didRegister(const std::string& token) override {
    [[Push shared] application:[UIApplication sharedApplication]
        didRegisterForRemoteNotificationsWithDeviceToken:dataFrom(token)];
  }
  void didFailToRegister(const std::string& error) override {
    [[Push shared] application:[UIApplication sharedApplication]
        didFailToRegisterForRemoteNotificationsWithError:errorFrom(error)];
  }

 private:
  device::Device& device_;
  NSAutoreleasePool* pool_;
  RecordingDelegate* delegate_;
};

}  // namespace

std::unique_ptr<Host> makeHost(device::Device& device) { return std::make_unique<ObjcHost>(device); }

}  // namespace quorvantis::scenario
