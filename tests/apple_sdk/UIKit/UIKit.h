// What the framework's sources and the sample hosts use of UIKit, declared.
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
typedef NS_ENUM(NSInteger, UIAlertActionStyle) {
  UIAlertActionStyleDefault = 0
} NS_SWIFT_NAME(UIAlertAction.Style);
typedef NS_ENUM(NSInteger, UIAlertControllerStyle) {
  UIAlertControllerStyleActionSheet = 0,
  UIAlertControllerStyleAlert
} NS_SWIFT_NAME(UIAlertController.Style);
typedef NS_ENUM(NSInteger, UISceneActivationState) {
  UISceneActivationStateUnattached = -1,
  UISceneActivationStateForegroundActive,
  UISceneActivationStateForegroundInactive,
  UISceneActivationStateBackground
} NS_SWIFT_NAME(UIScene.ActivationState);
typedef CGFloat UIWindowLevel;
typedef NSString* UIApplicationLaunchOptionsKey NS_TYPED_ENUM NS_SWIFT_NAME(UIApplication.LaunchOptionsKey);
typedef NSString* UIApplicationOpenExternalURLOptionsKey
    NS_TYPED_ENUM NS_SWIFT_NAME(UIApplication.OpenExternalURLOptionsKey);
typedef NSString* UISceneSessionRole NS_TYPED_ENUM NS_SWIFT_NAME(UISceneSession.Role);

FOUNDATION_EXPORT const UIWindowLevel UIWindowLevelAlert;

NS_SWIFT_UI_ACTOR
@interface UIResponder : NSObject
@end

NS_SWIFT_UI_ACTOR
@protocol UIApplicationDelegate <NSObject>
@optional
- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(nullable NSDictionary<UIApplicationLaunchOptionsKey, id>*)launchOptions;
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

NS_SWIFT_UI_ACTOR
@interface UIApplication : UIResponder
@property(class, nonatomic, readonly) UIApplication* sharedApplication NS_SWIFT_NAME(shared);
@property(nonatomic, readonly) UIApplicationState applicationState;
@property(nonatomic) NSInteger applicationIconBadgeNumber;
@property(nullable, nonatomic, assign) id<UIApplicationDelegate> delegate;
@property(nonatomic, readonly) NSSet<UIScene*>* connectedScenes;
- (void)registerForRemoteNotifications;
- (void)unregisterForRemoteNotifications;
- (void)openURL:(NSURL*)url
              options:(NSDictionary<UIApplicationOpenExternalURLOptionsKey, id>*)options
    completionHandler:(void (^_Nullable)(BOOL success))completion;
@end

NS_SWIFT_UI_ACTOR
@protocol UISceneDelegate <NSObject>
@optional
- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions;
- (void)sceneDidBecomeActive:(UIScene*)scene;
@end

NS_SWIFT_UI_ACTOR
@protocol UIWindowSceneDelegate <UISceneDelegate>
@optional
@property(nullable, nonatomic, strong) UIWindow* window;
@end

NS_SWIFT_UI_ACTOR
@interface UIScene : UIResponder
@property(nullable, nonatomic, strong) id<UISceneDelegate> delegate;
@property(nonatomic, readonly) UISceneActivationState activationState;
@end

NS_SWIFT_UI_ACTOR
@interface UIWindowScene : UIScene
@end

NS_SWIFT_UI_ACTOR
@interface UISceneSession : NSObject
@property(nonatomic, readonly) UISceneSessionRole role;
@end

NS_SWIFT_UI_ACTOR NS_SWIFT_NAME(UIScene.ConnectionOptions) @interface UISceneConnectionOptions : NSObject
@end

NS_SWIFT_UI_ACTOR
@interface UISceneConfiguration : NSObject
+ (instancetype)configurationWithName:(nullable NSString*)name sessionRole:(UISceneSessionRole)sessionRole;
@property(nullable, nonatomic, readonly) NSString* name;
@property(nullable, nonatomic) Class delegateClass;
@end

NS_SWIFT_UI_ACTOR
@interface UIDevice : NSObject
@property(class, nonatomic, readonly) UIDevice* currentDevice;
@property(nonatomic, readonly) NSString* name;
@property(nonatomic, readonly) NSString* model;
@property(nonatomic, readonly) NSString* systemVersion;
@end

NS_SWIFT_UI_ACTOR
@interface UIScreen : NSObject
@property(class, nonatomic, readonly) UIScreen* mainScreen;
@property(nonatomic, readonly) CGRect bounds;
@end

NS_SWIFT_UI_ACTOR
@interface UIWindow : UIResponder
- (instancetype)initWithFrame:(CGRect)frame;
- (instancetype)initWithWindowScene:(UIWindowScene*)windowScene;
@property(nullable, nonatomic, strong) UIViewController* rootViewController;
@property(nonatomic) UIWindowLevel windowLevel;
@property(nonatomic, getter=isHidden) BOOL hidden;
- (void)makeKeyAndVisible;
@end

NS_SWIFT_UI_ACTOR
@interface UIViewController : UIResponder
@property(nullable, nonatomic, readonly)
    UIViewController* presentedViewController NS_SWIFT_NAME(presentedViewController);
- (void)presentViewController:(UIViewController*)viewControllerToPresent
                     animated:(BOOL)animated
                   completion:(void (^_Nullable)(void))completion;
@end

NS_SWIFT_UI_ACTOR
@interface UIAlertAction : NSObject
+ (instancetype)actionWithTitle:(nullable NSString*)title
                          style:(UIAlertActionStyle)style
                        handler:(void (^_Nullable)(UIAlertAction* action))handler;
@end

NS_SWIFT_UI_ACTOR
@interface UIAlertController : UIViewController
+ (instancetype)alertControllerWithTitle:(nullable NSString*)title
                                 message:(nullable NSString*)message
                          preferredStyle:(UIAlertControllerStyle)preferredStyle;
- (void)addAction:(UIAlertAction*)action NS_SWIFT_NAME(addAction(_:));
@end

FOUNDATION_EXPORT int UIApplicationMain(int argc, char* _Nullable argv[_Nonnull],
                                        NSString* _Nullable principalClassName,
                                        NSString* _Nullable delegateClassName);

NS_ASSUME_NONNULL_END
