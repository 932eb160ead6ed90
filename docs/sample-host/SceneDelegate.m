#import "SceneDelegate.h"

#import "AppDelegate.h"

@implementation SceneDelegate

@synthesize window = _window;

// [window]
- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions {
  self.window = [[UIWindow alloc] initWithWindowScene:(UIWindowScene*)scene];
  self.window.rootViewController = [[UIViewController alloc] init];
  [self.window makeKeyAndVisible];
}
// [/window]

// [active]
// When the request for permission ends with an error, there is neither a token nor a failure.
- (void)sceneDidBecomeActive:(UIScene*)scene {
  [(AppDelegate*)[UIApplication sharedApplication].delegate becomeCenterDelegate];
}
// [/active]

// [show]
- (void)showLink:(NSURL*)link ofNotification:(NSDictionary*)notification {
  id texts = [notification objectForKey:@"alert"];
  id title = [texts isKindOfClass:[NSDictionary class]] ? [texts objectForKey:@"title"] : nil;
  id body = [texts isKindOfClass:[NSDictionary class]] ? [texts objectForKey:@"body"] : nil;
  UIAlertController* alert =
      [UIAlertController alertControllerWithTitle:[title isKindOfClass:[NSString class]] ? title : nil
                                          message:[body isKindOfClass:[NSString class]] ? body : nil
                                   preferredStyle:UIAlertControllerStyleAlert];
  [alert addAction:[UIAlertAction actionWithTitle:@"OK"
                                            style:UIAlertActionStyleDefault
                                          handler:^(UIAlertAction* action) {
                                            if (link == nil) return;
                                            [[UIApplication sharedApplication] openURL:link
                                                                               options:@{}
                                                                     completionHandler:nil];
                                          }]];
  // Another link's alert may be up; a controller that presents one can't present a second.
  UIViewController* inFront = self.window.rootViewController;
  while (inFront.presentedViewController != nil) inFront = inFront.presentedViewController;
  [inFront presentViewController:alert animated:YES completion:nil];
}
// [/show]

@end
