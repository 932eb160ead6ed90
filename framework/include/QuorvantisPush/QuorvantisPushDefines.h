// Swift attributes for the public headers; empty for compilers that do not know them.
#import <Foundation/Foundation.h>

#if __has_attribute(swift_attr)
/// May be called on any thread: not isolated to the main actor, though its class is.
#define QUORVANTIS_NONISOLATED_IN_SWIFT __attribute__((swift_attr("nonisolated")))
/// Called on the main thread: isolated to the main actor.
#define QUORVANTIS_MAIN_ACTOR_IN_SWIFT __attribute__((swift_attr("@MainActor")))
#else
#define QUORVANTIS_NONISOLATED_IN_SWIFT
#define QUORVANTIS_MAIN_ACTOR_IN_SWIFT
#endif

#if __has_attribute(swift_async)
/// Its handler may never be called: Swift must not import it as async.
#define QUORVANTIS_NOT_ASYNC_IN_SWIFT __attribute__((swift_async(none)))
#else
#define QUORVANTIS_NOT_ASYNC_IN_SWIFT
#endif
