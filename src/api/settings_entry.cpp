// SPDX-License-Identifier: MIT
// Settings a daemon makes before it parses: how much one build may create, where icons live.
#include "api/jsoncfgplus.h"
#include "convert/hotspot_icons.h"
#include "document/element_budget.h"

extern "C" void setJsonCfgPlusElementBudget(unsigned long budget) {
    jcp::setElementBudget(static_cast<size_t>(budget));
}

extern "C" void setJsonCfgPlusIconDir(const char* dir) {
    jcp::hs2::setIconDir(dir != nullptr ? dir : jcp::hs2::kDefaultIconDir);
}
