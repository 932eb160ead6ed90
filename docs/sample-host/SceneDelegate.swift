// The Swift version of SceneDelegate.m. It has never been compiled: we build this library without a Swift compiler.
import UIKit

final class SceneDelegate: UIResponder, UIWindowSceneDelegate {
  var window: UIWindow?

  static var inFront: SceneDelegate? {
    UIApplication.shared.connectedScenes
      .first { $0.activationState == .foregroundActive }?.delegate as? SceneDelegate
  }

  // [window]
  func scene(
    _ scene: UIScene, willConnectTo session: UISceneSession, options: UIScene.ConnectionOptions
  ) {
    guard let scene = scene as? UIWindowScene else { return }
    window = UIWindow(windowScene: scene)
    window?.rootViewController = UIViewController()
    window?.makeKeyAndVisible()
  }
  // [/window]

  // [active]
  func sceneDidBecomeActive(_ scene: UIScene) {
    (UIApplication.shared.delegate as? AppDelegate)?.becomeCenterDelegate()
  }
  // [/active]

  // [show]
  func showLink(_ link: URL, title: String?, body: String?) {
    let alert = UIAlertController(title: title, message: body, preferredStyle: .alert)
    alert.addAction(
      UIAlertAction(title: "OK", style: .default) { _ in UIApplication.shared.open(link) })
    window?.rootViewController?.present(alert, animated: true)
  }
  // [/show]
}
