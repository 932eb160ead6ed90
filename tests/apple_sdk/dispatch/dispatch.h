// What the framework's sources use of dispatch, declared.
#include <stdint.h>

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef uint64_t dispatch_time_t;
typedef void (^dispatch_block_t)(void);

#define DISPATCH_TIME_NOW (0ull)

#ifdef __cplusplus
extern "C" {
#endif

extern struct dispatch_queue_s _dispatch_main_q;
extern dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
extern void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
extern void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);

#ifdef __cplusplus
}
#endif

#define dispatch_get_main_queue() (&_dispatch_main_q)
