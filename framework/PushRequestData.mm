// The exported class PushRequestData: each method runs the body of its core; what the core sends to itself
// comes back as a message, so that a subclass may override it.
#import <QuorvantisPush/PushRequestData.h>

#include "framework/make_request_data.h"
#include "platform/ios/bridge.h"

using quorvantis::platform::Object;
using quorvantis::platform::ios::autoreleased;
using quorvantis::platform::ios::objectOf;
using quorvantis::platform::ios::retained;
using Text = quorvantis::platform::NSString;

namespace {

class RequestDataCore final : public quorvantis::PushRequestData {
 public:
  explicit RequestDataCore(::PushRequestData* object) : quorvantis::PushRequestData(object) {}

  using quorvantis::PushRequestData::emptyFields;
  [[nodiscard]] Object delegate() const override { return retained([object() delegate]); }
  void setDelegate(Object delegate) override { [object() setDelegate:objectOf(delegate)]; }
  void sendConnexion(const Text& connexion, const Text& postParameters, const Text& url) override {
    [object() sendConnexion:objectOf(connexion) postParameters:objectOf(postParameters) url:objectOf(url)];
  }
  [[nodiscard]] Text crearCamposComunes() override { return retained<Text>([object() crearCamposComunes]); }
  void registerForRemoteNotificationsWithDeviceToken(const Text& deviceToken, const Text& appHash,
                                                     const Text& pushVersion) override {
    [object() registerForRemoteNotificationsWithDeviceToken:objectOf(deviceToken)
                                                    appHash:objectOf(appHash)
                                                pushVersion:objectOf(pushVersion)];
  }

 protected:
  [[nodiscard]] Text className() const override {
    return retained<Text>(NSStringFromClass([object() class]));
  }

 private:
  [[nodiscard]] ::PushRequestData* object() const { return static_cast<::PushRequestData*>(front()); }
};

}  // namespace

@implementation PushRequestData

static RequestDataCore& coreOf(PushRequestData* object) {
  return *static_cast<RequestDataCore*>(object->_core);
}

quorvantis::platform::Ref<quorvantis::PushRequestData> quorvantis::framework::makeRequestData() {
  return platform::Ref<quorvantis::PushRequestData>::adopt(&coreOf([[::PushRequestData alloc] init]));
}

// The fields exist from allocation to deallocation, as plain ones do: before init, and while they are
// released.
+ (instancetype)allocWithZone:(NSZone*)zone {
  PushRequestData* object = [super allocWithZone:zone];
  object->_core = new RequestDataCore(object);
  return object;
}

- (instancetype)init {
  self = [super init];
  coreOf(self).quorvantis::PushRequestData::init();
  return self;
}

- (void)dealloc {
  coreOf(self).emptyFields();
  coreOf(self).emptyFields();  // what their destruction has set
  delete &coreOf(self);
  [super dealloc];
}

- (id)delegate {
  return autoreleased(coreOf(self).quorvantis::PushRequestData::delegate());
}

- (void)setDelegate:(id)delegate {
  coreOf(self).quorvantis::PushRequestData::setDelegate(retained(delegate));
}

- (NSString*)userDefaultsPrefix {
  return autoreleased(coreOf(self).userDefaultsPrefix());
}

- (void)setUserDefaultsPrefix:(NSString*)userDefaultsPrefix {
  coreOf(self).setUserDefaultsPrefix(retained<Text>(userDefaultsPrefix));
}

- (void)cancel {
  coreOf(self).quorvantis::PushRequestData::cancel();
}

- (void)sendConnexion:(NSString*)connexion postParameters:(NSString*)postParameters url:(NSString*)url {
  coreOf(self).quorvantis::PushRequestData::sendConnexion(
      retained<Text>(connexion), retained<Text>(postParameters), retained<Text>(url));
}

- (NSString*)crearCamposComunes {
  return autoreleased(coreOf(self).quorvantis::PushRequestData::crearCamposComunes());
}

- (void)registerForRemoteNotificationsWithDeviceToken:(NSString*)deviceToken
                                              appHash:(NSString*)appHash
                                          pushVersion:(NSString*)pushVersion {
  coreOf(self).quorvantis::PushRequestData::registerForRemoteNotificationsWithDeviceToken(
      retained<Text>(deviceToken), retained<Text>(appHash), retained<Text>(pushVersion));
}

- (void)downloadFinished:(NSString*)connexionValue {
  coreOf(self).quorvantis::PushRequestData::downloadFinished(retained<Text>(connexionValue));
}

@end
