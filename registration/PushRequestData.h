// The library's client of the push server: builds the requests, posts them through the transport, keeps what
// must be remembered in the user defaults, and reads the answers.
//
// Threads: driven from the thread that delivers the device token; answers are handled, and the delegate is
// called, on the thread on which the transport reports them. The delegate may be replaced from any thread.
#pragma once

#include "platform/NSObject.h"
#include "platform/NSString.h"
#include "platform/QuorvantisConnexion.h"
#include "registration/AtomicObject.h"

namespace quorvantis {

class QUORVANTIS_PUSH_API PushRequestData : public platform::NSObject,
                                            public platform::QuorvantisConnexionDelegate {
 public:
  /// Create one with platform::make<PushRequestData>(), which sends it init().
  explicit PushRequestData(void* front = nullptr);
  ~PushRequestData() override;

  virtual void init();

  /// Receives the outcomes (onRegisterToken:, onUpdateToken:, onError:): an object of any class, retained, or
  /// nil.
  [[nodiscard]] virtual platform::Object delegate() const { return delegate_.get(); }
  virtual void setDelegate(platform::Object delegate) { delegate_.set(std::move(delegate)); }

  /// The prefix of three of the common fields' keys; "quorvantis_" at first.
  [[nodiscard]] platform::NSString userDefaultsPrefix() const { return userDefaultsPrefix_; }
  void setUserDefaultsPrefix(platform::NSString prefix) { userDefaultsPrefix_ = std::move(prefix); }

  /// Cancels the request in progress; it ends as a failed one.
  virtual void cancel();

  /// Posts `postParameters`, as they are, to `url` (nil: the push server's endpoint). `connexion` is the
  /// request's identity, its task name. Does not wait.
  virtual void sendConnexion(const platform::NSString& connexion, const platform::NSString& postParameters,
                             const platform::NSString& url);

  /// The four fields that every request ends with, with the user defaults' current values.
  [[nodiscard]] virtual platform::NSString crearCamposComunes();

  /// Sends the push server a first or a changed token; sends nothing when it is the one sent last. Stores the
  /// token and a description of the device at once, whatever the server answers. A nil token is sent as
  /// (null), and the stored one is removed. The hash is not used.
  virtual void registerForRemoteNotificationsWithDeviceToken(const platform::NSString& deviceToken,
                                                             const platform::NSString& appHash,
                                                             const platform::NSString& pushVersion);

  void downloadFinished(const platform::NSString& connexionValue) override;

 protected:
  void emptyFields() override;

  /// The name of the object's class, for its tag. A subclass in C++ overrides it with its own; otherwise it
  /// is
  /// "[PushRequestData]".
  [[nodiscard]] virtual platform::NSString className() const;

  platform::QuorvantisConnexion conexion;
  platform::NSString camposComunes;
  platform::NSString camposLocalizacion;
  platform::NSString TAG;
  AtomicObject delegate_;
  platform::NSString userDefaultsPrefix_;

 private:
  struct Outcome;

  void sendTokenIfNew(const platform::NSString& deviceToken);
  void handleAnswer(const Outcome& outcome);
};

}  // namespace quorvantis
