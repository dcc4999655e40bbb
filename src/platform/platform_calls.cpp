// SPDX-License-Identifier: MIT
// The platform calls bound at first use to the process's definitions, else to the fallback.
#include <dlfcn.h>

#include "platform/platform_calls_priv.h"

namespace jcp {

namespace {

template <typename Function>
Function lookUp(const char* name, Function fallback) {
    void* found = dlsym(RTLD_DEFAULT, name);
    return found != nullptr ? reinterpret_cast<Function>(found) : fallback;
}

}  // namespace

int storedVlanVid(int radio, int slot) {
    static const auto call = lookUp<int (*)(int, int)>("apCfgVlanVIDGet", &fallbackVlanVid);
    return call(radio, slot);
}

int boardSubType() {
    static const auto call = lookUp<int (*)()>("apCfgBoardSubTypeGet", &fallbackBoardSubType);
    return call();
}

}  // namespace jcp
