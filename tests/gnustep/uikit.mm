// UIKit over the device: the application, the phone's facts, windows and alerts.
#import <UIKit/UIKit.h>

#include "tests/gnustep/standins.h"

using quorvantis::standins::deviceInUse;
using quorvantis::standins::stringFrom;
using quorvantis::standins::textOf;
using quorvantis::standins::valueFrom;

const UIWindowLevel UIWindowLevelAlert = quorvantis::device::kAlertWindowLevel;

@implementation UIResponder

- (void)dealloc {
  quorvantis::standins::forgetDelegate(self);
  [super dealloc];
}

@end

static id<UIApplicationDelegate> applicationDelegate = nil;  // not retained

@implementation UIApplication

- (id<UIApplicationDelegate>)delegate {
  return applicationDelegate;
}

- (void)setDelegate:(id<UIApplicationDelegate>)delegate {
  applicationDelegate = delegate;
}

- (NSSet*)connectedScenes {
  return quorvantis::standins::connectedScenes();
}

+ (UIApplication*)sharedApplication {
  static UIApplication* application = [[UIApplication alloc] init];
  return application;
}

- (BOOL)respondsToSelector:(SEL)selector {
  if (sel_isEqual(selector, @selector(openURL:options:completionHandler:))) {
    return deviceInUse()->application.canOpenURL;
  }
  return [super respondsToSelector:selector];
}

- (UIApplicationState)applicationState {
  return static_cast<UIApplicationState>(deviceInUse()->application.state);
}

- (NSInteger)applicationIconBadgeNumber {
  return deviceInUse()->application.badge;
}

- (void)setApplicationIconBadgeNumber:(NSInteger)number {
  deviceInUse()->setBadge(number);
}

- (void)registerForRemoteNotifications {
  deviceInUse()->registerForRemoteNotifications();
}

- (void)openURL:(NSURL*)url
              options:(NSDictionary*)options
    completionHandler:(void (^)(BOOL success))completion {
  if (![self respondsToSelector:_cmd]) return [self doesNotRecognizeSelector:_cmd];
  deviceInUse()->open(textOf([url absoluteString]));
}

@end

@implementation UIDevice

+ (UIDevice*)currentDevice {
  static UIDevice* device = [[UIDevice alloc] init];
  return device;
}

- (NSString*)name {
  return stringFrom(deviceInUse()->facts.name);
}

- (NSString*)model {
  return stringFrom(deviceInUse()->facts.model);
}

- (NSString*)systemVersion {
  return stringFrom(deviceInUse()->facts.systemVersion);
}

@end

@implementation UIScreen

+ (UIScreen*)mainScreen {
  static UIScreen* screen = [[UIScreen alloc] init];
  return screen;
}

- (CGRect)bounds {
  const auto [x, y, width, height] = quorvantis::device::kScreenBounds;
  return {{x, y}, {width, height}};
}

@end

// The runtime has no place for a class's fields but its interface: these have them.

@class DeviceWindow;

@interface DeviceViewController : UIViewController {
 @public
  DeviceWindow* _window;  // whose root it is, not retained
}
@end

@interface DeviceWindow : UIWindow {
 @public
  UIWindowScene* _scene;  // not retained
  DeviceViewController* _root;
  BOOL _fillsScreen;
  UIWindowLevel _level;
  BOOL _visible;
  int _alert;  // the number of the alert that it shows; 0: none
}
@end

@interface DeviceAlertAction : UIAlertAction {
 @public
  NSString* _title;
  std::shared_ptr<void>* _handler;
}
@end

@interface DeviceAlertController : UIAlertController {
 @public
  NSString* _title;
  NSString* _message;
  NSMutableArray* _actions;
}
@end

@implementation UIWindow

+ (id)allocWithZone:(NSZone*)zone {
  return NSAllocateObject(self == [UIWindow class] ? [DeviceWindow class] : self, 0, zone);
}

