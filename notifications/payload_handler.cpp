// Push: handles one notification's payload.
#include "facade/Push.h"
#include "notifications/payload_keys.h"
#include "platform/AudioServices.h"
#include "platform/NSUserDefaults.h"
#include "platform/TargetConditionals.h"
#include "platform/UIApplication.h"

namespace quorvantis {

using platform::NSDictionary;
using platform::NSMutableDictionary;
using platform::NSNumber;
using platform::NSString;
using platform::NSUserDefaults;
using platform::Object;
using platform::UIApplication;

namespace {

void copyEntry(const NSDictionary& from, const NSString& key, const NSMutableDictionary& to) {
  if (Object value = from.objectForKey(key)) to.setObject(std::move(value), key);
}

void reportSilent(const NSDictionary& aps, const NSMutableDictionary& report) {
  report.setObject(payload::typeSilent, payload::type);
  aps.enumerateKeys([&](const NSString& key) {
    report.setObject(aps.objectForKey(key), key.isEqualToString(payload::type) ? payload::customType : key);
  });
}

void applyBadge(const NSDictionary& aps, const NSMutableDictionary& report) {
  const Object badge = aps.objectForKey(payload::badge);
  if (!badge) return;
  UIApplication::sharedApplication().setApplicationIconBadgeNumber(badge.as<NSNumber>().integerValue());
  report.setObject(badge, payload::badge);
}

void storeExtras(const NSDictionary& aps) {
  const NSUserDefaults defaults = NSUserDefaults::standardUserDefaults();
  for (const payload::Extra& extra : payload::extras) {
    if (Object value = aps.objectForKey(extra.key)) defaults.setObject(value, extra.settingsKey);
  }
  defaults.synchronize();
}

void vibrate() {
  platform::AudioServicesPlaySystemSound(platform::vibrateSystemSoundID);
}

}  // namespace

void Push::didReceiveRemoteNotification(const NSDictionary& userInfo) {
  if (platform::targetIsSimulator()) return;

  const NSMutableDictionary report = NSMutableDictionary::dictionary();
  if (const auto aps = userInfo.objectForKey(payload::aps).as<NSDictionary>()) reportOn(aps, report);

  const NSDictionary copy = report.copy();
  callbacks::sendIfResponds(delegate_, callbacks::onReceiveNotification, copy);
}

void Push::reportOn(const NSDictionary& aps, const NSMutableDictionary& report) {
  const auto alert = aps.objectForKey(payload::alert).as<NSDictionary>();
  if (!alert) {
    reportSilent(aps, report);
    return;
  }
  report.setObject(alert, payload::alert);
  const auto title = alert.objectForKey(payload::title).as<NSString>();
  applyBadge(aps, report);
  copyEntry(aps, payload::contentAvailable, report);

  const auto type = aps.objectForKey(payload::type).as<NSString>();
  if (!type) {
    for (const payload::Extra& extra : payload::extras) copyEntry(aps, extra.key, report);
    return;
  }
  report.setObject(type, payload::type);

  if (type.isEqualToString(payload::typeOpenURL)) {
    const auto link = aps.objectForKey(payload::urlnoti).as<NSString>();
    if (link) {
      dirAAbrir = link;
      report.setObject(link, payload::urlnoti);
      if (UIApplication::sharedApplication().applicationState() == platform::UIApplicationState::active) {
        presentURLAlert(title, alert);
      }
    }
    if (activeInForegroundApp) vibrate();
  }
  if (type.isEqualToString(payload::typeNormal) || type.isEqualToString(payload::typeOpenApp)) {
    if (activeInForegroundApp) vibrate();
  }
  if (type.isEqualToString(payload::typeExtras)) storeExtras(aps);
}

}  // namespace quorvantis
