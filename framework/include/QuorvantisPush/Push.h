#import <QuorvantisPush/QuorvantisPushDefines.h>
#import <UIKit/UIKit.h>
#import <UserNotifications/UserNotifications.h>

NS_ASSUME_NONNULL_BEGIN

/// Takes the device from permission to a token registered with the push server, handles the notifications
/// that arrive, and tells the host's delegate.
///
/// Configure and use it on the main thread; `shared` may be called on any thread. Simulator builds do all of
/// it but the handling of notifications.
__attribute__((visibility("default")))
@interface Push : UIResponder<UIApplicationDelegate, UNUserNotificationCenterDelegate> {
 @private
  void* _core;
}

/// The process's one instance, made on the first call by the class that gets it, and never destroyed.
+ (Push*)shared NS_SWIFT_NAME(shared()) QUORVANTIS_NONISOLATED_IN_SWIFT;

/// An instance of its own, independent of the shared one.
- (instancetype)init;

/// The text that identifies the application to the push service. Nil at first; read when it is used.
@property(nonatomic, strong, nullable) NSString* appHash;

/// Whether the location is left alone. Takes effect with the next `activePushNotifications:`. NO at first.
@property(nonatomic) BOOL deactivateGPS;

/// The host's callback object; see `PushDelegate`, which it need not adopt.
///
/// It is neither retained nor forgotten when it goes away: keep it alive, and set this to nil before it goes.
/// In Swift: an instance of a class. A structure or an enumeration would be wrapped into an object that is
/// gone at once.
@property(nonatomic, unsafe_unretained, nullable) id delegate;

/// Has this user and device registered, asks for permission to show notifications, and asks the system for a
/// device token, which comes to the application's delegate.
///
/// @param activate YES starts; NO does nothing, and nothing is ever undone. Where BOOL is a byte (32-bit
///        phones, which the package has no build for), a value other than 0 and 1 counts as NO; on 64-bit
///        phones BOOL is a boolean and any value but 0 has become YES on its way in.
- (void)activePushNotifications:(BOOL)activate NS_SWIFT_NAME(activePushNotifications(_:));

/// Whether a notification that arrives while the application is in front is shown, and makes the phone
/// vibrate. NO at first.
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

/// The version of the framework as its bundle says.
///
/// @return Nil when no bundle with the framework's identifier is loaded, or it says no version.
- (nullable NSString*)getVersion;

/// Takes the badge off the application's icon.
- (void)resetBadge;

#pragma mark - What the system sends, or your application delegate passes on

/// Writes a log line. The token itself goes to `registerForRemoteNotificationsWithDeviceToken:`.
- (void)application:(UIApplication*)application
    didRegisterForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken;

/// Writes two log lines.
- (void)application:(UIApplication*)application
    didFailToRegisterForRemoteNotificationsWithError:(NSError*)error;

/// Handles a notification. Never calls the handler: that is left to your application delegate.
- (void)application:(UIApplication*)application
    didReceiveRemoteNotification:(NSDictionary*)userInfo
          fetchCompletionHandler:(void (^)(UIBackgroundFetchResult result))completionHandler
    QUORVANTIS_NOT_ASYNC_IN_SWIFT;

/// Calls the handler, with the alert option, only when notifications are shown in front.
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
/// @param userInfo The payload as it was delivered, the dictionary that holds "aps".
- (void)didReceiveRemoteNotification:(nullable NSDictionary*)userInfo
    NS_SWIFT_NAME(didReceiveRemoteNotification(_:));

/// @return Two lower-case hexadecimal digits a byte; nil for no bytes.
- (nullable NSString*)hexadecimalStringFromData:(nullable NSData*)data
    NS_SWIFT_NAME(hexadecimalString(from:));

/// The registration framework has registered this user and device. Comes on a thread of its choice.
- (void)registerFinish QUORVANTIS_NONISOLATED_IN_SWIFT;

/// The registration client's reports, on the transport's thread. The first two go on to the delegate, errors
/// to the log.
- (void)onRegisterToken:(nullable id)token NS_SWIFT_NAME(onRegisterToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;
- (void)onUpdateToken:(nullable id)token NS_SWIFT_NAME(onUpdateToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;
- (void)onError:(nullable id)error NS_SWIFT_NAME(onError(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;

@end

NS_ASSUME_NONNULL_END
