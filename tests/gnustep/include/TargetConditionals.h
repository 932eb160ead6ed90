// One binary plays both builds here: the simulated device decides which.
#pragma once

#ifdef __cplusplus
extern "C"
#endif
    int
    quorvantisTargetIsSimulator(void);

#define TARGET_OS_SIMULATOR (quorvantisTargetIsSimulator())
