// Refused in mode 6: call to main actor-isolated instance method 'activePushNotifications' in a synchronous nonisolated context
import QuorvantisPush

func activate() { Push.shared().activePushNotifications(true) }
