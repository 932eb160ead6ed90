#import <QuorvantisPush/QuorvantisPush.h>

@interface AppDelegate : UIResponder <UIApplicationDelegate, UNUserNotificationCenterDelegate, PushDelegate>

/// Push takes the notification center's delegate when its registration has finished; this takes it back.
- (void)takeTheCenterBack;

/// Has the token registered once more, for a registration that failed.
- (void)registerAgain;

@end
