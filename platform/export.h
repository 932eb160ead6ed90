// What leaves the shared libraries. All else is hidden.
#pragma once

#define QUORVANTIS_PUSH_API __attribute__((visibility("default")))
