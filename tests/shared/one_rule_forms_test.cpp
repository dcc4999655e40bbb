// SPDX-License-Identifier: MIT
// The one-rule filter converters are exported members: a daemon's record holds whatever its
// memory held before, and none of it may reach the rule.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <list>

#include "convert/converter.h"

namespace {

cfgElement fields(std::list<cfgElement> children) {
    return cfgElement("", std::move(children));
}

TEST(OneRuleForms, StartFromAnEmptyRecordWhateverTheCallerPasses) {
    cfgPlusApiConverter c;
    struct Row {
        const char* name;
        size_t filled;  // the white-list form fills only the rule, not the extended word
        std::function<int(apiCfgPlusFilterRule&)> convert;
    } rows[] = {
        {"mac", sizeof(apiCfgPlusFilterRule),
         [&](apiCfgPlusFilterRule& out) {
             cfgElement rule = fields({cfgElement("precedence", 5), cfgElement("allow", "deny"),
                                       cfgElement("smac", "00-11-22-33-44-55")});
             return c.jsonCfgPlusVnsMacAcl(rule, cfgPlusApiConverter::FILTER_INBOUND, out);
         }},
        {"ip", sizeof(apiCfgPlusFilterRule),
         [&](apiCfgPlusFilterRule& out) {
             cfgElement rule = fields({cfgElement("precedence", 5), cfgElement("dip", "10.0.0.1")});
             return c.jsonCfgPlusVnsIpAcl(rule, cfgPlusApiConverter::FILTER_OUTBOUND, out);
         }},
        {"application", sizeof(apiCfgPlusFilterRule),
         [&](apiCfgPlusFilterRule& out) {
             cfgElement rule = fields({cfgElement("canned_app", "BitTorrent")});
             return c.jsonCfgPlusVnsAppPolicy(rule, out);
         }},
        {"white-list entry", sizeof(FILTER_RULE_ENTRY),
         [&](apiCfgPlusFilterRule& out) {
             cfgElement entry = fields({cfgElement("host", "portal.example")});
             return c.jsonCfgPlusVnsDnsWhiteListToIpAcl(entry, out.rule);
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        apiCfgPlusFilterRule clean;
        apiCfgPlusFilterRule stale;
        std::memset(&clean, 0, sizeof clean);
        std::memset(&stale, 0xAA, sizeof stale);
        testing::internal::CaptureStdout();
        int cleanResult = row.convert(clean);
        int staleResult = row.convert(stale);
        std::string output = testing::internal::GetCapturedStdout();
        EXPECT_EQ(cleanResult, 0) << output;
        EXPECT_EQ(staleResult, 0) << output;
        EXPECT_EQ(std::memcmp(&clean, &stale, row.filled), 0);
    }
}

}  // namespace
