// A host in SwiftUI: this file, and AppDelegate.swift without its "@main". No scene delegate.
import QuorvantisPush
import SwiftUI

// [application]
@main
struct TheApplication: App {
  @UIApplicationDelegateAdaptor private var delegate: AppDelegate
  @Environment(\.scenePhase) private var phase

  var body: some Scene {
    WindowGroup { ContentView() }
      .onChange(of: phase) { phase in
        // When the request for permission ends with an error, there is neither a token nor a failure.
        if phase == .active { delegate.becomeCenterDelegate() }
      }
  }
}
// [/application]

// [links]
struct ReceivedLink {
  let url: URL
  let title: String
  let body: String
}

/// The links that the user has not been asked about yet, one after the other.
@MainActor
final class ReceivedLinks: ObservableObject {
  static let shared = ReceivedLinks()
  @Published private(set) var shown: ReceivedLink?
  private var waiting: [ReceivedLink] = []

  func add(_ link: ReceivedLink) {
    waiting.append(link)
    showNext()
  }

  /// For the alert: SwiftUI sets it to false when the user has answered.
  var isShown: Bool {
    get { shown != nil }
    set {
      if newValue { return }
      shown = nil
      Task { showNext() }  // when SwiftUI has seen that there is none
    }
  }

  private func showNext() {
    if shown == nil, !waiting.isEmpty { shown = waiting.removeFirst() }
  }
}

extension AppDelegate {
  // SwiftUI's windows are scenes', and with scenes the library's own alert is not visible.
  func onReceiveNotification(_ notification: [AnyHashable: Any]) {
    guard notification["type"] as? String == "pushlib-abrirurl",
      let url = (notification["urlnoti"] as? String).flatMap(URL.init(string:))
    else { return }
    let texts = notification["alert"] as? [String: Any]
    ReceivedLinks.shared.add(
      ReceivedLink(
        url: url, title: texts?["title"] as? String ?? "", body: texts?["body"] as? String ?? ""))
  }
}
// [/links]

// [view]
struct ContentView: View {
  @ObservedObject private var links = ReceivedLinks.shared
  @Environment(\.openURL) private var openURL

  var body: some View {
    Text("Hello")
      .alert(
        links.shown?.title ?? "",
        isPresented: $links.isShown,
        presenting: links.shown
      ) { link in
        Button("OK") { openURL(link.url) }
      } message: { link in
        Text(link.body)
      }
  }
}
// [/view]
