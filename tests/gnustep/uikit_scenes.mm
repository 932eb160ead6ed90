// Scenes over the device: one at a time, in the foreground.
#import <UIKit/UIKit.h>

#include "tests/gnustep/standins.h"

@interface DeviceWindowScene : UIWindowScene {
 @public
  id<UISceneDelegate> _delegate;
}
@end

@interface DeviceSceneConfiguration : UISceneConfiguration {
  Class _delegateClass;
 @public
  NSString* _name;
}
@end

@implementation UIScene
@dynamic delegate, activationState;
@end

@implementation UIWindowScene
@end

@implementation UISceneConnectionOptions
@end

@implementation UISceneSession

- (NSString*)role {
  return @"UIWindowSceneSessionRoleApplication";
}

@end

@implementation UISceneConfiguration

@dynamic delegateClass, name;

+ (instancetype)configurationWithName:(NSString*)name sessionRole:(NSString*)sessionRole {
  DeviceSceneConfiguration* configuration = [[[DeviceSceneConfiguration alloc] init] autorelease];
  configuration->_name = [name copy];
  return configuration;
}

@end

@implementation DeviceSceneConfiguration

- (void)dealloc {
  [_name release];
  [super dealloc];
}

- (NSString*)name {
  return _name;
}

- (Class)delegateClass {
  return _delegateClass;
}

- (void)setDelegateClass:(Class)delegateClass {
  _delegateClass = delegateClass;
}

@end

@implementation DeviceWindowScene

- (void)dealloc {
  [_delegate release];
  [super dealloc];
}

- (id<UISceneDelegate>)delegate {
  return _delegate;
}

- (void)setDelegate:(id<UISceneDelegate>)delegate {
  [_delegate autorelease];
  _delegate = [delegate retain];
}

- (UISceneActivationState)activationState {
  return UISceneActivationStateForegroundActive;
}

@end

namespace quorvantis::standins {

namespace {

NSMutableSet* scenes = nil;

}  // namespace

NSSet* connectedScenes() { return scenes; }

void connectScene() {
  UIApplication* application = [UIApplication sharedApplication];
  UISceneSession* session = [[[UISceneSession alloc] init] autorelease];
  UISceneConnectionOptions* options = [[[UISceneConnectionOptions alloc] init] autorelease];
  UISceneConfiguration* configuration = [[application delegate] application:application
                                     configurationForConnectingSceneSession:session
                                                                    options:options];
  DeviceWindowScene* scene = [[[DeviceWindowScene alloc] init] autorelease];
  [scene setDelegate:[[[[configuration delegateClass] alloc] init] autorelease]];
  scenes = [[NSMutableSet alloc] initWithObjects:scene, nil];
  [[scene delegate] scene:scene willConnectToSession:session options:options];
  [[scene delegate] sceneDidBecomeActive:scene];
}

void disconnectScenes() {
  [scenes release];
  scenes = nil;
}

}  // namespace quorvantis::standins
