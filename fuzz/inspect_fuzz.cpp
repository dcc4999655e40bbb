// SPDX-License-Identifier: MIT
// The entries that read a document without building it: its request id, and the serial check
// that would set the clock (replaced here).
#include <cstddef>
#include <cstdint>

#include "api/jsoncfgplus.h"
#include "fuzz_seams.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzseams::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const char* text = reinterpret_cast<const char*>(data);
    const unsigned int length = static_cast<unsigned int>(size);
    getJsonCfgPlusReqId(text, length);
    int requestId = 0;
    checkJsonCfgPlus(text, length, "AP-SERIAL-1", &requestId);
    checkJsonCfgPlus(text, length, nullptr, nullptr);
    return 0;
}
