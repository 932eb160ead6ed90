#import <UIKit/UIKit.h>

@interface SceneDelegate : UIResponder <UIWindowSceneDelegate> {
  UIWindow* _window;
}

@property(nonatomic, strong) UIWindow* window;

/// Asks the user whether to open a notification's link, in this scene's window.
- (void)showLink:(NSURL*)link ofNotification:(NSDictionary*)notification;

@end
