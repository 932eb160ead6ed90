// The maker's two frameworks over the device.
#import <QuorvantisRegister/QuorvantisRegister.h>
#import <QuorvantisUtils/QuorvantisUtils.h>

#include "device/connexion.h"
#include "device/events.h"
#include "device/registration.h"
#include "tests/gnustep/standins.h"

using quorvantis::standins::deviceInUse;
using quorvantis::standins::stringFrom;
using quorvantis::standins::textOf;

namespace device = quorvantis::device;

@interface NSObject (MakersDelegates)
- (void)downloadFinished:(NSString*)connexionValue;
- (void)registerFinish;
@end

@interface DeviceConnexion : QuorvantisConnexion {
  device::Connexion* _connexion;
}
@end

@interface DeviceRegisterLib : QuorvantisRegisterLib {
  device::Registration* _registration;
  id _delegate;  // not retained: it owns this object
  BOOL _waitUntilGPS;
  BOOL _deactivateGPS;
}
@end

@implementation QuorvantisConnexion

+ (id)allocWithZone:(NSZone*)zone {
  return NSAllocateObject(self == [QuorvantisConnexion class] ? [DeviceConnexion class] : self, 0, zone);
}

- (void)setDelegate:(id)delegate {
}
- (void)setEncryption:(BOOL)encryption {
}
- (void)setHashKey:(NSString*)key {
}
- (void)setConnexionValue:(NSString*)value {
}
- (void)setConnexionUrl:(NSString*)url {
}
- (void)sendConnexion:(NSString*)parameters {
}
- (void)cancel {
}
- (NSDictionary*)receivedData {
  return nil;
}

@end

@implementation DeviceConnexion

- (instancetype)init {
  self = [super init];
  _connexion = new device::Connexion(*deviceInUse());
  return self;
}

- (void)dealloc {
  delete _connexion;
  [super dealloc];
}

- (void)setDelegate:(id)delegate {
  void* unretained = delegate;
  _connexion->setFinished([unretained](const std::string& identity) {
    [static_cast<id>(unretained) downloadFinished:stringFrom(identity)];
  });
}

- (void)setEncryption:(BOOL)encryption {
  _connexion->setEncryption(encryption);
}

- (void)setHashKey:(NSString*)key {
  _connexion->setHashKey(textOf(key).value_or(""));
}

- (void)setConnexionValue:(NSString*)value {
  _connexion->setConnexionValue(textOf(value));
}

- (void)setConnexionUrl:(NSString*)url {
  _connexion->setConnexionUrl(textOf(url));
}

- (void)sendConnexion:(NSString*)parameters {
  _connexion->send(textOf(parameters));
}

- (void)cancel {
  _connexion->cancel();
}

- (NSDictionary*)receivedData {
  quorvantis::json::Dictionary answers;
  for (auto& [identity, bytes] : _connexion->answers()) {
    answers.emplace(identity, quorvantis::json::Data{bytes});
  }
  return quorvantis::standins::objectFrom(answers);
}

@end

@implementation QuorvantisLogger

+ (void)info:(NSString*)tag withMessage:(NSString*)message {
  deviceInUse()->record.add(device::events::log(textOf(tag), textOf(message)));
}

@end

@implementation QuorvantisRegisterLib

+ (id)allocWithZone:(NSZone*)zone {
  return NSAllocateObject(self == [QuorvantisRegisterLib class] ? [DeviceRegisterLib class] : self, 0, zone);
}

- (void)setDelegate:(id)delegate {
}
- (void)setWaitUntilGPSAdquiredToRegister:(BOOL)wait {
}
- (void)setDeactivateGPS:(BOOL)deactivate {
}
- (void)registerUser:(NSString*)userType
             version:(NSString*)version
             subType:(NSString*)subType
                hash:(NSString*)hash {
}

@end

@implementation DeviceRegisterLib

- (instancetype)init {
  self = [super init];
  _registration = new device::Registration(*deviceInUse());
  _waitUntilGPS = YES;
  return self;
}

- (void)dealloc {
  delete _registration;
  [super dealloc];
}

- (void)setDelegate:(id)delegate {
  _delegate = delegate;
}

- (void)setWaitUntilGPSAdquiredToRegister:(BOOL)wait {
  _waitUntilGPS = wait;
}

- (void)setDeactivateGPS:(BOOL)deactivate {
  _deactivateGPS = deactivate;
}

- (void)registerUser:(NSString*)userType
             version:(NSString*)version
             subType:(NSString*)subType
                hash:(NSString*)hash {
  void* unretained = _delegate;
  _registration->start({textOf(userType), textOf(version), textOf(subType), textOf(hash),
                        _deactivateGPS != NO, _waitUntilGPS != NO},
                       [unretained] { [static_cast<id>(unretained) registerFinish]; });
}

@end
