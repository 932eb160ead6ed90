// A subclass of Push.
import QuorvantisPush
import UIKit

final class OwnPush: Push {
  private(set) var handled = 0

  override init() { super.init() }

  override func didReceiveRemoteNotification(_ userInfo: [AnyHashable: Any]?) {
    handled += 1
    super.didReceiveRemoteNotification(userInfo)
  }

  override func hexadecimalString(from data: Data?) -> String? { super.hexadecimalString(from: data) }

  override func checkAppHash() -> Bool { appHash == nil ? false : super.checkAppHash() }

  override nonisolated func registerFinish() { super.registerFinish() }

  override nonisolated func onUpdateToken(_ token: Any?) { super.onUpdateToken(token) }

  override func userNotificationCenter(
    _ center: UNUserNotificationCenter, willPresent notification: UNNotification,
    withCompletionHandler completionHandler: @escaping (UNNotificationPresentationOptions) -> Void
  ) { completionHandler(.alert) }
}

@MainActor
func useOwnPush() -> String? {
  let push = OwnPush.shared()
  push.delegate = nil
  return push.getVersion()
}

func useOnAnyThread() { Push.shared().registerFinish() }

func useClient() -> String {
  let client = PushRequestData()
  client.userDefaultsPrefix = "own_"
  client.registerForRemoteNotifications(deviceToken: "00ff", appHash: nil, pushVersion: "1.0")
  client.sendConnexion("task", postParameters: "a=b", url: nil)
  client.downloadFinished("task")
  client.cancel()
  return client.crearCamposComunes() + "\(QuorvantisPushVersionNumber)"
}
