// A delegate of Push that does not adopt PushDelegate.
import Foundation

// [selectors]
final class Callbacks: NSObject {
  @MainActor @objc(onReceiveNotification:)
  func onReceiveNotification(_ notification: [AnyHashable: Any]) {}

  @objc(onRegisterToken:)
  nonisolated func onRegisterToken(_ token: Any?) {}
}
// [/selectors]
