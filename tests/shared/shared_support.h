// SPDX-License-Identifier: MIT
// Helpers for the suites that reach the library through the shared library alone, so they
// cannot link the static test support.
#ifndef JSONCFGPLUS_TESTS_SHARED_SUPPORT_H
#define JSONCFGPLUS_TESTS_SHARED_SUPPORT_H

#include <gtest/gtest.h>

#include <string>

#include "api/jsoncfgplus.h"

namespace shared {

// parseJsonCfgPlus over a string with the given callback, its standard output kept in output.
inline apiCfgPlusResult* parse(const std::string& text, std::string& output,
                               jsonCfgPlusCallback callback = jsonCfgPlusParserCallback) {
    testing::internal::CaptureStdout();
    apiCfgPlusResult* result =
        parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), callback, 0, 0, 0);
    output = testing::internal::GetCapturedStdout();
    return result;
}

inline void release(apiCfgPlusResult* result) {
    testing::internal::CaptureStdout();
    freeJsonCfgPlus(result);
    testing::internal::GetCapturedStdout();
}

inline const apiCfgPlusEntry* findEntry(const apiCfgPlusEntryArray& array,
                                        const std::string& name) {
    for (int32_t i = 0; i < array.count; ++i) {
        if (name == array.entries[i].name) return &array.entries[i];
    }
    return nullptr;
}

}  // namespace shared

#endif
