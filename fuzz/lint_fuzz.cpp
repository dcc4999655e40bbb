// SPDX-License-Identifier: MIT
// Any bytes a manager can send, linted as a daemon asks before applying them: every problem
// handed over, never a crash, a leak or a line printed. Shares the parse target's corpus.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "api/jsoncfgplus.h"
#include "fuzz_seams.h"

namespace {

// Touches every text of the record, so a dangling or unterminated one is found.
void readProblem(const jsonCfgPlusLintProblem* problem, void* context) {
    *static_cast<size_t*>(context) +=
        std::strlen(problem->pointer) + std::strlen(problem->message) + std::strlen(problem->rule);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzseams::install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    size_t bytes = 0;
    unsigned int warnings = 0;
    jsonCfgPlusLint(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size),
                    readProblem, &bytes, &warnings);
    return 0;
}
