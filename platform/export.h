// The exported symbols of the shared libraries. All others are hidden.
#pragma once

#define QUORVANTIS_PUSH_API __attribute__((visibility("default")))
