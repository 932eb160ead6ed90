// What Apple's Foundation gives Swift besides the declarations: values that stand for its objects. Only their
// types count here; nothing of it runs.
@_exported import Foundation
@_exported import ObjectiveC
@_exported import Dispatch

/// A value that Swift makes of an object, and an object of it.
public protocol Bridged: _ObjectiveCBridgeable {}

extension Bridged {
  public func _bridgeToObjectiveC() -> _ObjectiveCType { fatalError() }
  public static func _forceBridgeFromObjectiveC(_ source: _ObjectiveCType, result: inout Self?) { fatalError() }
  public static func _conditionallyBridgeFromObjectiveC(
    _ source: _ObjectiveCType, result: inout Self?
  ) -> Bool { fatalError() }
  public static func _unconditionallyBridgeFromObjectiveC(_ source: _ObjectiveCType?) -> Self { fatalError() }
}

extension String: Bridged { public typealias _ObjectiveCType = NSString }
extension Bool: Bridged { public typealias _ObjectiveCType = NSNumber }
extension Int: Bridged { public typealias _ObjectiveCType = NSNumber }
extension Double: Bridged { public typealias _ObjectiveCType = NSNumber }
extension Array: Bridged { public typealias _ObjectiveCType = NSArray }
extension Set: Bridged { public typealias _ObjectiveCType = NSSet }
extension Dictionary: Bridged { public typealias _ObjectiveCType = NSDictionary }
extension AnyHashable: Bridged { public typealias _ObjectiveCType = NSObject }

public struct Data: Hashable, Sendable, Bridged { public typealias _ObjectiveCType = NSData }

public struct URL: Hashable, Sendable, Bridged {
  public typealias _ObjectiveCType = NSURL
  public init?(string: String) { return nil }
}
