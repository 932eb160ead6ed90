// Refused in modes 5 and 6: cannot assign value of type 'Structure' to type 'AnyObject?'
import QuorvantisPush

struct Structure {}

@MainActor
func setDelegate() { Push.shared().delegate = Structure() }
