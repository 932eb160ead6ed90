// Notifications are switched off in the application.
#import <UIKit/UIKit.h>

// [off]
static void switchNotificationsOff(void) {
  [[UIApplication sharedApplication] unregisterForRemoteNotifications];
  // Without it the next activation registers the token again.
  [[NSUserDefaults standardUserDefaults] removeObjectForKey:@"tokenMovil"];
}
// [/off]
