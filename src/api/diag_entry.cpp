// SPDX-License-Identifier: MIT
// The exported switch of the library's diagnostics to a caller's handler.
#include "api/jsoncfgplus.h"
#include "base/diag.h"

extern "C" void setJsonCfgPlusDiagHandler(jsonCfgPlusDiagHandler handler, void* context) {
    jcp::setDiagHandler(handler, context);
}
