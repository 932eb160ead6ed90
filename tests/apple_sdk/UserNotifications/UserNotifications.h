// What the framework's sources and the sample hosts use of UserNotifications, declared.
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class UNUserNotificationCenter;

typedef NSUInteger UNAuthorizationOptions;
typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
  UNNotificationPresentationOptionNone = 0,
  UNNotificationPresentationOptionAlert = 4
};

@interface UNNotificationContent : NSObject
@property(nonatomic, readonly) NSDictionary* userInfo;
@end

@interface UNNotificationRequest : NSObject
@property(nonatomic, readonly) UNNotificationContent* content;
@end

@interface UNNotification : NSObject
@property(nonatomic, readonly) UNNotificationRequest* request;
@end

@interface UNNotificationResponse : NSObject
@property(nonatomic, readonly) UNNotification* notification;
@property(nonatomic, readonly) NSString* actionIdentifier;
@end

@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end

@interface UNUserNotificationCenter : NSObject
+ (UNUserNotificationCenter*)currentNotificationCenter;
/// Weak.
@property(nonatomic, assign, nullable) id<UNUserNotificationCenterDelegate> delegate;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* _Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
