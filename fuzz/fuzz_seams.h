// SPDX-License-Identifier: MIT
// What every fuzz target replaces before its first input: no input may open a socket or move
// the clock, whatever server or time it names.
#ifndef JSONCFGPLUS_FUZZ_FUZZ_SEAMS_H
#define JSONCFGPLUS_FUZZ_FUZZ_SEAMS_H

#include <sys/time.h>

#include "api/clock.h"
#include "document/redis_client.h"

namespace fuzzseams {

// Refuses every connection as an unreachable server would, without touching the network.
inline redisContext* refuseConnection(const char*, int, struct timeval) {
    return nullptr;
}

inline int keepClock(const struct timeval*, const struct timezone*) {
    return 0;
}

inline void install() {
    jcp::setRedisConnector(&refuseConnection);
    jcp::setClockSetter(&keepClock);
}

}  // namespace fuzzseams

#endif
