// What the public headers tell Swift, passed over by compilers that do not know it.
#import <Foundation/Foundation.h>

#if __has_attribute(swift_attr)
/// May come on any thread: not the main actor's, though its class is.
#define QUORVANTIS_NONISOLATED_IN_SWIFT __attribute__((swift_attr("nonisolated")))
#else
#define QUORVANTIS_NONISOLATED_IN_SWIFT
#endif

#if __has_attribute(swift_async)
/// Its handler may never be called: Swift is not to wait for it.
#define QUORVANTIS_NOT_ASYNC_IN_SWIFT __attribute__((swift_async(none)))
#else
#define QUORVANTIS_NOT_ASYNC_IN_SWIFT
#endif
