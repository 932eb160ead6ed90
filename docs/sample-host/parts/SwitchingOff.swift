// Notifications are switched off in the application.
import UIKit

// [off]
@MainActor
func switchNotificationsOff() {
  UIApplication.shared.unregisterForRemoteNotifications()
  // Without it the next activation registers the token again.
  UserDefaults.standard.removeObject(forKey: "tokenMovil")
}
// [/off]