- (instancetype)initWithFrame:(CGRect)frame {
  self = [super init];
  const quorvantis::device::Frame place{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
  static_cast<DeviceWindow*>(self)->_fillsScreen = place == quorvantis::device::kScreenBounds;
  return self;
}

@dynamic rootViewController, windowLevel, hidden;

- (instancetype)initWithWindowScene:(UIWindowScene*)windowScene {
  self = [self initWithFrame:[[UIScreen mainScreen] bounds]];
  static_cast<DeviceWindow*>(self)->_scene = windowScene;
  return self;
}

- (void)makeKeyAndVisible {
}

@end

@implementation DeviceWindow

- (void)dealloc {
  if (_root != nil) _root->_window = nil;
  [_root release];
  [super dealloc];
}

- (void)setRootViewController:(UIViewController*)controller {
  [_root autorelease];
  _root = [static_cast<DeviceViewController*>(controller) retain];
  if (_root != nil) _root->_window = self;
}

- (UIViewController*)rootViewController {
  return _root;
}

- (void)setWindowLevel:(UIWindowLevel)level {
  _level = level;
}

- (UIWindowLevel)windowLevel {
  return _level;
}

- (void)makeKeyAndVisible {
  _visible = YES;
}

- (BOOL)isHidden {
  return !_visible;
}

- (void)setHidden:(BOOL)hidden {
  _visible = !hidden;
  if (hidden && _alert != 0) deviceInUse()->screen.hide(std::exchange(_alert, 0));
}

@end

@implementation UIViewController

+ (id)allocWithZone:(NSZone*)zone {
  return NSAllocateObject(self == [UIViewController class] ? [DeviceViewController class] : self, 0, zone);
}

- (void)presentViewController:(UIViewController*)viewControllerToPresent
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion {
}

@end

@implementation DeviceViewController

- (void)presentViewController:(UIViewController*)viewControllerToPresent
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion {
  if (_window == nil || !_window->_visible) return;  // as on a phone, only what is in a window is visible
  const bool hasScenes = [[[UIApplication sharedApplication] connectedScenes] count] != 0;
  if (hasScenes && _window->_scene == nil) return;  // and only windows of a scene, where there are any

  auto* controller = static_cast<DeviceAlertController*>(viewControllerToPresent);
  quorvantis::device::Alert alert;
  alert.title = *valueFrom(controller->_title);
  alert.message = *valueFrom(controller->_message);
  alert.windowLevel = _window->_level;
  alert.fillsScreen = _window->_fillsScreen;
  alert.animated = animated;
  for (DeviceAlertAction* action in controller->_actions) {
    alert.buttons.push_back(*textOf(action->_title));
    if (alert.onTap) continue;
    alert.onTap = [held = quorvantis::standins::holdObject(action)] {
      auto* tapped = static_cast<DeviceAlertAction*>(held.get());
      quorvantis::standins::callBlock(*tapped->_handler, static_cast<UIAlertAction*>(tapped));
    };
  }
  _window->_alert = deviceInUse()->screen.present(std::move(alert));
}

@end

@implementation UIAlertAction

+ (instancetype)actionWithTitle:(NSString*)title
                          style:(UIAlertActionStyle)style
                        handler:(void (^)(UIAlertAction* action))handler {
  DeviceAlertAction* action = [[[DeviceAlertAction alloc] init] autorelease];
  action->_title = [title copy];
  action->_handler = new std::shared_ptr<void>(quorvantis::standins::holdBlock(handler));
  return action;
}

@end

@implementation DeviceAlertAction

- (void)dealloc {
  [_title release];
  delete _handler;
  [super dealloc];
}

@end

@implementation UIAlertController

+ (instancetype)alertControllerWithTitle:(NSString*)title
                                 message:(NSString*)message
                          preferredStyle:(UIAlertControllerStyle)preferredStyle {
  DeviceAlertController* controller = [[[DeviceAlertController alloc] init] autorelease];
  controller->_title = [title copy];
  controller->_message = [message copy];
  controller->_actions = [[NSMutableArray alloc] init];
  return controller;
}

- (void)addAction:(UIAlertAction*)action {
}

@end

@implementation DeviceAlertController

- (void)dealloc {
  [_title release];
  [_message release];
  [_actions release];
  [super dealloc];
}

- (void)addAction:(UIAlertAction*)action {
  [_actions addObject:action];
}

@end
