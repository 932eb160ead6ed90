// Refused in mode 6: main actor-isolated property 'text' can not be mutated from a nonisolated context
import QuorvantisPush
import UIKit

final class Screen: UIViewController, PushDelegate {
  private var text = ""
  func onRegisterToken(_ token: Any?) { text = "registered" }
}
