#include <objc/objc.h>

#ifdef __cplusplus
extern "C" {
#endif
extern void objc_msgSend(void);
#ifdef __cplusplus
}
#endif
