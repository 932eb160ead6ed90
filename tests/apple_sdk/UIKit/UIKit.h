// What the framework's sources use of UIKit, declared.
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class UIApplication, UIScene, UISceneConfiguration, UISceneConnectionOptions, UISceneSession,
    UIViewController, UIWindow, UIWindowScene;

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
typedef NS_ENUM(NSInteger, UISceneActivationState) {
  UISceneActivationStateUnattached = -1,
  UISceneActivationStateForegroundActive,
  UISceneActivationStateForegroundInactive,
  UISceneActivationStateBackground
};
typedef CGFloat UIWindowLevel;

FOUNDATION_EXPORT const UIWindowLevel UIWindowLevelAlert;

@interface UIResponder : NSObject
@end

@protocol UIApplicationDelegate <NSObject>
@optional
- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(nullable NSDictionary*)launchOptions;
- (UISceneConfiguration*)application:(UIApplication*)application
    configurationForConnectingSceneSession:(UISceneSession*)connectingSceneSession
                                   options:(UISceneConnectionOptions*)options;
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
@property(nullable, nonatomic, assign) id<UIApplicationDelegate> delegate;
@property(nonatomic, readonly) NSSet* connectedScenes;
- (void)registerForRemoteNotifications;
- (void)openURL:(NSURL*)url
              options:(NSDictionary*)options
    completionHandler:(void (^_Nullable)(BOOL success))completion;
@end

@protocol UISceneDelegate <NSObject>
@optional
- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions;
- (void)sceneDidBecomeActive:(UIScene*)scene;
@end

@protocol UIWindowSceneDelegate <UISceneDelegate>
@optional
@property(nullable, nonatomic, strong) UIWindow* window;
@end

@interface UIScene : UIResponder
@property(nullable, nonatomic, strong) id<UISceneDelegate> delegate;
@property(nonatomic, readonly) UISceneActivationState activationState;
@end

@interface UIWindowScene : UIScene
@end

@interface UISceneSession : NSObject
@property(nonatomic, readonly) NSString* role;
@end

@interface UISceneConnectionOptions : NSObject
@end

@interface UISceneConfiguration : NSObject
+ (instancetype)configurationWithName:(nullable NSString*)name sessionRole:(NSString*)sessionRole;
@property(nullable, nonatomic) Class delegateClass;
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
- (instancetype)initWithWindowScene:(UIWindowScene*)windowScene;
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
