// What the framework's sources use of UIKit, declared.
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class UIApplication, UIViewController, UIWindow;

typedef NS_ENUM(NSInteger, UIApplicationState) {
  UIApplicationStateActive,
  UIApplicationStateInactive,
  UIApplicationStateBackground
};
typedef NS_ENUM(NSUInteger, UIBackgroundFetchResult) {
  UIBackgroundFetchResultNewData,
  UIBackgroundFetchResultNoData,
  UIBackgroundFetchResultFailed
};
typedef NS_ENUM(NSInteger, UIAlertActionStyle) { UIAlertActionStyleDefault = 0 };
typedef NS_ENUM(NSInteger, UIAlertControllerStyle) {
  UIAlertControllerStyleActionSheet = 0,
  UIAlertControllerStyleAlert
};
typedef CGFloat UIWindowLevel;

FOUNDATION_EXPORT const UIWindowLevel UIWindowLevelAlert;

@interface UIResponder : NSObject
@end

@protocol UIApplicationDelegate <NSObject>
@optional
@property(nullable, nonatomic, strong) UIWindow* window;
- (void)application:(UIApplication*)application
    didRegisterForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken;
- (void)application:(UIApplication*)application
    didFailToRegisterForRemoteNotificationsWithError:(NSError*)error;
- (void)application:(UIApplication*)application
    didReceiveRemoteNotification:(NSDictionary*)userInfo
          fetchCompletionHandler:(void (^)(UIBackgroundFetchResult result))completionHandler;
@end

@interface UIApplication : UIResponder
+ (UIApplication*)sharedApplication;
@property(nonatomic, readonly) UIApplicationState applicationState;
@property(nonatomic) NSInteger applicationIconBadgeNumber;
- (void)registerForRemoteNotifications;
- (void)openURL:(NSURL*)url
              options:(NSDictionary*)options
    completionHandler:(void (^_Nullable)(BOOL success))completion;
@end

@interface UIDevice : NSObject
+ (UIDevice*)currentDevice;
@property(nonatomic, readonly) NSString* name;
@property(nonatomic, readonly) NSString* model;
@property(nonatomic, readonly) NSString* systemVersion;
@end

@interface UIScreen : NSObject
+ (UIScreen*)mainScreen;
@property(nonatomic, readonly) CGRect bounds;
@end

@interface UIWindow : UIResponder
- (instancetype)initWithFrame:(CGRect)frame;
@property(nullable, nonatomic, strong) UIViewController* rootViewController;
@property(nonatomic) UIWindowLevel windowLevel;
@property(nonatomic, getter=isHidden) BOOL hidden;
- (void)makeKeyAndVisible;
@end

@interface UIViewController : UIResponder
- (void)presentViewController:(UIViewController*)viewControllerToPresent
                     animated:(BOOL)animated
                   completion:(void (^_Nullable)(void))completion;
@end

@interface UIAlertAction : NSObject
+ (instancetype)actionWithTitle:(nullable NSString*)title
                          style:(UIAlertActionStyle)style
                        handler:(void (^_Nullable)(UIAlertAction* action))handler;
@end

@interface UIAlertController : UIViewController
+ (instancetype)alertControllerWithTitle:(nullable NSString*)title
                                 message:(nullable NSString*)message
                          preferredStyle:(UIAlertControllerStyle)preferredStyle;
- (void)addAction:(UIAlertAction*)action;
@end

NS_ASSUME_NONNULL_END
