#import <Foundation/Foundation.h>
#import <QuorvantisPush/QuorvantisPushDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// The library's messages to the host's delegate. All of them are optional, and so is adopting this protocol:
/// the library asks the object before each one whether it responds.
///
/// Callbacks run on the thread of the operation that sends them. For `onRegisterToken:` and `onUpdateToken:`
/// that is the transport's, which need not be the main thread: dispatch to the main queue before you touch
/// the user interface. For `onGetToken:` and `onReceiveNotification:` it is the main thread, as long as the
/// host forwards the token and the notifications there, as it must.
@protocol PushDelegate <NSObject>
@optional

/// The device token has arrived and is about to be registered with the push server.
///
/// @param token The token as lower-case hexadecimal digits, two per byte; nil when the system gave an empty
///        token.
- (void)onGetToken:(nullable NSString*)token NS_SWIFT_NAME(onGetToken(_:)) QUORVANTIS_MAIN_ACTOR_IN_SWIFT;

/// A notification was handled. Simulator builds never send this.
///
/// @param notification An immutable dictionary; its values are the payload's own objects. `type` is "silent"
///        for a notification without an alert, whose own type is then under `customType`.
- (void)onReceiveNotification:(NSDictionary*)notification
    NS_SWIFT_NAME(onReceiveNotification(_:)) QUORVANTIS_MAIN_ACTOR_IN_SWIFT;

/// The push server registered the token.
///
/// @param token The "token" of the server's answer, of whatever type it has there; nil when there was none.
- (void)onRegisterToken:(nullable id)token NS_SWIFT_NAME(onRegisterToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;

/// The push server replaced the token it knew.
///
/// @param token As for `onRegisterToken:`.
- (void)onUpdateToken:(nullable id)token NS_SWIFT_NAME(onUpdateToken(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;

/// A precondition of the library failed: no application hash is set, or the system is too old (the message is
/// then sent without asking first). Errors of the push server are not reported here.
///
/// @param error A fixed message.
- (void)onError:(nullable NSString*)error NS_SWIFT_NAME(onError(_:)) QUORVANTIS_NONISOLATED_IN_SWIFT;

@end

NS_ASSUME_NONNULL_END
