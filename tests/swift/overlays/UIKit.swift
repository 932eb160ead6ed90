// What Apple's UIKit gives Swift besides the declarations.
@_exported import Foundation
@_exported import UIKit

extension UIApplicationDelegate {
  /// For @main.
  public static func main() {}
}
