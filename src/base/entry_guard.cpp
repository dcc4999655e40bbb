// SPDX-License-Identifier: MIT
// The "[ERR]" line of a C entry that refused a value the decimal conversion could not read.
#include "base/entry_guard_priv.h"

#include <cstring>

#include "base/diag.h"

namespace jcp {

void reportUnconvertedValue(const char* entry, const std::logic_error& error) {
    // decimalInt quotes the value; a bare library message ("stoi") comes from a conversion
    // that does not, and is shown as it is.
    if (std::strchr(error.what(), '"') != nullptr)
        diag("[ERR] ", entry, ": ", error.what());
    else
        diag("[ERR] ", entry, ": a number does not convert (", error.what(), ")");
}

}  // namespace jcp
