// The twin of SceneDelegate.m. It has never been compiled: there is no Swift compiler where this library is built.
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
    (UIApplication.shared.delegate as? AppDelegate)?.takeTheCenterBack()
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
