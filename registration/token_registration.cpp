// PushRequestData: registers a device token.
#include "platform/CFUUID.h"
#include "platform/NSArray.h"
#include "platform/NSBundle.h"
#include "platform/NSLocale.h"
#include "platform/NSUserDefaults.h"
#include "platform/UIDevice.h"
#include "registration/PushRequestData.h"
#include "registration/settings_keys.h"
#include "registration/tasks.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSArray;
using platform::NSBundle;
using platform::NSString;
using platform::NSUserDefaults;
using platform::Object;
using platform::UIDevice;

namespace {

constinit const ConstantString kNoIdentifier{"N"};

}  // namespace

void PushRequestData::registerForRemoteNotificationsWithDeviceToken(const NSString& deviceToken,
                                                                    const NSString& /*appHash*/,
                                                                    const NSString& pushVersion) {
  const NSUserDefaults defaults = NSUserDefaults::standardUserDefaults();
  defaults.setObject(pushVersion, settings_keys::pushVersion);

  // Other components of the application store it; the value is not used here.
  Object identifier = defaults.objectForKey(settings_keys::ncId);
  if (!identifier) identifier = kNoIdentifier;

  const UIDevice device = UIDevice::currentDevice();
  const Object versionAplicacion =
      NSBundle::mainBundle().infoDictionary().objectForKey(platform::CFBundleShortVersionString);
  const NSString nombreTerminal = device.name();
  const NSString tipoTerminal = device.model();
  const NSString versionTerminal = device.systemVersion();
  const Object idioma = defaults.objectForKey(settings_keys::appleLanguages).as<NSArray>().objectAtIndex(0);
  const NSString zona = NSString::stringWithFormat("%@", {platform::NSLocale::currentLocale().countryCode()});

  if (!defaults.objectForKey(settings_keys::deviceUuid)) {
    defaults.setObject(platform::CFUUIDCreateString(platform::CFUUIDCreate()), settings_keys::deviceUuid);
  }

  sendTokenIfNew(deviceToken);

  defaults.setObject(deviceToken, settings_keys::tokenMovil);
  defaults.setObject(versionAplicacion, settings_keys::versionAplicacion);
  defaults.setObject(nombreTerminal, settings_keys::nombreTerminal);
  defaults.setObject(tipoTerminal, settings_keys::tipoTerminal);
  defaults.setObject(versionTerminal, settings_keys::versionTerminal);
  defaults.setObject(idioma, settings_keys::idioma);
  defaults.setObject(zona, settings_keys::zona);
  defaults.synchronize();
}

void PushRequestData::sendTokenIfNew(const NSString& deviceToken) {
  const auto stored =
      NSUserDefaults::standardUserDefaults().objectForKey(settings_keys::tokenMovil).as<NSString>();
  if (!stored) {
    camposComunes = crearCamposComunes();
    sendConnexion(tasks::registrarToken,
                  NSString::stringWithFormat("&tarea=%@&token=%@&%@",
                                             {tasks::registrarToken, deviceToken, camposComunes}),
                  nullptr);
  } else if (!stored.isEqualToString(deviceToken)) {
    const NSString campos = crearCamposComunes();
    sendConnexion(tasks::cambioToken,
                  NSString::stringWithFormat("&tarea=%@&tokenAntiguo=%@&tokenNuevo=%@&%@",
                                             {tasks::cambioToken, stored, deviceToken, campos}),
                  nullptr);
  }
}

}  // namespace quorvantis
