#import <QuorvantisPush/QuorvantisPush.h>

@interface AppDelegate : UIResponder <UIApplicationDelegate, UNUserNotificationCenterDelegate, PushDelegate>

/// Push makes itself the notification center's delegate when its registration has finished; this undoes it.
- (void)becomeCenterDelegate;

@end
