// The front door: build a document and hand back its entry arrays; release them again.
#include <memory>
#include <new>

#include "api/diag.h"
#include "api/jsoncfgplus.h"
#include "document/json_cfg_plus.h"
#include "document/read_file.h"

namespace {

struct ResultRelease {
    void operator()(apiCfgPlusResult* result) const { freeJsonCfgPlus(result); }
};

apiCfgPlusEntryArray* allocateArrays(size_t count) {
    return count == 0 ? nullptr : new apiCfgPlusEntryArray[count]();
}

// Radios up to the highest id get an entry array. The negative ids of the IoT radio and the
// bridge ports name no wireless radio: like the wired ports, they bring only their services.
bool isWirelessRadio(const radio_entry& radio) {
    return radio.id >= 0 && radio.id <= jsonCfgPlus::getMaxRadio();
}

// One entry array per service, with the service's radio index and id.
void fillServiceArrays(apiCfgPlusEntryArray* arrays,
                       const std::vector<const vns_entry*>& services) {
    for (size_t k = 0; k < services.size(); ++k) {
        const vns_entry& service = *services[k];
        cfgElement::setApiCfgPlusList(service.elements, &arrays[k], service.radioId - 1,
                                      service.index);
    }
}

// The lists are converted straight from the document, which is only read here and outlives
// the conversion, so no intermediate copy of the lists is made.
apiCfgPlusResult* collectResult(const jsonCfgPlus& document) {
    // freeJsonCfgPlus releases a half-filled record if an allocation fails below; it prints
    // its milestone then, which is acceptable on that path.
    std::unique_ptr<apiCfgPlusResult, ResultRelease> result(new apiCfgPlusResult());
    cfgElement::setApiCfgPlusList(document.m_global, &result->global, -1, -1);

    std::vector<const vns_entry*> wlans;
    std::vector<const vns_entry*> meshpoints;
    int admitted = 0;
    for (const radio_entry& radio : document.m_radios) {
        if (isWirelessRadio(radio)) ++admitted;
    }
    result->radios = allocateArrays(admitted);
    result->radioCount = admitted;

    // Slots count admitted radios, so a radio with a higher id listed early cannot push an
    // admitted one past the block.
    int slot = 0;
    for (const radio_entry& radio : document.m_radios) {
        for (const vns_entry& wlan : radio.wlans) wlans.push_back(&wlan);
        for (const vns_entry& meshpoint : radio.meshpoints) meshpoints.push_back(&meshpoint);
        if (isWirelessRadio(radio) && slot < admitted) {
            cfgElement::setApiCfgPlusList(radio.elements, &result->radios[slot++], radio.id - 1,
                                          -1);
        }
    }

    result->vnsList = allocateArrays(wlans.size());
    result->vnsCount = static_cast<int32_t>(wlans.size());
    fillServiceArrays(result->vnsList, wlans);
    result->meshpoints = allocateArrays(meshpoints.size());
    result->meshpointCount = static_cast<int32_t>(meshpoints.size());
    fillServiceArrays(result->meshpoints, meshpoints);
    return result.release();
}

void freeArrayBlock(int32_t count, apiCfgPlusEntryArray* block) {
    if (count == 0) return;
    for (int32_t i = 0; block != nullptr && i < count; ++i)
        cfgElement::freeApiCfgPlusEntries(&block[i]);
    delete[] block;
}

}  // namespace

extern "C" apiCfgPlusResult* parseJsonCfgPlus(const char* json, unsigned int length,
                                              jsonCfgPlusCallback callback, int save,
                                              int saveBackup, int trace) {
    jcp::diag("parseJsonCfgPlus starts...");
    jsonCfgPlus document;
    document.m_callback = callback;
    document.m_save = save;
    document.m_save_backup = saveBackup;
    document.m_trace = trace;
    if (document.buildConfig(json, length) != 0) return nullptr;
    return collectResult(document);
}

extern "C" apiCfgPlusResult* parseJsonCfgPlusFile(const char* path, jsonCfgPlusCallback callback,
                                                  int save, int saveBackup, int trace) {
    std::string text;
    if (path == nullptr || !jcp::readWholeFile(path, text)) return nullptr;
    return parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), callback, save,
                            saveBackup, trace);
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
