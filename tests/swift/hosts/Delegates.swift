// Delegates of Push with all callbacks: on the main actor, and on none. Neither says anything about threads.
import QuorvantisPush
import UIKit

final class MainActorDelegate: UIViewController, PushDelegate {
  private var texts: [String] = []

  func onGetToken(_ token: String?) { texts.append(token ?? "") }
  func onReceiveNotification(_ notification: [AnyHashable: Any]) { texts.append("\(notification)") }
  func onRegisterToken(_ token: Any?) { print(token as? String ?? "") }
  func onUpdateToken(_ token: Any?) { onRegisterToken(token) }
  func onError(_ error: String?) { print(error ?? "") }
}

final class PlainDelegate: NSObject, PushDelegate {
  func onGetToken(_ token: String?) {}
  func onReceiveNotification(_ notification: [AnyHashable: Any]) {}
  func onRegisterToken(_ token: Any?) {}
  func onUpdateToken(_ token: Any?) {}
  func onError(_ error: String?) {}
}

@MainActor
func setDelegate(_ delegate: MainActorDelegate) {
  Push.shared().delegate = delegate
  Push.shared().delegate = PlainDelegate.lasting
}

extension PlainDelegate {
  @MainActor static let lasting = PlainDelegate()
}
