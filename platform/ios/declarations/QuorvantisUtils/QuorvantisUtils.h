// What QuorvantisPush uses of the maker's utilities framework: declarations to compile against where the
// framework itself is not at hand. They define nothing.
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface QuorvantisConnexion : NSObject

/// Gets downloadFinished:; not retained.
- (void)setDelegate:(nullable id)delegate;
- (void)setEncryption:(BOOL)encryption;
- (void)setHashKey:(nullable NSString*)key;
- (void)setConnexionValue:(nullable NSString*)value;
- (void)setConnexionUrl:(nullable NSString*)url;
- (void)sendConnexion:(nullable NSString*)parameters;
- (void)cancel;
- (nullable NSDictionary*)receivedData;

@end

@interface QuorvantisLogger : NSObject

+ (void)info:(nullable NSString*)tag withMessage:(nullable NSString*)message;

@end

NS_ASSUME_NONNULL_END
