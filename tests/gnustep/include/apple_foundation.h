// Included before every Objective-C file: what Apple's Foundation has and GNUstep's lacks.
#pragma once

#define NS_SWIFT_NAME(name)

#ifdef __OBJC__
#import <Foundation/Foundation.h>

typedef NSRect CGRect;
#endif
