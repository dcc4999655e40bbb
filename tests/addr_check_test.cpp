// SPDX-License-Identifier: MIT
// The addrchk C entries: exact codes and positions on valid, faulty and hostile text.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

#include "api/jsoncfgplus.h"

namespace {

struct TextCase {
    const char* text;
    int expected;
};

using Checker = int (*)(const char*);

template <std::size_t N>
void expectAll(Checker check, const TextCase (&cases)[N]) {
    for (const TextCase& c : cases) {
        EXPECT_EQ(check(c.text), c.expected) << '"' << (c.text ? c.text : "(null)") << '"';
    }
}

TEST(AddrCheck, Hostname) {
    const TextCase cases[] = {{nullptr, 1},       {"", 1},          {"abc", 0},
                              {"a..b", 3},        {"example.c", 8}, {"www.x-y.org", 0},
                              {"host1", 1},       {".abc", 1},      {"abc.", 4},
                              {"my host.com", 3}, {"a.b1", 2}};
    expectAll(addrchk_hostname, cases);
}

TEST(AddrCheck, IPv4) {
    const TextCase cases[] = {{nullptr, 1},           {"", 1},
                              {"256.1.1.1", 3},       {"1.2.3", 5},
                              {"255.255.255.255", 0}, {"001.002.003.004", 0},
                              {"1.2.3.256", 9},       {"1.2.3.0255", 10},
                              {".1.2.3", 1},          {"1..2.3", 3},
                              {"1.2.3.", 6},          {"1.2.3.4.5", 9},
                              {"1.2.3.a", 7}};
    expectAll(addrchk_ipv4, cases);
}

TEST(AddrCheck, IPv6Syntax) {
    for (const char* text : {"::", "1::", "ABCD:ef01::", "1:2:3:4:5:6:7:8", "1:2:3:4:5:6::7"}) {
        EXPECT_EQ(addrchk_ipv6(text), 0) << text;
    }
    const TextCase faults[] = {{nullptr, 1},
                               {"", 1},
                               {"12345::", 5},
                               {"1:2:3:4:5:6:7:8:9", 16},
                               {"::1:2:3:4:5:6:7", 14},
                               {"1::2::3", 6},
                               {"1:::2", 4},
                               {"1:2", 3},
                               {"1:2:3", 5},
                               {"1:2:3:4:5:6:7:", 14},
                               {"::ffff:1.2.3.4", 9}};
    expectAll(addrchk_ipv6, faults);
}

TEST(AddrCheck, InterfaceV6) {
    const TextCase cases[] = {{nullptr, 1},   {"::", 1},      {"0000:0::", 1},
                              {"0:0", 3},     {"fe80::1", 0}, {"2001:db8::1", 0},
                              {"fd12::1", 0}, {"::1", 10},    {"ff02::1", 10},
                              {"1::", 10},    {"12345::", 5}, {"fe80::1::", 9}};
    expectAll(addrchk_interfaceaddr_v6, cases);
}

TEST(AddrCheck, InterfaceV4) {
    const TextCase cases[] = {
        {"10.0.0.1", 0},        {"10.0.1.0", 0},  {"0.1.2.3", 1},  {"127.1.2.3", 1},
        {"224.0.0.5", 1},       {"239.1.1.1", 0}, {"10.0.0.0", 1}, {"255.255.255.255", 1},
        {"255.255.255.254", 0}, {"1.2.3", 1},     {nullptr, 1}};
    expectAll(addrchk_interfaceaddr_v4, cases);
}

// Only the shape and the fixed list are checked, so octets above 255 pass here (addrchk with
// the IPv4 flag refuses them first), and a long or zero-padded number is read for its value.
TEST(AddrCheck, InterfaceV4ReadsNumbersNotOctets) {
    const TextCase cases[] = {{"1.2.3.300", 0},         {"1.2.3.999", 0},
                              {"256.0.0.1", 0},         {"1.2.3.4444", 0},
                              {"99999999999.0.0.1", 0}, {"10.0.0.99999999999", 0}};
    expectAll(addrchk_interfaceaddr_v4, cases);
}

TEST(AddrCheck, CombinedTakesFurthestForm) {
    struct Case {
        const char* text;
        int flags;
        int expected;
    };
    const Case cases[] = {
        {"10.0.0.1", 6, 0},    {"fe80::1", 6, 0},      {"::", 6, 0},         {"1.2.3", 6, 5},
        {"example.com", 6, 2}, {"example.com", 11, 0}, {"10.0.0.1", 11, 0},  {"127.0.0.1", 11, 1},
        {"256.1.1.1", 11, 8},  {"host1", 11, 1},       {"225.1.1.1", 11, 0}, {"fe80::1", 12, 0},
        {"::1", 12, 10},       {"::", 12, 1},          {"10.0.0.1", 12, 3},  {"1.2.3.4", 1, 6},
        {"1.2.3", 2, 5},       {"example.com", 2, 1},  {"1.2.3.4x", 3, 8},   {"1:2", 4, 3},
        {"example.c", 7, 8},   {"127.0.0.1", 14, 1},   {"fe80::1", 14, 0},   {"::1", 14, 10},
        {"anything", 0, 0},    {"anything", 8, 0},     {nullptr, 6, 1}};
    for (const Case& c : cases) {
        EXPECT_EQ(addrchk(c.text, c.flags), c.expected)
            << '"' << (c.text ? c.text : "(null)") << "\" flags " << c.flags;
    }
}

TEST(AddrCheck, CommonName) {
    const TextCase cases[] = {
        {"[fe80::1]", 0},      {"fe80::1", 1}, {"example.com", 0}, {"10.0.0.1", 0},
        {"127.0.0.1", 1},      {"[", 2},       {"[]", 2},          {"[fe80::1", 8},
        {"[fe80::1]x", 10},    {"[::1]", 10},  {"[::]", 1},        {"[10.0.0.1]", 3},
        {"[fe80::1%eth0]", 8}, {"", 1},        {nullptr, 1}};
    expectAll(addrchk_common_name, cases);
}

// The code of a parse, checking that a failed one leaves both outputs as they were.
int parseCode(const char* text) {
    unsigned char bytes[16];
    std::memset(bytes, 0xaa, sizeof bytes);
    int summary = -1;
    const int code = addrchk_ipv6_assign_from_str(text, bytes, &summary);
    if (code != 0) {
        EXPECT_EQ(summary, -1);
        EXPECT_EQ(bytes[0] & bytes[15], 0xaa);
    }
    return code;
}

TEST(AddrCheck, AssignFromStr) {
    const std::pair<const char*, int> parsed[] = {{"::", 0},
                                                  {"::1", 0x10000000},
                                                  {"1::", 0x1},
                                                  {"1:2:3:4:5:6:7:8", 0x11111111},
                                                  {"2001:DB8::ff00:42:8329", 0x42400034}};
    for (const auto& [text, expectedSummary] : parsed) {
        unsigned char bytes[16];
        unsigned char libc[16];
        int summary = -1;
        ASSERT_EQ(addrchk_ipv6_assign_from_str(text, bytes, &summary), 0) << text;
        ASSERT_EQ(inet_pton(AF_INET6, text, libc), 1);
        EXPECT_EQ(std::memcmp(bytes, libc, 16), 0) << text;
        EXPECT_EQ(summary, expectedSummary) << text;
    }
    const TextCase faults[] = {{"", 1},      {nullptr, 1},   {":", 1},   {"1::2::3", 2},
                               {"1:::2", 2}, {"12345::", 3}, {"g::", 3}, {"1:2:3:4:5:6:7:8:9", 4}};
    expectAll(parseCode, faults);
    EXPECT_EQ(addrchk_ipv6_assign_from_str("::1", nullptr, nullptr), 0);
}

TEST(AddrScope, IPv4) {
    const TextCase cases[] = {{"0.0.0.0", 1},         {"127.0.0.1", 3},   {"127.0.0.2", 2},
                              {"255.255.255.255", 7}, {"224.0.0.0", 4},   {"239.255.255.255", 4},
                              {"240.0.0.0", 2},       {"10.255.0.1", 5},  {"172.31.255.255", 5},
                              {"172.32.0.0", 2},      {"192.168.1.1", 5}, {"169.254.3.4", 6},
                              {"169.255.0.1", 2},     {"1.2.3", 0},       {nullptr, 0}};
    expectAll(addrchk_ipv4_addr_scope_str, cases);
    EXPECT_EQ(addrchk_ipv4_addr_scope(0x7f000001u), 3);
    EXPECT_EQ(addrchk_ipv4_addr_scope(0xffffffffu), 7);
}

int ipv6Scope(const char* text) {
    return addrchk_ipv6_addr_scope_str(text, nullptr);
}

TEST(AddrScope, IPv6) {
    const TextCase cases[] = {{"::", 1},           {"::1", 8},          {"::2", 0},
                              {"::ffff:a00:1", 9}, {"::fffe:a00:1", 0}, {"1fff::", 0},
                              {"2001:db8::1", 10}, {"3fff::", 10},      {"4000::", 0},
                              {"fc00::", 11},      {"fdff::1", 11},     {"fe00::", 0},
                              {"fe80::1", 12},     {"fe80:0:0:1::", 0}, {"ff02::1", 13},
                              {"1.2.3.4", 0},      {nullptr, 0}};
    expectAll(ipv6Scope, cases);
    unsigned char bytes[16] = {};
    EXPECT_EQ(addrchk_ipv6_addr_scope_str("fe80::2", bytes), 12);
    EXPECT_EQ(bytes[0], 0xfe);
    EXPECT_EQ(bytes[15], 0x02);
    EXPECT_EQ(addrchk_ipv6_addr_scope(nullptr), 0);
}

TEST(AddrScope, Multicast) {
    const TextCase cases[] = {{"ff01::1", 1}, {"ff02::1", 2}, {"ff03::1", 0},  {"ff04::", 4},
                              {"ff05::2", 5}, {"ff08::", 8},  {"ff0e::1", 14}, {"ff0f::1", 0},
                              {"ff12::1", 2}, {"fe80::1", 0}, {"", 0},         {nullptr, 0}};
    expectAll(addrchk_ipv6_mcast_scope_str, cases);
    EXPECT_EQ(addrchk_ipv6_mcast_scope(nullptr), 0);
}

// Bytes outside printable ASCII are refused where they stand, whatever the sign of char.
TEST(AddrCheck, ForeignBytesStopAtTheirPosition) {
    for (int b = 1; b < 256; ++b) {
        if (b > 0x20 && b < 0x7f) continue;
        const std::string bad(1, static_cast<char>(b));
        SCOPED_TRACE(b);
        EXPECT_EQ(addrchk_hostname(("ab" + bad + ".com").c_str()), 3);
        EXPECT_EQ(addrchk_ipv4(("10.0" + bad + ".0.1").c_str()), 5);
        EXPECT_EQ(addrchk_ipv6(("fe80" + bad + "::1").c_str()), 5);
        EXPECT_EQ(addrchk(("10.0.0.1" + bad).c_str(), 6), 9);
        EXPECT_EQ(addrchk_ipv6_assign_from_str(("1" + bad + "::").c_str(), nullptr, nullptr), 3);
    }
}

TEST(AddrCheck, OverlongText) {
    const std::string letters(5000, 'a');
    EXPECT_EQ(addrchk_hostname(letters.c_str()), 0);
    EXPECT_EQ(addrchk_hostname((letters + ".1").c_str()), 5001);
    EXPECT_EQ(addrchk_hostname((letters + ".").c_str()), 5001);
    EXPECT_EQ(addrchk_ipv4(std::string(5000, '1').c_str()), 4);
    EXPECT_EQ(addrchk_ipv4(std::string(5000, '.').c_str()), 1);
    EXPECT_EQ(addrchk_ipv6(std::string(5000, '0').c_str()), 5);
    EXPECT_EQ(addrchk_ipv6(std::string(5000, ':').c_str()), 3);
    EXPECT_EQ(addrchk(letters.c_str(), 6), 5);
    EXPECT_EQ(addrchk_common_name(("[" + letters + "]").c_str()), 5);
    EXPECT_EQ(addrchk_ipv6_assign_from_str(std::string(5000, '0').c_str(), nullptr, nullptr), 3);
}

}  // namespace
