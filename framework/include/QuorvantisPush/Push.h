#import <QuorvantisPush/QuorvantisPushDefines.h>
#import <UIKit/UIKit.h>
#import <UserNotifications/UserNotifications.h>

NS_ASSUME_NONNULL_BEGIN

/// Takes the device from permission to a token registered with the push server, handles the notifications
/// that arrive, and reports to the host's delegate.
///
/// Configure and use it on the main thread; `shared` may be called on any thread. Simulator builds do
/// everything except handling notifications.
__attribute__((visibility("default")))
@interface Push : UIResponder<UIApplicationDelegate, UNUserNotificationCenterDelegate> {
 @private
  void* _core;
}

/// The process's only instance, created on the first call, of the class that receives it, and never
/// destroyed.
+ (Push*)shared NS_SWIFT_NAME(shared()) QUORVANTIS_NONISOLATED_IN_SWIFT;

/// A separate instance, independent of the shared one.
- (instancetype)init;

/// The string that identifies the application to the push service. Nil at first; read when it is used.
@property(nonatomic, strong, nullable) NSString* appHash;

/// Whether location gathering is off. Takes effect with the next `activePushNotifications:`. NO at first.
@property(nonatomic) BOOL deactivateGPS;

/// The host's callback object; see `PushDelegate`, which it need not adopt.
///
/// Unretained, and not zeroed: keep it alive, and set this to nil before it is deallocated. In Swift it is an
/// instance of a class; the compiler refuses a structure or an enumeration.
@property(nonatomic, unsafe_unretained, nullable) id delegate;

/// Registers this user and device, asks for permission to show notifications, and asks the system for a
/// device token, which the application's delegate gets.
///
/// @param activate YES starts; NO does nothing, and a registration is never undone. Where BOOL is a byte
/// (32-bit
///        phones, which the package has no build for), a value other than 0 and 1 counts as NO; on 64-bit
///        phones BOOL is a boolean, and any value but 0 is YES.
- (void)activePushNotifications:(BOOL)activate NS_SWIFT_NAME(activePushNotifications(_:));

/// Whether a notification that arrives while the application is in the foreground is shown and makes the
/// phone vibrate. NO at first.
- (void)activePushNotificationsInForegroundApp:(BOOL)active
    NS_SWIFT_NAME(activePushNotificationsInForegroundApp(_:));

/// Takes the device token. Send it from your application delegate's
/// `application:didRegisterForRemoteNotificationsWithDeviceToken:`.
- (void)registerForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken
    NS_SWIFT_NAME(registerForRemoteNotifications(deviceToken:));

/// Stores the application hash in the user defaults.
///
/// @return NO when it is nil or empty; then the delegate, if it responds, gets `onError:`.
- (BOOL)checkAppHash;

/// The framework's version, from its bundle.
///
/// @return Nil when no bundle with the framework's identifier is loaded, or it has no version.
- (nullable NSString*)getVersion;

/// Removes the badge from the application's icon.
- (void)resetBadge;

#pragma mark - Messages from the system, or forwarded by your application delegate

/// Writes a log line. Pass the token to `registerForRemoteNotificationsWithDeviceToken:`.
- (void)application:(UIApplication*)application
    didRegisterForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken;

/// Writes two log lines.
- (void)application:(UIApplication*)application
    didFailToRegisterForRemoteNotificationsWithError:(NSError*)error;

/// Handles a notification. Never calls the handler: your application delegate must.
- (void)application:(UIApplication*)application
    didReceiveRemoteNotification:(NSDictionary*)userInfo
          fetchCompletionHandler:(void (^)(UIBackgroundFetchResult result))completionHandler
    QUORVANTIS_NOT_ASYNC_IN_SWIFT;

/// Calls the handler, with the alert option, only when notifications are shown in the foreground.
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler
    QUORVANTIS_NOT_ASYNC_IN_SWIFT;

/// Opens a tapped notification's link a second later. Never calls the handler.
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler QUORVANTIS_NOT_ASYNC_IN_SWIFT;

#pragma mark - For subclasses

/// Handles one notification's payload.
///
/// @param userInfo The payload as delivered: the dictionary that holds "aps".
- (void)didReceiveRemoteNotification:(nullable NSDictionary*)userInfo
    NS_SWIFT_NAME(didReceiveRemoteNotification(_:));

/// @return Two lower-case hexadecimal digits per byte; nil for no bytes.
- (nullable NSString*)hexadecimalStringFromData:(nullable NSData*)data
    NS_SWIFT_NAME(hexadecimalString(from:));

/// The registration framework has registered this user and device. Called on a thread of its choice.
- (void)registerFinish QUORVANTIS_NONISOLATED_IN_SWIFT;

/// The registration client's reports, on the transport's thread. The first two are forwarded to the delegate,
/// errors to the log.
- (void)onRegisterToken:(nullable id)token NS_SWIFT_NAME(onRegisterToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;
- (void)onUpdateToken:(nullable id)token NS_SWIFT_NAME(onUpdateToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;
- (void)onError:(nullable id)error NS_SWIFT_NAME(onError(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;

@end

NS_ASSUME_NONNULL_END
