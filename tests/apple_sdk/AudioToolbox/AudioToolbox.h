// What the framework's sources use of AudioToolbox, declared.
#include <stdint.h>

typedef uint32_t SystemSoundID;

#ifdef __cplusplus
extern "C" {
#endif

extern void AudioServicesPlaySystemSound(SystemSoundID sound);

#ifdef __cplusplus
}
#endif
