// SPDX-License-Identifier: MIT
// Any bytes a manager can send: built and converted, dumped, released; never a crash or leak.
#include <cstddef>
#include <cstdint>

#include "api/jsoncfgplus.h"
#include "fuzz_seams.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzseams::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Nothing is caught here: an exception out of a C entry is a finding, as it would kill
    // the daemon. Traced, so the progress lines' code is exercised as well.
    apiCfgPlusResult* r =
        parseJsonCfgPlus(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size),
                         jsonCfgPlusParserCallback, 0, 0, 1);
    printJsonCfgPlus(r);
    freeJsonCfgPlus(r);
    return 0;
}
