// Refused in modes 5 and 6: value of type 'Push' has no member 'activePushNotification'
import QuorvantisPush

@MainActor
func activate() { Push.shared().activePushNotification(true) }
