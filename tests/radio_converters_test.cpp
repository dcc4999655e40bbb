// SPDX-License-Identifier: MIT
// The derivation of a wireless mode from rate names, and the ACS channel list, which no
// pipeline step runs; the pipeline's radio converters are golden (converters.dump.txt).
#include <gtest/gtest.h>

#include <stdexcept>

#include "convert/converter.h"
#include "test_support.h"

namespace {

using List = std::list<cfgElement>;
using Strs = std::list<std::string>;

// Every element's rendering, one per line: names, order, kinds and values at once.
std::string dump(const List& list) {
    std::string out;
    for (const cfgElement& e : list) out += e.toString(0) + "\n";
    return out;
}

radio_entry radio(int id, List elements) {
    radio_entry r;
    r.id = id;
    r.elements = std::move(elements);
    return r;
}

TEST(RatesToWirelessMode, KeywordsAndDerivedModes) {
    const uint32_t kUntouched = 0xDEADBEEF;
    struct Row {
        int band;
        std::vector<const char*> rates;
        int result;
        uint32_t mode;
        const char* basic;  // expected text, null when the output stays unset
    } rows[] = {
        {1, {"default"}, 0, 0x10000054, nullptr},
        {2, {"default"}, 0, 0x20000154, nullptr},
        {0, {"bgn", "b-only"}, 0, 0x00000001, nullptr},
        {2, {"ac"}, 0, 0x20000054, nullptr},
        {2, {"gnx"}, 0, 0x28000112, nullptr},  // the 2.4 GHz bit survives
        {0, {"basic-6", "bg"}, 0, 0x08000003, "6"},
        {0, {"basic-1", "2", "mcs-1s"}, 0, 0x11, "1"},
        {0, {"6", "54"}, 0, 0x2, "6"},
        {0, {"5.5", "basic-12"}, 0, 0x3, "5.5"},
        {0, {"13"}, -1, kUntouched, "13"},
        {0, {}, -1, kUntouched, nullptr},
        {1, {"6", "9"}, 0, 0x4, "6"},
        {2, {"basic-mcs-2s"}, 0, 0x10000054, "mcs-2s"},  // no 6 GHz bit when derived
        {3, {"6"}, -1, kUntouched, "6"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << (&row - rows));
        std::vector<const char*> rates = row.rates;
        uint32_t mode = kUntouched;
        const char* basic = nullptr;
        EXPECT_EQ(
            jsonCfgPlusRates2WirelessMode(row.band, rates.data(), int(rates.size()), &mode, &basic),
            row.result);
        EXPECT_EQ(mode, row.mode);
        EXPECT_STREQ(basic, row.basic);
        EXPECT_TRUE(basic == nullptr || basic == rates[0] + 6 || basic == rates[0]);  // no copy
    }
}

TEST(RadioConverters, AcsChannelListFromFallbackOrItsOwnText) {
    jsonCfgPlus doc;
    doc.m_radios = {radio(1, {}), radio(2, {cfgElement("cen_acs_ch_list", "36,40")}),
                    radio(3, {cfgElement("fallback_channels", Strs{"1", " 6", "11"})}),
                    radio(4, {cfgElement("cen_acs_ch_list", "9", "k"),
                              cfgElement("fallback_channels", Strs{"149"})})};
    cfgPlusApiConverter c;
    ASSERT_EQ(c.jsonCfgPlusRadioAcsChannelList(doc), 0);
    std::string all;
    for (const radio_entry& r : doc.m_radios) all += dump(r.elements) + "--\n";
    EXPECT_EQ(all,
              "\"cen_acs_ch_list\": [ ]\n--\n\"cen_acs_ch_list\": [36,40]\n--\n"
              "\"cen_acs_ch_list\": [1,6,11]\n\"fallback_channels\": [\"1\",\" 6\",\"11\"]\n--\n"
              "\"cen_acs_ch_list\": [149]\n\"fallback_channels\": [\"149\"]\n--\n");
    EXPECT_EQ(doc.m_radios[3].elements.front().key, "k");

    doc.m_radios = {radio(1, {cfgElement("fallback_channels", Strs{"1", "auto"})})};
    EXPECT_THROW(c.jsonCfgPlusRadioAcsChannelList(doc), std::invalid_argument);
}

}  // namespace
