// Refused in mode 6: call to main actor-isolated instance method 'activePushNotifications'
import QuorvantisPush

func activate() { Push.shared().activePushNotifications(true) }
