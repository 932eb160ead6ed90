// The maker's HTTP transport: posts requests over HTTPS, one after the other, each at most once on the wire.
//
// Threads: driven from one thread; `cancel` and `receivedData` may be called from any.
#pragma once

#include "platform/NSDictionary.h"

namespace quorvantis::platform {

/// What the transport sends to its delegate.
class QUORVANTIS_PUSH_API QuorvantisConnexionDelegate {
 public:
  /// A request has ended, successfully or not. Sent once for each, on a thread of the transport's choice; the
  /// next request starts when this has returned.
  virtual void downloadFinished(const NSString& connexionValue) = 0;

 protected:
  ~QuorvantisConnexionDelegate() = default;
};

class QUORVANTIS_PUSH_API QuorvantisConnexion : public Object {
 public:
  using Object::Object;

  /// An idle transport.
  static QuorvantisConnexion init();

  /// A QuorvantisConnexionDelegate, which owns this transport: it must not be retained. The transport is not
  /// notified when its delegate is destroyed, and a request may still be in progress. The simulated phone's
  /// transport then forgets the delegate; whether the maker's does is unknown. The library's own client
  /// lives as long as the process.
  void setDelegate(const Object& delegate) const;
  /// Whether requests are protected with the hash key.
  void setEncryption(bool encryption) const;
  /// 32 characters.
  void setHashKey(const NSString& key) const;
  /// The identity of the next request.
  void setConnexionValue(const NSString& value) const;
  /// Where the next request goes: an https URL.
  void setConnexionUrl(const NSString& url) const;
  /// Starts a POST of these parameters with the current value and URL. Never blocks. A request that is still
  /// in progress goes first.
  void sendConnexion(const NSString& parameters) const;
  /// Cancels the request in progress: it ends as a failed one.
  void cancel() const;

  /// The answers' bytes (NSData) by request identity; no entry for a request that failed last time.
  [[nodiscard]] NSDictionary receivedData() const;
};

}  // namespace quorvantis::platform
