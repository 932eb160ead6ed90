#include <objc/objc.h>
