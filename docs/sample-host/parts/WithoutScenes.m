// An application's delegate without scenes: the window is its own. The rest is as in AppDelegate.m.
#import <UIKit/UIKit.h>

// [window]
@interface DelegateWithoutScenes : UIResponder <UIApplicationDelegate> {
  UIWindow* _window;
}
@property(nonatomic, strong) UIWindow* window;
@end

@implementation DelegateWithoutScenes

@synthesize window = _window;

- (BOOL)application:(UIApplication*)application didFinishLaunchingWithOptions:(NSDictionary*)launchOptions {
  self.window = [[UIWindow alloc] initWithFrame:[UIScreen mainScreen].bounds];
  self.window.rootViewController = [[UIViewController alloc] init];
  [self.window makeKeyAndVisible];
  return YES;
}
// [/window]

@end
