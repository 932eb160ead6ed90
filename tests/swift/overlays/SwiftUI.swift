// The few names of SwiftUI that the documents use, declared. Nothing of it runs.
@_exported import UIKit

public protocol ObservableObject: AnyObject {}

@propertyWrapper
public struct Published<Value> {
  public init(wrappedValue: Value) { self.wrappedValue = wrappedValue }
  public var wrappedValue: Value
}

@propertyWrapper @MainActor
public struct ObservedObject<ObjectType: ObservableObject> {
  public init(wrappedValue: ObjectType) { self.wrappedValue = wrappedValue }
  public var wrappedValue: ObjectType
  public var projectedValue: Wrapper { fatalError() }

  @dynamicMemberLookup @MainActor
  public struct Wrapper {
    public subscript<Subject>(
      dynamicMember keyPath: ReferenceWritableKeyPath<ObjectType, Subject>
    ) -> Binding<Subject> { fatalError() }
  }
}

@propertyWrapper
public struct Binding<Value> {
  public init(projectedValue: Binding<Value>) { self = projectedValue }
  public var wrappedValue: Value { fatalError() }
}

public enum ScenePhase: Comparable { case background, inactive, active }

@MainActor
public struct OpenURLAction: Sendable {
  public func callAsFunction(_ url: URL) {}
}

public struct EnvironmentValues {
  public var scenePhase: ScenePhase { fatalError() }
  public var openURL: OpenURLAction { fatalError() }
}

@propertyWrapper
public struct Environment<Value> {
  public init(_ keyPath: KeyPath<EnvironmentValues, Value>) {}
  public var wrappedValue: Value { fatalError() }
}

@propertyWrapper @MainActor
public struct UIApplicationDelegateAdaptor<Delegate: NSObject & UIApplicationDelegate> {
  public init(_ type: Delegate.Type = Delegate.self) {}
  public var wrappedValue: Delegate { fatalError() }
}

@MainActor @preconcurrency
public protocol App {
  associatedtype Body: Scene
  @SceneBuilder var body: Body { get }
  init()
}

extension App {
  /// For @main.
  public static func main() {}
}

@MainActor @preconcurrency
public protocol Scene {}

extension Scene {
  public func onChange<Value: Equatable>(
    of value: Value, perform action: @escaping (Value) -> Void
  ) -> some Scene { self }
}

@resultBuilder
public struct SceneBuilder {
  public static func buildBlock<Content: Scene>(_ content: Content) -> Content { content }
}

public struct WindowGroup<Content: View>: Scene {
  public init(@ViewBuilder content: () -> Content) {}
}

@MainActor @preconcurrency
public protocol View {
  associatedtype Body: View
  @ViewBuilder var body: Body { get }
}

extension Never: View {
  public var body: Never { fatalError() }
}

extension View {
  public func alert<Title: StringProtocol, Actions: View, Message: View, Value>(
    _ title: Title, isPresented: Binding<Bool>, presenting data: Value?, @ViewBuilder actions: (Value) -> Actions,
    @ViewBuilder message: (Value) -> Message
  ) -> some View { self }
}

@resultBuilder
public struct ViewBuilder {
  public static func buildBlock<Content: View>(_ content: Content) -> Content { content }
}

public struct Text: View {
  public init<Content: StringProtocol>(_ content: Content) {}
  public var body: Never { fatalError() }
}

public struct Button: View {
  public init<Title: StringProtocol>(_ title: Title, action: @escaping @MainActor () -> Void) {}
  public var body: Never { fatalError() }
}
