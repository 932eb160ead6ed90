// The Swift version of AppDelegate.m; what has to do with scenes is in SceneDelegate.swift.
import QuorvantisPush
import UIKit

// [launch]
@main
final class AppDelegate: UIResponder, UIApplicationDelegate {
  func application(
    _ application: UIApplication,
    didFinishLaunchingWithOptions options: [UIApplication.LaunchOptionsKey: Any]?
  ) -> Bool {
    becomeCenterDelegate()  // a tap that launches the application goes to the delegate at the time when this returns
    let push = Push.shared()
    push.appHash = "your application's hash"
    push.delegate = self  // not retained
    push.deactivateGPS = true  // before the activation
    forgetUnconfirmedToken()  // before the activation, too
    push.activePushNotificationsInForegroundApp(true)
    push.activePushNotifications(true)
    return true
  }
  // [/launch]

  // [token]
  func application(
    _ application: UIApplication, didRegisterForRemoteNotificationsWithDeviceToken deviceToken: Data
  ) {
    becomeCenterDelegate()
    Push.shared().registerForRemoteNotifications(deviceToken: deviceToken)
  }

  func application(
    _ application: UIApplication, didFailToRegisterForRemoteNotificationsWithError error: Error
  ) {
    becomeCenterDelegate()
    Push.shared().application(application, didFailToRegisterForRemoteNotificationsWithError: error)
  }
  // [/token]

  // [background]
  func application(
    _ application: UIApplication, didReceiveRemoteNotification userInfo: [AnyHashable: Any],
    fetchCompletionHandler completionHandler: @escaping (UIBackgroundFetchResult) -> Void
  ) {
    Push.shared().application(
      application, didReceiveRemoteNotification: userInfo, fetchCompletionHandler: { _ in })
    completionHandler(.newData)
  }
  // [/background]
}

// [center]
// Keep the line of your language mode.
#if swift(>=6)
  extension AppDelegate: @preconcurrency UNUserNotificationCenterDelegate {}
#else
  extension AppDelegate: UNUserNotificationCenterDelegate {}
#endif

extension AppDelegate {
  func becomeCenterDelegate() {
    UNUserNotificationCenter.current().delegate = self
  }

  func userNotificationCenter(
    _ center: UNUserNotificationCenter, willPresent notification: UNNotification,
    withCompletionHandler completionHandler: @escaping (UNNotificationPresentationOptions) -> Void
  ) {
    var isAnswered = false
    Push.shared().userNotificationCenter(
      center, willPresent: notification,
      withCompletionHandler: { options in
        isAnswered = true
        completionHandler(options)
      })
    if !isAnswered { completionHandler([]) }
  }

  func userNotificationCenter(
    _ center: UNUserNotificationCenter, didReceive response: UNNotificationResponse,
    withCompletionHandler completionHandler: @escaping () -> Void
  ) {
    Push.shared().userNotificationCenter(center, didReceive: response, withCompletionHandler: {})
    completionHandler()
  }
}
// [/center]

// [callbacks]
extension AppDelegate: PushDelegate {
  // The library stores a token before the push server has confirmed it, and then does not send it again. What was not
  // confirmed by the next launch is forgotten here, so that it is sent again.
  func forgetUnconfirmedToken() {
    let defaults = UserDefaults.standard
    if defaults.object(forKey: "tokenIsRegistered") == nil { defaults.removeObject(forKey: "tokenMovil") }
  }

  func onGetToken(_ token: String?) {
    // The stored token is still the one before. A new one is not registered yet.
    let defaults = UserDefaults.standard
    if token != defaults.object(forKey: "tokenMovil") as? String {
      defaults.removeObject(forKey: "tokenIsRegistered")
    }
  }

  // On the transport's thread.
  nonisolated func onRegisterToken(_ token: Any?) {
    UserDefaults.standard.set("yes", forKey: "tokenIsRegistered")
  }

  nonisolated func onUpdateToken(_ token: Any?) { onRegisterToken(token) }

  nonisolated func onError(_ error: String?) { print("Push: \(error ?? "")") }
}
// [/callbacks]
