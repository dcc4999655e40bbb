// SPDX-License-Identifier: MIT
// The element budget as a daemon linking the shared library meets it: a campus document fits
// the default, and a budget the daemon sets holds for every later parse.
#include <gtest/gtest.h>

#include <string>

#include "shared_support.h"

namespace {

struct Parsed {
    bool built = false;
    std::string output;
};

Parsed parseAndFree(const std::string& text) {
    Parsed parsed;
    apiCfgPlusResult* result = shared::parse(text, parsed.output);
    parsed.built = result != nullptr;
    shared::release(result);
    return parsed;
}

template <typename Item>
std::string joined(int count, Item item) {
    std::string out;
    for (int i = 0; i < count; ++i) out += (i > 0 ? "," : "") + item(i);
    return out;
}

// Ten fields a rule.
std::string rule(int i, const std::string& addressField, const std::string& address) {
    std::string n = std::to_string(i);
    return R"({"precedence":)" + std::to_string(i + 1) + R"(,"action":"allow","protocol":6,")" +
           addressField + R"(":")" + address + R"(","name":"rule)" + n + R"(","enabled":true,)" +
           R"("low_dport":)" + n + R"(,"high_dport":)" + n + R"(,"description":"r)" + n +
           R"(","log":false})";
}

// Three 400-rule ACLs (MAC, IPv4, IPv6), each used in and out by 8 WLANs on 3 radios: 24
// services walking 6 x 400 rules of 10 fields, 576,000 elements from about 200 KB.
std::string campusDocument() {
    auto acl = [](const char* table, const char* rules, const char* field, const char* address) {
        return "\"" + std::string(table) + R"(":[{"name":"acl",")" + rules + R"(":[)" +
               joined(400, [&](int i) { return rule(i, field, address); }) + "]}]";
    };
    std::string wlans = joined(8, [](int k) {
        std::string id = std::to_string(k + 1);
        return R"({"name":"w)" + id + R"(","cen_ssid_id":)" + id +
               R"(,"mac_in_acl":"acl","mac_out_acl":"acl","ip_in_acl":"acl","ip_out_acl":"acl",)"
               R"("ipv6_in_acl":"acl","ipv6_out_acl":"acl"})";
    });
    std::string bss = joined(8, [](int k) {
        return R"({"bss":)" + std::to_string(k + 1) + R"(,"wlan":"w)" + std::to_string(k + 1) +
               R"("})";
    });
    std::string radios = joined(3, [&](int r) {
        return R"({"name":"radio)" + std::to_string(r + 1) + R"(","type":"radio","wlanbssmap":[)" +
               bss + "]}";
    });
    return "{" + acl("mac_acl", "mac_rules", "smac", "00-11-22-33-44-55") + "," +
           acl("ip_acl", "ip_rules", "sip", "10.1.0.0/16") + "," +
           acl("ipv6_acl", "ip_rules", "sip", "2001:db8::/64") + R"(,"wlan":[)" + wlans +
           R"(],"device":{"interface":[)" + radios + "]}}";
}

const char kRefused[] = "[ERR] document needs more than the element budget of ";

TEST(ElementBudget, CampusDocumentFitsTheDefault) {
    const std::string text = campusDocument();
    ASSERT_GT(text.size(), 200u * 1000);
    Parsed parsed = parseAndFree(text);
    EXPECT_TRUE(parsed.built) << parsed.output;
    EXPECT_EQ(parsed.output.find(kRefused), std::string::npos);
}

// A set budget is the cap whatever the document's size; 0 brings the default back.
TEST(ElementBudget, TheDaemonsBudgetHoldsUntilReset) {
    const std::string small =
        R"({"device": {"padding": ")" + std::string(20000, 'x') + R"(", "list": [)" +
        joined(50, [](int i) { return R"({"k":)" + std::to_string(i) + "}"; }) + "]}}";
    struct Row {
        unsigned long budget;
        bool built;
    };
    const Row rows[] = {{40, false}, {1000, true}, {0, true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.budget);
        setJsonCfgPlusElementBudget(row.budget);
        Parsed parsed = parseAndFree(small);
        EXPECT_EQ(parsed.built, row.built) << parsed.output;
        if (!row.built) {
            EXPECT_NE(parsed.output.find(kRefused + std::to_string(row.budget) + " elements"),
                      std::string::npos)
                << parsed.output;
        }
    }
}

}  // namespace
