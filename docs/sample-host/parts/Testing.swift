// What keeps the library out of an application's unit tests.
import QuorvantisPush
import UIKit

// [protocol]
/// What the application uses of Push.
@MainActor
protocol Notifications: AnyObject {
  var appHash: String? { get set }
  var delegate: AnyObject? { get set }
  func activePushNotifications(_ activate: Bool)
  func registerForRemoteNotifications(deviceToken: Data)
}

extension Push: Notifications {}

/// For the tests: remembers what it was told.
final class RecordedNotifications: Notifications {
  var appHash: String?
  var delegate: AnyObject?
  private(set) var isActive = false
  private(set) var tokens: [Data] = []

  func activePushNotifications(_ activate: Bool) { isActive = isActive || activate }
  func registerForRemoteNotifications(deviceToken: Data) { tokens.append(deviceToken) }
}
// [/protocol]

// [activation]
/// Not in unit tests that run inside the application: their scheme passes "-withoutPush YES" at launch.
@MainActor
func activate(_ push: Notifications) {
  if UserDefaults.standard.bool(forKey: "withoutPush") { return }
  push.activePushNotifications(true)
}
// [/activation]
