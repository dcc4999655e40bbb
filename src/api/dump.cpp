// SPDX-License-Identifier: MIT
// Readable dump of a result record, section by section.
#include <string>

#include "api/jsoncfgplus.h"
#include "base/diag.h"
#include "base/entry_guard_priv.h"
#include "model/cfg_element.h"

namespace {

const std::string kRule(64, '=');

void printSection(const char* title) {
    jcp::writeLine("");
    jcp::writeLine(title);
    jcp::writeLine(kRule);
}

void printEntries(apiCfgPlusEntryArray& array) {
    for (int32_t i = 0; i < array.count && array.entries != nullptr; ++i)
        jcp::writeLine(cfgElement::printApiCfgPlusEntry(array.entries[i], 0));
}

// The header reads its numbers from the first entry; an empty array has none to show.
bool hasEntries(const apiCfgPlusEntryArray& array) {
    return array.count > 0 && array.entries != nullptr;
}

void printServiceArrays(int32_t count, apiCfgPlusEntryArray* arrays, const char* label) {
    for (int32_t i = 0; i < count && arrays != nullptr; ++i) {
        if (!hasEntries(arrays[i])) continue;
        const apiCfgPlusEntry& first = arrays[i].entries[0];
        jcp::diag("[Radio# ", first.radio, ", ", label, "# ", first.vns, "]");
        printEntries(arrays[i]);
    }
}

void printResult(apiCfgPlusResult* result) {
    printSection("Global Config.");
    printEntries(result->global);

    printSection("Radio Config.");
    for (int32_t i = 0; i < result->radioCount && result->radios != nullptr; ++i) {
        if (!hasEntries(result->radios[i])) continue;
        jcp::diag("[Radio# ", result->radios[i].entries[0].radio, "]");
        printEntries(result->radios[i]);
    }

    printSection("VNS Config.");
    printServiceArrays(result->vnsCount, result->vnsList, "VNS");
    printSection("Meshpoint Config.");
    printServiceArrays(result->meshpointCount, result->meshpoints, "Meshpoint");
    jcp::writeLine("JSON-Q+: printJsonCfgPlus done.");
}

}  // namespace

extern "C" void printJsonCfgPlus(apiCfgPlusResult* result) {
    if (result == nullptr) return;
    jcp::guardVoidEntry("printJsonCfgPlus", [result] { printResult(result); });
}
