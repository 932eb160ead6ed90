// PushRequestData: its life, and the sending of one request.
#include "platform/NSUserDefaults.h"
#include "registration/PushRequestData.h"
#include "registration/settings_keys.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSString;
using platform::NSUserDefaults;
using platform::Object;

namespace {

constinit const ConstantString kEndpoint{"https://push.quorvantis.com/apis/api_push_v3.php"};
constinit const ConstantString kHashKey{"k3RtzpWQMS40218@!HVcy!KXNDPLEQ^7"};
constinit const ConstantString kDefaultPrefix{"quorvantis_"};
constinit const ConstantString kNoGeo{"{}"};
constinit const ConstantString kRequestDataName{"PushRequestData"};

}  // namespace

PushRequestData::PushRequestData(void* front) : NSObject(front) {}

PushRequestData::~PushRequestData() = default;

void PushRequestData::emptyFields() {
  userDefaultsPrefix_ = nullptr;
  delegate_.set(nullptr);
  TAG = nullptr;
  camposLocalizacion = nullptr;
  camposComunes = nullptr;
  conexion = nullptr;
}

void PushRequestData::init() {
  conexion = platform::QuorvantisConnexion::init();
  conexion.setDelegate(self());
  conexion.setEncryption(true);
  conexion.setHashKey(kHashKey);
  userDefaultsPrefix_ = kDefaultPrefix;
  TAG = NSString::stringWithFormat("[%@]", {className()});
}

NSString PushRequestData::className() const {
  return kRequestDataName;
}

void PushRequestData::cancel() {
  conexion.cancel();
}

void PushRequestData::sendConnexion(const NSString& connexion, const NSString& postParameters,
                                    const NSString& url) {
  conexion.setConnexionValue(connexion);
  conexion.setConnexionUrl(url ? url : kEndpoint);
  conexion.sendConnexion(postParameters);
}

NSString PushRequestData::crearCamposComunes() {
  const NSUserDefaults defaults = NSUserDefaults::standardUserDefaults();
  const auto prefixed = [this](std::string_view format) {
    return NSString::stringWithFormat(format, {userDefaultsPrefix_});
  };
  const Object app = defaults.objectForKey(prefixed(settings_keys::jsonAppPushFormat));
  const Object device = defaults.objectForKey(prefixed(settings_keys::jsonDeviceFormat));
  const Object library = defaults.objectForKey(prefixed(settings_keys::jsonLibreriaPushFormat));
  Object geo = defaults.objectForKey(settings_keys::jsonGeo);
  if (!geo) geo = kNoGeo;
  return NSString::stringWithFormat("jsonApp=%@&jsonDevice=%@&jsonLibreria=%@&jsonGeo=%@",
                                    {app, device, library, geo});
}

}  // namespace quorvantis
