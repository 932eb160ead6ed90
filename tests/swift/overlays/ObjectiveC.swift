// What Apple's ObjectiveC gives Swift besides the declarations.
@_exported import ObjectiveC

public struct ObjCBool: ExpressibleByBooleanLiteral {
  public var boolValue: Bool
  public init(_ value: Bool) { boolValue = value }
  public init(booleanLiteral value: Bool) { boolValue = value }
}

public func _convertBoolToObjCBool(_ value: Bool) -> ObjCBool { ObjCBool(value) }
public func _convertObjCBoolToBool(_ value: ObjCBool) -> Bool { value.boolValue }

public struct Selector: ExpressibleByStringLiteral {
  public init(stringLiteral value: String) {}
}

extension NSObject: Hashable {
  public static func == (left: NSObject, right: NSObject) -> Bool { left.isEqual(right) }
  public func hash(into hasher: inout Hasher) { hasher.combine(ObjectIdentifier(self)) }
}
