// An application's delegate without scenes: the window is its own. The rest is as in AppDelegate.swift.
import UIKit

final class DelegateWithoutScenes: UIResponder, UIApplicationDelegate {
  // [window]
  var window: UIWindow?

  func application(
    _ application: UIApplication,
    didFinishLaunchingWithOptions options: [UIApplication.LaunchOptionsKey: Any]?
  ) -> Bool {
    window = UIWindow(frame: UIScreen.main.bounds)
    window?.rootViewController = UIViewController()
    window?.makeKeyAndVisible()
    return true
  }
  // [/window]
}
