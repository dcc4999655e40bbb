// SPDX-License-Identifier: MIT
// Rate tables, wireless-mode masks, and the derivation of a radio's wireless mode from the
// rate names a manager configured for it.
#include "convert/rates.h"
#include "convert/rates_priv.h"

#include <algorithm>
#include <cstring>

namespace jcp {

const std::vector<std::string> dataRates24wb = {"1", "2", "5.5", "", "", "11"};
const std::vector<std::string> dataRates24wbg = {"1",  "2",  "5.5", "6",  "9",  "11",
                                                 "12", "18", "24",  "36", "48", "54"};
const std::vector<std::string> dataRates24wbgn = {"1",      "2",      "5.5",    "6",     "9",  "11",
                                                  "12",     "18",     "24",     "36",    "48", "54",
                                                  "mcs-1s", "mcs-2s", "mcs-3s", "mcs-4s"};
const std::vector<std::string> dataRates24wg = {"",   "",   "",   "6",  "9",  "",
                                                "12", "18", "24", "36", "48", "54"};
const std::vector<std::string> dataRates24wgn = {"",       "",       "",       "6",     "9",  "",
                                                 "12",     "18",     "24",     "36",    "48", "54",
                                                 "mcs-1s", "mcs-2s", "mcs-3s", "mcs-4s"};
const std::vector<std::string> dataRates24wgnstrict = {
    "", "", "", "6", "", "", "12", "", "24", "", "", "", "mcs-1s", "mcs-2s", "mcs-3s", "mcs-4s"};
const std::vector<std::string> dataRates5wanc = {
    "6", "9", "12", "18", "24", "36", "48", "54", "mcs-1s", "mcs-2s", "mcs-3s", "mcs-4s"};
const std::vector<std::string> dataRates5wacstrict = {
    "6", "", "12", "", "24", "", "", "", "mcs-1s", "mcs-2s", "mcs-3s", "mcs-4s"};

const std::map<std::string, uint32_t> modesInfoMap = {
    {"b-only", 0x00000001},
    {"g-only", 0x00000002},
    {"a-only", 0x00000004},
    {"bg", 0x08000003},
    {"bgn", 0x08000013},
    {"gn", 0x08000012},
    {"an", 0x10000014},
    {"ac", 0x10000054},
    {"gnx", 0x08000112},
    // Shares the mask of "ac" on purpose.
    {"anc", 0x10000054},
    {"ancx", 0x10000154},
};

}  // namespace jcp

namespace {

constexpr int kBand24 = 0;
constexpr int kBand5 = 1;
constexpr int kBand6 = 2;

constexpr uint32_t kModeB = 0x1;
constexpr uint32_t kModeG = 0x2;
constexpr uint32_t kModeA = 0x4;
constexpr uint32_t kModeN = 0x10;
constexpr uint32_t kBandBits5And6 = 0x30000000;
constexpr uint32_t kBandBit6 = 0x20000000;
constexpr uint32_t kDefault24 = 0x08000013;
constexpr uint32_t kDefault5 = 0x10000054;
constexpr uint32_t kDefault6 = 0x20000154;
// a, n and ac in the 5 GHz band: what any mcs rate on 5 or 6 GHz implies.
constexpr uint32_t kMcs5 = 0x10000054;

const char kBasicPrefix[] = "basic-";
constexpr size_t kBasicPrefixLength = sizeof kBasicPrefix - 1;

bool startsWith(const char* text, const char* prefix) {
    return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

bool inTable(const std::vector<std::string>& table, const char* name) {
    return std::find(table.begin(), table.end(), name) != table.end();
}

}  // namespace

// A mode keyword ("default" or a modesInfoMap name; the last one wins) decides the mode;
// without one the mode is derived from the rates. -1 leaves *mode untouched: a 2.4 GHz list
// with no b, g or mcs rate, or a band other than 0 to 2. *basic points into the caller's
// strings, past any "basic-". Null outputs are not written.
namespace jcp {

int ratesToWirelessMode(int band, const char** rates, int count, uint32_t* mode,
                        const char** basic) {
    // A null list or a negative count is an empty list; null names are skipped.
    std::vector<const char*> names;
    for (int i = 0; rates != nullptr && i < count; ++i) {
        if (rates[i] != nullptr) names.push_back(rates[i]);
    }

    uint32_t m = 0;
    for (const char* name : names) {
        if (std::strcmp(name, "default") == 0) {
            if (band == kBand24) m = kDefault24;
            if (band == kBand5) m = kDefault5;
            if (band == kBand6) m = kDefault6;
            continue;
        }
        auto known = jcp::modesInfoMap.find(name);
        if (known != jcp::modesInfoMap.end()) {
            m = known->second;
            // Clears only the 5 and 6 GHz bits, so a 2.4 GHz name keeps its band bit here.
            if (band == kBand6) m = (m & ~kBandBits5And6) | kBandBit6;
        } else if (startsWith(name, kBasicPrefix)) {
            if (basic != nullptr) *basic = name + kBasicPrefixLength;
        }
    }
    if (m != 0) {
        if (mode != nullptr) *mode = m;
        return 0;
    }

    // No mode keyword: derive the mode from the rates themselves.
    std::vector<const char*> plain;
    for (const char* name : names)
        plain.push_back(startsWith(name, kBasicPrefix) ? name + kBasicPrefixLength : name);
    if (!plain.empty() && basic != nullptr) *basic = plain.front();

    auto any = [&plain](auto predicate) {
        return std::any_of(plain.begin(), plain.end(), predicate);
    };
    auto isMcs = [](const char* name) { return startsWith(name, "mcs"); };
    if (band == kBand24) {
        if (any([](const char* name) { return inTable(jcp::dataRates24wb, name); })) m = kModeB;
        if (any([](const char* name) { return inTable(jcp::dataRates24wg, name); })) m |= kModeG;
        if (any(isMcs)) m |= kModeN;
        if (m == 0) return -1;
    } else if (band == kBand5 || band == kBand6) {
        // The 6 GHz band gets no band bit here, deliberately.
        m = any(isMcs) ? kMcs5 : kModeA;
    } else {
        // No table describes any other band, so nothing can be derived.
        return -1;
    }
    if (mode != nullptr) *mode = m;
    return 0;
}

}  // namespace jcp
