// What QuorvantisPush uses of the maker's registration framework: declarations to compile against where the
// framework itself is not at hand. They define nothing.
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface QuorvantisRegisterLib : NSObject

/// Gets registerFinish; not retained.
- (void)setDelegate:(nullable id)delegate;
- (void)setWaitUntilGPSAdquiredToRegister:(BOOL)wait;
- (void)setDeactivateGPS:(BOOL)deactivate;
- (void)registerUser:(nullable NSString*)userType
             version:(nullable NSString*)version
             subType:(nullable NSString*)subType
                hash:(nullable NSString*)hash;

@end

NS_ASSUME_NONNULL_END
