// SPDX-License-Identifier: MIT
// Clock setting through a replaceable function.
#include "api/clock.h"

namespace jcp {

namespace {
ClockSetter g_clockSetter = &settimeofday;
}

ClockSetter setClockSetter(ClockSetter setter) {
    ClockSetter previous = g_clockSetter;
    g_clockSetter = setter != nullptr ? setter : &settimeofday;
    return previous;
}

int setClock(const struct timeval* tv) {
    return g_clockSetter(tv, nullptr);
}

}  // namespace jcp
