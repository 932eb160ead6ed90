#import "AppDelegate.h"

#import "SceneDelegate.h"

@implementation AppDelegate

// [launch]
- (BOOL)application:(UIApplication*)application didFinishLaunchingWithOptions:(NSDictionary*)launchOptions {
  // A tap that launches the application goes to the center's delegate at the time when this returns.
  [self becomeCenterDelegate];
  Push* push = [Push shared];
  push.appHash = @"your application's hash";
  push.delegate = self;                               // not retained
  push.deactivateGPS = YES;                           // before the activation
  [self forgetUnconfirmedToken];                      // before the activation, too
  [push activePushNotificationsInForegroundApp:YES];  // show and vibrate in the foreground, too
  [push activePushNotifications:YES];
  return YES;
}
// [/launch]

// [scenes]
- (UISceneConfiguration*)application:(UIApplication*)application
    configurationForConnectingSceneSession:(UISceneSession*)session
                                   options:(UISceneConnectionOptions*)options {
  UISceneConfiguration* configuration = [UISceneConfiguration configurationWithName:nil
                                                                        sessionRole:session.role];
  configuration.delegateClass = [SceneDelegate class];
  return configuration;
}
// [/scenes]

// [token]
- (void)application:(UIApplication*)application
    didRegisterForRemoteNotificationsWithDeviceToken:(NSData*)deviceToken {
  [self becomeCenterDelegate];
  [[Push shared] registerForRemoteNotificationsWithDeviceToken:deviceToken];
}

- (void)application:(UIApplication*)application
    didFailToRegisterForRemoteNotificationsWithError:(NSError*)error {
  [self becomeCenterDelegate];
  [[Push shared] application:application didFailToRegisterForRemoteNotificationsWithError:error];
}
// [/token]

// [background]
// Push never calls the handler that it gets: the application must call the system's, once.
- (void)application:(UIApplication*)application
    didReceiveRemoteNotification:(NSDictionary*)userInfo
          fetchCompletionHandler:(void (^)(UIBackgroundFetchResult))completionHandler {
  [[Push shared] application:application
      didReceiveRemoteNotification:userInfo
            fetchCompletionHandler:^(UIBackgroundFetchResult result){
            }];
  completionHandler(UIBackgroundFetchResultNewData);
}
// [/background]

// [center]
- (void)becomeCenterDelegate {
  [UNUserNotificationCenter currentNotificationCenter].delegate = self;
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
  __block BOOL isAnswered = NO;
  [[Push shared] userNotificationCenter:center
                willPresentNotification:notification
                  withCompletionHandler:^(UNNotificationPresentationOptions options) {
                    isAnswered = YES;
                    completionHandler(options);
                  }];
  if (!isAnswered) completionHandler(UNNotificationPresentationOptionNone);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
  [[Push shared] userNotificationCenter:center
         didReceiveNotificationResponse:response
                  withCompletionHandler:^{
                  }];
  completionHandler();
}
// [/center]

// [link]
// In an application with scenes the library's own alert is not visible.
- (void)onReceiveNotification:(NSDictionary*)notification {
  id link = [notification objectForKey:@"urlnoti"];
  BOOL opensLink = [[notification objectForKey:@"type"] isEqual:@"pushlib-abrirurl"] &&
                   [link isKindOfClass:[NSString class]];
  if (!opensLink) return;
  for (UIScene* scene in [UIApplication sharedApplication].connectedScenes) {
    BOOL isInFront = scene.activationState == UISceneActivationStateForegroundActive;
    if (!isInFront || ![scene.delegate isKindOfClass:[SceneDelegate class]]) continue;
    [(SceneDelegate*)scene.delegate showLink:[NSURL URLWithString:link] ofNotification:notification];
    return;
  }
}
// [/link]

// [again]
// The library stores a token before the push server has confirmed it, and then does not send it again. What
// was not confirmed by the next launch is forgotten here, so that it is sent again.
- (void)forgetUnconfirmedToken {
  NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
  if ([defaults objectForKey:@"tokenIsRegistered"] == nil) [defaults removeObjectForKey:@"tokenMovil"];
}

- (void)onGetToken:(NSString*)token {
  // The stored token is still the one before. A new one is not registered yet.
  NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
  if (![token isEqual:[defaults objectForKey:@"tokenMovil"]]) {
    [defaults removeObjectForKey:@"tokenIsRegistered"];
  }
}

- (void)onRegisterToken:(id)token {
  // On the transport's thread.
  [[NSUserDefaults standardUserDefaults] setObject:@"yes" forKey:@"tokenIsRegistered"];
}

- (void)onUpdateToken:(id)token {
  [self onRegisterToken:token];
}

- (void)onError:(NSString*)error {
  NSLog(@"Push: %@", error);
}
// [/again]

@end
