// The library's entry point for a host: holds the host's configuration and its delegate, takes the device
// from permission to a registered token, handles the notifications that arrive, and reports to the delegate.
//
// Threads: configured and driven from the application's main thread; `shared` may be called from any. No lock
// is held while the host is called. Every message to this object, from the platform or from the library
// itself, is a virtual operation, so that a subclass may override it.
#pragma once

#include <cstdint>

#include "facade/PushDelegate.h"
#include "platform/NSData.h"
#include "platform/NSURLConnection.h"
#include "platform/QuorvantisRegisterLib.h"
#include "platform/UIApplication.h"
#include "platform/UIResponder.h"
#include "platform/UIWindow.h"
#include "platform/UNUserNotificationCenter.h"
#include "registration/PushRequestData.h"

namespace quorvantis {

class QUORVANTIS_PUSH_API Push : public platform::UIResponder,
                                 public platform::UNUserNotificationCenterDelegate,
                                 public platform::QuorvantisRegisterLibDelegate {
 public:
  /// The process's only instance, created on the first call, as the class that the first call names. Never
  /// destroyed.
  template <class Receiver = Push>
  static Push& shared() {
    return *sharedMadeBy([](void*) -> platform::Ref<Push> { return platform::make<Receiver>(); }, nullptr);
  }

  /// `shared` for a class of any language: `allocInit` creates an initialised instance of the receiving class
  /// if there is none yet, under a lock. Nil when it creates none; the next call tries again.
  static Push* sharedMadeBy(platform::Ref<Push> (*allocInit)(void* receiver), void* receiver);

  /// For a separate instance use platform::make<Push>(), which sends it init().
  explicit Push(void* front = nullptr);
  ~Push() override;

  virtual void init();

  /// The string that identifies the application to the push service; nil at first. Read when it is used.
  [[nodiscard]] platform::NSString appHash() const { return appHash_; }
  void setAppHash(platform::NSString appHash) { appHash_ = std::move(appHash); }

  /// Whether location gathering is off; takes effect with the next activePushNotifications().
  [[nodiscard]] bool deactivateGPS() const { return deactivateGPS_; }
  void setDeactivateGPS(bool deactivateGPS) { deactivateGPS_ = deactivateGPS; }

  /// Not retained: clear it before the object is destroyed.
  [[nodiscard]] PushDelegate delegate() const { return delegate_; }
  void setDelegate(PushDelegate delegate) { delegate_ = delegate; }

  /// Whether a notification that arrives in the foreground is shown and makes the device vibrate.
  virtual void activePushNotificationsInForegroundApp(bool active);

  /// Starts the registration of a token when `activate` is 1, the platform's YES. Any other value does
  /// nothing; a registration is never undone. On a system older than 10.0 the delegate gets onError(),
  /// without being asked whether it responds.
  virtual void activePushNotifications(std::uint8_t activate);

  /// Stores the application hash. When it is nil or empty: false, and the delegate gets onError().
  virtual bool checkAppHash();

  /// The version of the loaded library bundle; nil when there is no such bundle, or it has no version.
  [[nodiscard]] virtual platform::NSString getVersion();

  /// Removes the badge from the application's icon.
  virtual void resetBadge();

  /// For the host's application delegate to pass on the device token from the platform.
  virtual void registerForRemoteNotificationsWithDeviceToken(const platform::NSData& deviceToken);

  /// Two lower-case digits per byte; nil for no bytes.
  [[nodiscard]] virtual platform::NSString hexadecimalStringFromData(const platform::NSData& data);

  // The platform's application-delegate messages. The token is not used here: see
  // registerForRemoteNotificationsWithDeviceToken().
  virtual void applicationDidRegisterForRemoteNotificationsWithDeviceToken(
      const platform::UIApplication& application, const platform::NSData& deviceToken);
  virtual void applicationDidFailToRegisterForRemoteNotificationsWithError(
      const platform::UIApplication& application, const platform::NSError& error);
  /// The handler is never called: the host must call it.
  virtual void applicationDidReceiveRemoteNotification(const platform::UIApplication& application,
                                                       const platform::NSDictionary& userInfo,
                                                       const platform::Object& fetchCompletionHandler);

  void userNotificationCenterWillPresentNotification(
      const platform::UNUserNotificationCenter& center, const platform::UNNotification& notification,
      const platform::UNNotificationPresentationHandler& withCompletionHandler) override;
  /// The handler is never called: the host must call it.
  void userNotificationCenterDidReceiveNotificationResponse(
      const platform::UNUserNotificationCenter& center, const platform::UNNotificationResponse& response,
      const platform::Object& withCompletionHandler) override;

  /// Handles one notification's payload, on the main thread: acts on it and reports it to the delegate.
  virtual void didReceiveRemoteNotification(const platform::NSDictionary& userInfo);

  void registerFinish() override;

  // What the registration client reports.
  virtual void onRegisterToken(const platform::Object& token);
  virtual void onUpdateToken(const platform::Object& token);
  virtual void onError(const platform::Object& error);

  [[nodiscard]] bool respondsToSelector(platform::Selector selector) const override;
  void performSelector(platform::Selector selector, const platform::Object& withObject) override;

 protected:
  void emptyFields() override;

  /// The name of the object's class, for the tag of its log lines. A subclass in C++ overrides it with its
  /// own; otherwise it logs as "[Push]".
  [[nodiscard]] virtual platform::NSString className() const;

  /// The initialised registration client.
  [[nodiscard]] virtual platform::Ref<PushRequestData> makePushRequestData();

  platform::UIApplication aplication;
  platform::NSMutableData responseData;
  platform::NSURLConnection conn;
  platform::NSString urlConexion;
  platform::NSString valorConexion;
  platform::NSString pushVersion;
  platform::NSString dirAAbrir;
  platform::Ref<PushRequestData> recogidaDatos;
  platform::QuorvantisRegisterLib registerLib;
  platform::NSString TAG;
  bool activeInForegroundApp = false;
  bool deactivateGPS_ = false;
  PushDelegate delegate_;
  platform::NSString appHash_;

 private:
  friend struct SharedSlot;

  void reportOn(const platform::NSDictionary& aps, const platform::NSMutableDictionary& report);
  void presentURLAlert(const platform::NSString& title, const platform::NSDictionary& alert);
  void dismissURLAlert(const platform::UIWindow& window);
};

}  // namespace quorvantis
