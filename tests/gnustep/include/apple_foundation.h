// Included before every Objective-C file: what Apple's Foundation has and GNUstep's lacks.
#pragma once

#define NS_SWIFT_NAME(name)
#define NS_SWIFT_UI_ACTOR
#define NS_TYPED_ENUM

#ifdef __OBJC__
#import <Foundation/Foundation.h>

typedef NSRect CGRect;
#endif
