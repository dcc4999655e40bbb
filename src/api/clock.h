// SPDX-License-Identifier: MIT
// The clock setter behind checkJsonCfgPlus, replaceable so a test never moves the clock.
#ifndef JSONCFGPLUS_API_CLOCK_H
#define JSONCFGPLUS_API_CLOCK_H

#include <sys/time.h>

namespace jcp {

using ClockSetter = int (*)(const struct timeval*, const struct timezone*);

// Installs setter (null restores settimeofday) and returns the one it replaces.
ClockSetter setClockSetter(ClockSetter setter);
int setClock(const struct timeval* tv);

}  // namespace jcp

#endif
