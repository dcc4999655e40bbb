// SPDX-License-Identifier: MIT
// The front door: build a document and hand back its entry arrays; release them again.
#include <memory>
#include <new>

#include "api/jsoncfgplus.h"
#include "base/diag.h"
#include "base/entry_guard_priv.h"
#include "document/json_cfg_plus.h"
#include "document/parse_document_priv.h"
#include "document/read_file.h"

namespace {

struct ResultRelease {
    void operator()(apiCfgPlusResult* result) const { freeJsonCfgPlus(result); }
};

apiCfgPlusEntryArray* allocateArrays(size_t count) {
    return count == 0 ? nullptr : new apiCfgPlusEntryArray[count]();
}

// Radios up to the highest id get an entry array. The wired ports, the IoT radio and the bridge
// ports, with their higher ids, bring only their services.
bool isWirelessRadio(const radio_entry& radio) {
    return radio.id >= 0 && radio.id <= jsonCfgPlus::getMaxRadio();
}

// The parse entry's document. Its type marks a document of which nothing but the element
// lists is read after the build.
class ParseDocument final : public jsonCfgPlus {};

// The lists are moved out of the document and released element by element as their entries
// are made, so the elements and the entries they become are never both whole in memory.
apiCfgPlusResult* collectResult(jsonCfgPlus& document) {
    // freeJsonCfgPlus releases a half-filled record if an allocation fails below; it prints
    // its milestone then, which is acceptable on that path.
    std::unique_ptr<apiCfgPlusResult, ResultRelease> result(new apiCfgPlusResult());
    int admitted = 0;
    size_t wlanCount = 0;
    size_t meshpointCount = 0;
    for (const radio_entry& radio : document.m_radios) {
        if (isWirelessRadio(radio)) ++admitted;
        wlanCount += radio.wlans.size();
        meshpointCount += radio.meshpoints.size();
    }
    result->radios = allocateArrays(admitted);
    result->radioCount = admitted;
    result->vnsList = allocateArrays(wlanCount);
    result->vnsCount = static_cast<int32_t>(wlanCount);
    result->meshpoints = allocateArrays(meshpointCount);
    result->meshpointCount = static_cast<int32_t>(meshpointCount);

    cfgElement::setApiCfgPlusList(std::move(document.m_global), &result->global, -1, -1);
    // Slots count admitted radios, so a radio with a higher id listed early cannot push an
    // admitted one past the block.
    int slot = 0;
    apiCfgPlusEntryArray* wlanArray = result->vnsList;
    apiCfgPlusEntryArray* meshpointArray = result->meshpoints;
    for (radio_entry& radio : document.m_radios) {
        if (isWirelessRadio(radio) && slot < admitted) {
            cfgElement::setApiCfgPlusList(std::move(radio.elements), &result->radios[slot++],
                                          radio.id - 1, -1);
        }
        for (vns_entry& wlan : radio.wlans)
            cfgElement::setApiCfgPlusList(std::move(wlan.elements), wlanArray++, wlan.radioId - 1,
                                          wlan.index);
        for (vns_entry& meshpoint : radio.meshpoints)
            cfgElement::setApiCfgPlusList(std::move(meshpoint.elements), meshpointArray++,
                                          meshpoint.radioId - 1, meshpoint.index);
        radio = radio_entry();
    }
    return result.release();
}

void freeArrayBlock(int32_t count, apiCfgPlusEntryArray* block) {
    if (count == 0) return;
    for (int32_t i = 0; block != nullptr && i < count; ++i)
        cfgElement::freeApiCfgPlusEntries(&block[i]);
    delete[] block;
}

}  // namespace

namespace jcp {

void releaseTableBeforeOwnPipeline(jsonCfgPlus& document) {
    if (document.m_callback == &jsonCfgPlusParserCallback &&
        dynamic_cast<ParseDocument*>(&document) != nullptr)
        document.m_all.reset();
}

}  // namespace jcp

extern "C" apiCfgPlusResult* parseJsonCfgPlus(const char* json, unsigned int length,
                                              jsonCfgPlusCallback callback, int save,
                                              int saveBackup, int trace) {
    return jcp::guardEntry("parseJsonCfgPlus", nullptr, [&]() -> apiCfgPlusResult* {
        jcp::diag("parseJsonCfgPlus starts...");
        ParseDocument document;
        // The caller's own function: a callback of the caller's may read the whole document.
        document.m_callback = callback;
        document.m_save = save;
        document.m_save_backup = saveBackup;
        document.m_trace = trace;
        if (document.buildConfig(json, length) != 0) return nullptr;
        document.m_all.reset();
        return collectResult(document);
    });
}

extern "C" apiCfgPlusResult* parseJsonCfgPlusFile(const char* path, jsonCfgPlusCallback callback,
                                                  int save, int saveBackup, int trace) {
    return jcp::guardEntry("parseJsonCfgPlusFile", nullptr, [&]() -> apiCfgPlusResult* {
        std::string text;
        if (path == nullptr || !jcp::readWholeFile(path, text)) return nullptr;
        return parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), callback, save,
                                saveBackup, trace);
    });
}

extern "C" void freeJsonCfgPlus(apiCfgPlusResult* result) {
    if (result == nullptr) return;
    cfgElement::freeApiCfgPlusEntries(&result->global);
    freeArrayBlock(result->radioCount, result->radios);
    freeArrayBlock(result->vnsCount, result->vnsList);
    freeArrayBlock(result->meshpointCount, result->meshpoints);
    delete result;
    jcp::diag("JSON-Q+: freeJsonCfgPlus done.");
}
