// UserNotifications over the device.
#import <UserNotifications/UserNotifications.h>

#include "device/events.h"
#include "tests/gnustep/standins.h"

using quorvantis::standins::deviceInUse;

@interface DeviceNotificationCenter : UNUserNotificationCenter {
 @public
  id<UNUserNotificationCenterDelegate> _delegate;  // not retained; forgetDelegate() makes it weak
}
@end

@interface DeviceNotification : UNNotification {
 @public
  UNNotificationRequest* _request;
}
@end

@interface DeviceNotificationRequest : UNNotificationRequest {
 @public
  UNNotificationContent* _content;
}
@end

@interface DeviceNotificationContent : UNNotificationContent {
 @public
  NSDictionary* _userInfo;
}
@end

@interface DeviceNotificationResponse : UNNotificationResponse {
 @public
  UNNotification* _notification;
  NSString* _actionIdentifier;
}
@end

@implementation UNUserNotificationCenter

@dynamic delegate;

+ (UNUserNotificationCenter*)currentNotificationCenter {
  static UNUserNotificationCenter* center = [[DeviceNotificationCenter alloc] init];
  return center;
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler {
  deviceInUse()->requestAuthorization(
      static_cast<std::int64_t>(options), [block = quorvantis::standins::holdBlock(completionHandler)](
                                              bool granted, const std::optional<std::string>& error) {
        quorvantis::standins::callBlock(block, static_cast<BOOL>(granted),
                                        quorvantis::standins::errorFrom(error));
      });
}

@end

@implementation DeviceNotificationCenter

- (id<UNUserNotificationCenterDelegate>)delegate {
  return _delegate;
}

- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate {
  _delegate = delegate;
}

@end

@implementation UNNotificationContent
@dynamic userInfo;
@end

@implementation UNNotificationRequest
@dynamic content;
@end

@implementation UNNotification
@dynamic request;
@end

@implementation UNNotificationResponse
@dynamic notification, actionIdentifier;
@end

@implementation DeviceNotificationContent

- (NSDictionary*)userInfo {
  return _userInfo;
}

- (void)dealloc {
  [_userInfo release];
  [super dealloc];
}

@end

@implementation DeviceNotificationRequest

- (UNNotificationContent*)content {
  return _content;
}

- (void)dealloc {
  [_content release];
  [super dealloc];
}

@end

@implementation DeviceNotification

+ (DeviceNotification*)notificationWithUserInfo:(NSDictionary*)userInfo {
  DeviceNotificationContent* content = [[DeviceNotificationContent alloc] init];
  content->_userInfo = [userInfo retain];
  DeviceNotificationRequest* request = [[DeviceNotificationRequest alloc] init];
  request->_content = content;
  DeviceNotification* notification = [[[DeviceNotification alloc] init] autorelease];
  notification->_request = request;
  return notification;
}

- (UNNotificationRequest*)request {
  return _request;
}

- (void)dealloc {
  [_request release];
  [super dealloc];
}

@end

@implementation DeviceNotificationResponse

- (UNNotification*)notification {
  return _notification;
}

- (NSString*)actionIdentifier {
  return _actionIdentifier;
}

- (void)dealloc {
  [_notification release];
  [_actionIdentifier release];
  [super dealloc];
}

@end

namespace quorvantis::standins {

void deliverInForeground(NSDictionary* userInfo) {
  UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
  [[center delegate]
       userNotificationCenter:center
      willPresentNotification:[DeviceNotification notificationWithUserInfo:userInfo]
        withCompletionHandler:^(UNNotificationPresentationOptions options) {
          deviceInUse()->record.add(device::events::presented(static_cast<std::int64_t>(options)));
        }];
}

void deliverResponse(NSDictionary* userInfo, NSString* actionIdentifier) {
  UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
  DeviceNotificationResponse* response = [[[DeviceNotificationResponse alloc] init] autorelease];
  response->_notification = [[DeviceNotification notificationWithUserInfo:userInfo] retain];
  response->_actionIdentifier = [actionIdentifier copy];
  [[center delegate] userNotificationCenter:center
             didReceiveNotificationResponse:response
                      withCompletionHandler:^{
                        deviceInUse()->record.add(device::events::completed(
                            "userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:"));
                      }];
}

void forgetDelegate(id object) {
  UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
  if ([center delegate] == object) [center setDelegate:nil];
}

}  // namespace quorvantis::standins
