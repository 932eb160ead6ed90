// The Swift version of SceneDelegate.m, and the two parts of the application's delegate that have to do with scenes.
import QuorvantisPush
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
    // Another link's alert may be up; a controller that presents one can't present a second.
    var inFront = window?.rootViewController
    while let next = inFront?.presentedViewController { inFront = next }
    inFront?.present(alert, animated: true)
  }
  // [/show]
}

extension AppDelegate {
  // [scenes]
  func application(
    _ application: UIApplication, configurationForConnecting session: UISceneSession,
    options: UIScene.ConnectionOptions
  ) -> UISceneConfiguration {
    let configuration = UISceneConfiguration(name: nil, sessionRole: session.role)
    configuration.delegateClass = SceneDelegate.self
    return configuration
  }
  // [/scenes]

  // [link]
  // With scenes the library's own alert is not visible.
  func onReceiveNotification(_ notification: [AnyHashable: Any]) {
    guard notification["type"] as? String == "pushlib-abrirurl",
      let link = (notification["urlnoti"] as? String).flatMap(URL.init(string:))
    else { return }
    let texts = notification["alert"] as? [String: Any]
    SceneDelegate.inFront?.showLink(
      link, title: texts?["title"] as? String, body: texts?["body"] as? String)
  }
  // [/link]
}
