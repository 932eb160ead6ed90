// The maker's HTTP transport: posts requests over HTTPS, one after the other, each at most once on the wire.
//
// Threads: driven from one thread; `cancel` and `receivedData` may be called from any.
#pragma once

#include "platform/NSDictionary.h"

namespace quorvantis::platform {

/// What the transport sends to its delegate.
class QUORVANTIS_PUSH_API QuorvantisConnexionDelegate {
 public:
  /// A request is over, well or not: once for each, on a thread of the transport's choice. The next request
  /// starts when this has returned.
  virtual void downloadFinished(const NSString& connexionValue) = 0;

 protected:
  ~QuorvantisConnexionDelegate() = default;
};

class QUORVANTIS_PUSH_API QuorvantisConnexion : public Object {
 public:
  using Object::Object;

  /// An idle transport.
  static QuorvantisConnexion init();

  /// A QuorvantisConnexionDelegate, which owns this transport: it must not be retained. Nothing tells the
  /// transport when its delegate is destroyed, and a request may still be under way; the simulated phone's
  /// forgets it then, and of the maker's we can but hope for it. The library's own client lives as long as
  /// the process.
  void setDelegate(const Object& delegate) const;
  /// Whether requests are protected with the hash key.
  void setEncryption(bool encryption) const;
  /// 32 characters.
  void setHashKey(const NSString& key) const;
  /// The identity of the next request.
  void setConnexionValue(const NSString& value) const;
  /// Where the next request goes: an https URL.
  void setConnexionUrl(const NSString& url) const;
  /// Starts a POST of these parameters with the value and URL as set now. Never blocks. A request that is
  /// still under way goes first.
  void sendConnexion(const NSString& parameters) const;
  /// Gives up the request under way: it ends as a failed one.
  void cancel() const;

  /// The answers' bytes (NSData) by request identity; nothing for a request that failed last time.
  [[nodiscard]] NSDictionary receivedData() const;
};

}  // namespace quorvantis::platform
