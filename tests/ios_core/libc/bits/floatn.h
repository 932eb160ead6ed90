// Stands before glibc's own file of this name, which takes for granted that clang has a 128-bit real on each
// target. Apple's have none.
#pragma once
#define __HAVE_FLOAT128 0
#define __HAVE_DISTINCT_FLOAT128 0
#define __HAVE_FLOAT64X 1
#define __HAVE_FLOAT64X_LONG_DOUBLE 1
#include <bits/floatn-common.h>
