// swift-tools-version:5.5
// The package that is published: beside it lie the three XCFrameworks. make-xcframework writes the oldest iOS.
import PackageDescription

let package = Package(
  name: "QuorvantisPush",
  platforms: [.iOS("15.0")],
  products: [
    .library(
      name: "QuorvantisPush",
      targets: ["QuorvantisPush", "QuorvantisRegister", "QuorvantisUtils"])
  ],
  targets: [
    .binaryTarget(name: "QuorvantisPush", path: "QuorvantisPush.xcframework"),
    // The maker's closed frameworks.
    .binaryTarget(name: "QuorvantisRegister", path: "QuorvantisRegister.xcframework"),
    .binaryTarget(name: "QuorvantisUtils", path: "QuorvantisUtils.xcframework"),
  ]
)
