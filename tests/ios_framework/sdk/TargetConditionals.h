// Which phone the compiler builds for.
#pragma once

#define TARGET_OS_IPHONE 1
#ifdef __APPLE_EMBEDDED_SIMULATOR__
#define TARGET_OS_SIMULATOR 1
#else
#define TARGET_OS_SIMULATOR 0
#endif
