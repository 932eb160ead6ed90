#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// The client of the push server: builds the requests, posts them, and reports the answers. `Push` has
/// its own; a host rarely needs another.
///
/// Use it on the thread that delivers the device token. The delegate may be read and replaced on any thread;
/// it is called on the thread on which the transport ends a request.
__attribute__((visibility("default")))
@interface PushRequestData : NSObject {
 @private
  void* _core;
}

/// Receives the outcomes (`onRegisterToken:`, `onUpdateToken:`, `onError:`, each only if the object responds
/// to it). Retained.
@property(strong, nullable) id delegate;

/// The prefix of three of the user defaults' keys; "quorvantis_" at first.
@property(nonatomic, strong, nullable) NSString* userDefaultsPrefix;

- (instancetype)init;

/// Cancels the request in progress; it ends as a failed one.
- (void)cancel;

/// Posts a request and returns at once.
///
/// @param connexion The request's identity, its task name.
/// @param postParameters The body, sent unchanged.
/// @param url Where it goes; nil for the push server.
- (void)sendConnexion:(nullable NSString*)connexion
       postParameters:(nullable NSString*)postParameters
                  url:(nullable NSString*)url NS_SWIFT_NAME(sendConnexion(_:postParameters:url:));

/// @return The fields that every request ends with, with the user defaults' current values.
- (NSString*)crearCamposComunes;

/// Sends the push server a new or changed token, and stores it and a description of the device.
///
/// @param deviceToken Lower-case hexadecimal digits; nil is sent as (null), and the stored token is removed.
/// @param appHash Not used.
/// @param pushVersion The library's version, which is stored.
- (void)registerForRemoteNotificationsWithDeviceToken:(nullable NSString*)deviceToken
                                              appHash:(nullable NSString*)appHash
                                          pushVersion:(nullable NSString*)pushVersion
    NS_SWIFT_NAME(registerForRemoteNotifications(deviceToken:appHash:pushVersion:));

/// The transport has ended a request.
///
/// @param connexionValue The request's identity.
- (void)downloadFinished:(nullable NSString*)connexionValue NS_SWIFT_NAME(downloadFinished(_:));

@end

NS_ASSUME_NONNULL_END
