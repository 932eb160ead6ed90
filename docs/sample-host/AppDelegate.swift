// The Swift version of AppDelegate.m. It has never been compiled: we build this library without a Swift compiler.
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
    push.activePushNotificationsInForegroundApp(true)
    push.activePushNotifications(true)
    return true
  }
  // [/launch]

  // [scenes]
  func application(
    _ application: UIApplication, configurationForConnecting session: UISceneSession,
    options: UIScene.ConnectionOptions
  ) -> UISceneConfiguration {
    let configuration = UISceneConfiguration(name: "Default", sessionRole: session.role)
    configuration.delegateClass = SceneDelegate.self
    return configuration
  }
  // [/scenes]

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

  // [again]
  func registerAgain() {
    UserDefaults.standard.removeObject(forKey: "tokenMovil")
    Push.shared().activePushNotifications(true)
  }
  // [/again]
}

// [center]
extension AppDelegate: UNUserNotificationCenterDelegate {
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
// An application delegate belongs to the main actor; the callbacks do not: two of them are called on the transport's
// thread. Arguments are converted into values before they are passed to the main queue.
extension AppDelegate: PushDelegate {
  nonisolated func onReceiveNotification(_ notification: [AnyHashable: Any]) {
    guard notification["type"] as? String == "pushlib-abrirurl",
      let link = (notification["urlnoti"] as? String).flatMap(URL.init(string:))
    else { return }
    let texts = notification["alert"] as? [String: Any]
    let title = texts?["title"] as? String
    let body = texts?["body"] as? String
    DispatchQueue.main.async { SceneDelegate.inFront?.showLink(link, title: title, body: body) }
  }

  nonisolated func onRegisterToken(_ token: Any?) {
    let text = token as? String ?? ""
    DispatchQueue.main.async { UserDefaults.standard.set(text, forKey: "tokenIsRegistered") }
  }

  nonisolated func onUpdateToken(_ token: Any?) { onRegisterToken(token) }

  nonisolated func onError(_ error: String?) { print("Push: \(error ?? "")") }
}
// [/callbacks]
