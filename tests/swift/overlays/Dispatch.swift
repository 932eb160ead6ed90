// Apple's DispatchQueue, in place of Linux's own.
public class DispatchQueue: @unchecked Sendable {
  public class var main: DispatchQueue { fatalError() }
  @preconcurrency
  public func async(execute work: @escaping @Sendable @convention(block) () -> Void) {}
}
