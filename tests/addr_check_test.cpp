// The addrchk C entries: exact codes and positions on valid, faulty and hostile text.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

#include "api/jsoncfgplus.h"

namespace {

// What check gives for each text, space-separated.
template <typename Check>
std::string codes(Check check, std::initializer_list<const char*> texts) {
    std::string out;
    for (const char* text : texts) out += (out.empty() ? "" : " ") + std::to_string(check(text));
    return out;
}

std::string combined(int flags, std::initializer_list<const char*> texts) {
    return codes([flags](const char* text) { return addrchk(text, flags); }, texts);
}

TEST(AddrCheck, SingleForms) {
    EXPECT_EQ(codes(addrchk_hostname, {nullptr, "", "abc", "a..b", "example.c", "www.x-y.org",
                                       "host1", ".abc", "abc.", "my host.com", "a.b1"}),
              "1 1 0 3 8 0 1 1 4 3 2");
    EXPECT_EQ(codes(addrchk_ipv4, {nullptr, "", "256.1.1.1", "1.2.3", "255.255.255.255",
                                   "001.002.003.004", "1.2.3.256", "1.2.3.0255", ".1.2.3", "1..2.3",
                                   "1.2.3.", "1.2.3.4.5", "1.2.3.a"}),
              "1 1 3 5 0 0 9 10 1 3 6 9 7");
    EXPECT_EQ(
        codes(addrchk_ipv6, {"::", "1::", "ABCD:ef01::", "1:2:3:4:5:6:7:8", "1:2:3:4:5:6::7"}),
        "0 0 0 0 0");
    EXPECT_EQ(codes(addrchk_ipv6,
                    {nullptr, "", "12345::", "1:2:3:4:5:6:7:8:9", "::1:2:3:4:5:6:7", "1::2::3",
                     "1:::2", "1:2", "1:2:3", "1:2:3:4:5:6:7:", "::ffff:1.2.3.4"}),
              "1 1 5 16 14 6 4 3 5 14 9");
}

TEST(AddrCheck, InterfaceAddresses) {
    EXPECT_EQ(codes(addrchk_interfaceaddr_v6,
                    {nullptr, "::", "0000:0::", "0:0", "fe80::1", "2001:db8::1", "fd12::1", "::1",
                     "ff02::1", "1::", "12345::", "fe80::1::"}),
              "1 1 1 3 0 0 0 10 10 10 5 9");
    // Of the multicast range only 224/8 is refused.
    EXPECT_EQ(
        codes(addrchk_interfaceaddr_v4,
              {"10.0.0.1", "10.0.1.0", "0.1.2.3", "127.1.2.3", "224.0.0.5", "239.1.1.1", "10.0.0.0",
               "255.255.255.255", "255.255.255.254", "1.2.3", "1.2.3.999", nullptr}),
        "0 0 1 1 1 0 1 1 0 1 1 1");
}

// Several allowed forms report the one that got furthest.
TEST(AddrCheck, CombinedTakesFurthestForm) {
    EXPECT_EQ(combined(6, {"10.0.0.1", "fe80::1", "::", "1.2.3", "example.com", nullptr}),
              "0 0 0 5 2 1");
    EXPECT_EQ(
        combined(11, {"example.com", "10.0.0.1", "127.0.0.1", "256.1.1.1", "host1", "225.1.1.1"}),
        "0 0 1 8 1 0");
    EXPECT_EQ(combined(12, {"fe80::1", "::1", "::", "10.0.0.1"}), "0 10 1 3");
    EXPECT_EQ(combined(14, {"127.0.0.1", "fe80::1", "::1"}), "1 0 10");
    EXPECT_EQ(combined(1, {"1.2.3.4"}), "6");
    EXPECT_EQ(combined(2, {"1.2.3", "example.com"}), "5 1");
    EXPECT_EQ(
        combined(3, {"1.2.3.4x"}) + " " + combined(4, {"1:2"}) + " " + combined(7, {"example.c"}),
        "8 3 8");
    EXPECT_EQ(combined(0, {"anything"}) + " " + combined(8, {"anything"}), "0 0");  // no form flag
}

TEST(AddrCheck, CommonName) {
    EXPECT_EQ(codes(addrchk_common_name, {"[fe80::1]", "fe80::1", "example.com", "10.0.0.1",
                                          "127.0.0.1", "[", "[]", "[fe80::1", "[fe80::1]x", "[::1]",
                                          "[::]", "[10.0.0.1]", "[fe80::1%eth0]", "", nullptr}),
              "0 1 0 0 1 2 2 8 10 10 1 3 8 1 1");
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
    EXPECT_EQ(codes(parseCode,
                    {"", nullptr, ":", "1::2::3", "1:::2", "12345::", "g::", "1:2:3:4:5:6:7:8:9"}),
              "1 1 1 2 2 3 3 4");
    EXPECT_EQ(addrchk_ipv6_assign_from_str("::1", nullptr, nullptr), 0);
}

int ipv6Scope(const char* text) {
    return addrchk_ipv6_addr_scope_str(text, nullptr);
}

TEST(AddrScope, IPv4IPv6AndMulticast) {
    EXPECT_EQ(codes(addrchk_ipv4_addr_scope_str,
                    {"0.0.0.0", "127.0.0.1", "127.0.0.2", "255.255.255.255", "224.0.0.0",
                     "239.255.255.255", "240.0.0.0", "10.255.0.1", "172.31.255.255", "172.32.0.0",
                     "192.168.1.1", "169.254.3.4", "169.255.0.1", "1.2.3", nullptr}),
              "1 3 2 7 4 4 2 5 5 2 5 6 2 0 0");
    EXPECT_EQ(addrchk_ipv4_addr_scope(0x7f000001u) * 10 + addrchk_ipv4_addr_scope(0xffffffffu), 37);

    EXPECT_EQ(
        codes(ipv6Scope, {"::", "::1", "::2", "::ffff:a00:1", "::fffe:a00:1",
                          "1fff::", "2001:db8::1", "3fff::", "4000::", "fc00::", "fdff::1",
                          "fe00::", "fe80::1", "fe80:0:0:1::", "ff02::1", "1.2.3.4", nullptr}),
        "1 8 0 9 0 0 10 10 0 11 11 0 12 0 13 0 0");
    unsigned char bytes[16] = {};
    EXPECT_EQ(addrchk_ipv6_addr_scope_str("fe80::2", bytes), 12);
    EXPECT_EQ(bytes[0] * 256 + bytes[15], 0xfe02);
    EXPECT_EQ(addrchk_ipv6_addr_scope(nullptr), 0);

    EXPECT_EQ(codes(addrchk_ipv6_mcast_scope_str,
                    {"ff01::1", "ff02::1", "ff03::1", "ff04::", "ff05::2", "ff08::", "ff0e::1",
                     "ff0f::1", "ff12::1", "fe80::1", "", nullptr}),
              "1 2 0 4 5 8 14 0 2 0 0 0");
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
