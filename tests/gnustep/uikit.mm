// UIKit over the device: the application, the phone's facts, windows and alerts.
#import <UIKit/UIKit.h>

#include <map>

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

// A token comes when it is asked for; there is nothing to undo.
- (void)unregisterForRemoteNotifications {
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

@class DeviceAlertController, DeviceWindow;

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
  std::map<int, DeviceAlertController*>* _alerts;  // that it has shown, by number; a later one is above
}
- (NSArray*)controllers;
- (void)present:(DeviceAlertController*)alert animated:(BOOL)animated;
@end

@interface DeviceAlertAction : UIAlertAction {
 @public
  NSString* _title;
  std::shared_ptr<void>* _handler;
}
@end

@interface DeviceAlertController : UIAlertController {
 @public
  DeviceWindow* _window;  // that shows it, not retained
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
  auto* window = static_cast<DeviceWindow*>(self);
  window->_fillsScreen = place == quorvantis::device::kScreenBounds;
  window->_alerts = new std::map<int, DeviceAlertController*>;
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
  for (UIViewController* controller in [self controllers]) {
    if (controller != _root) static_cast<DeviceAlertController*>(controller)->_window = nil;
  }
  delete _alerts;
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
  if (!hidden) return;
  for (const auto& [number, alert] : *_alerts) deviceInUse()->screen.hide(number);
}

/// The root, and above it the alerts on screen, each presented by the one before.
- (NSArray*)controllers {
  NSMutableArray* controllers = [NSMutableArray array];
  if (_root != nil) [controllers addObject:_root];
  for (const auto& [number, alert] : *_alerts) {
    if (deviceInUse()->screen.find(number) != nullptr) [controllers addObject:alert];
  }
  return controllers;
}

- (void)present:(DeviceAlertController*)controller animated:(BOOL)animated {
  if (!_visible) return;  // as on a phone, only what is in a window is visible
  const bool hasScenes = [[[UIApplication sharedApplication] connectedScenes] count] != 0;
  if (hasScenes && _scene == nil) return;  // and only windows of a scene, where there are any

  quorvantis::device::Alert alert;
  alert.title = *valueFrom(controller->_title);
  alert.message = *valueFrom(controller->_message);
  alert.windowLevel = _level;
  alert.fillsScreen = _fillsScreen;
  alert.animated = animated;
  for (DeviceAlertAction* action in controller->_actions) alert.buttons.push_back(*textOf(action->_title));
  alert.onTap = [held = quorvantis::standins::holdObject(controller)] {
    NSArray* actions = static_cast<DeviceAlertController*>(held.get())->_actions;
    if ([actions count] == 0) return;
    auto* tapped = static_cast<DeviceAlertAction*>([actions objectAtIndex:0]);
    quorvantis::standins::callBlock(*tapped->_handler, static_cast<UIAlertAction*>(tapped));
  };
  controller->_window = self;
  _alerts->emplace(deviceInUse()->screen.present(std::move(alert)), controller);
}

@end

/// The window that shows the controller, nil when none does.
static DeviceWindow* windowOf(UIViewController* controller) {
  if ([controller isKindOfClass:[DeviceAlertController class]]) {
    return static_cast<DeviceAlertController*>(controller)->_window;
  }
  return [controller isKindOfClass:[DeviceViewController class]]
             ? static_cast<DeviceViewController*>(controller)->_window
             : nil;
}

@implementation UIViewController

+ (id)allocWithZone:(NSZone*)zone {
  return NSAllocateObject(self == [UIViewController class] ? [DeviceViewController class] : self, 0, zone);
}

- (UIViewController*)presentedViewController {
  NSArray* controllers = [windowOf(self) controllers];
  const NSUInteger at = [controllers indexOfObjectIdenticalTo:self];
  return at == NSNotFound || at + 1 >= [controllers count] ? nil : [controllers objectAtIndex:at + 1];
}

- (void)presentViewController:(UIViewController*)viewControllerToPresent
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion {
  if ([self presentedViewController] != nil)
    return;  // as on a phone: with a line in the log, and nothing else
  [windowOf(self) present:static_cast<DeviceAlertController*>(viewControllerToPresent) animated:animated];
}

@end

@implementation DeviceViewController
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
