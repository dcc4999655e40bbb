// SPDX-License-Identifier: MIT
// MACAddr and IPAddr: text forms against the libc's, masks, ordering, arithmetic, lookup.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <sys/socket.h>

#include <climits>
#include <cstring>
#include <string>
#include <tuple>
#include <utility>

#include "addr/ip_addr.h"
#include "addr/mac_addr.h"

namespace {

const unsigned char kMacBytes[6] = {0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0x5e};

TEST(MACAddr, Validity) {
    // MACAddr::isValid, then MACAddr2::isValid with "-".
    const std::tuple<const char*, bool, bool> cases[] = {{"aa:BB:cc:DD:ee:FF", true, false},
                                                         {"00-11-22-33-44-55", false, true},
                                                         {"00:11:22:33:44:5g", false, false},
                                                         {"00:11:22:33:44:55:", false, false},
                                                         {"00:11:22:33:44", false, false},
                                                         {"00:11:22:33:44-55", false, false},
                                                         {"001:1:22:33:44:55", false, false},
                                                         {"00:11:22:33:44:5\xe5", false, false},
                                                         {nullptr, false, false}};
    for (const auto& [text, colon, hyphen] : cases) {
        EXPECT_EQ(MACAddr::isValid(text), colon) << (text ? text : "(null)");
        EXPECT_EQ(MACAddr2::isValid(text, '-'), hyphen) << (text ? text : "(null)");
    }
}

TEST(MACAddr, TextForms) {
    const MACAddr mac(kMacBytes);
    EXPECT_EQ(mac.toString(), "00:1A:2B:3C:4D:5E");
    EXPECT_EQ(mac.toString(MACAddr::kHyphen | MACAddr::kLower), "00-1a-2b-3c-4d-5e");
    EXPECT_EQ(mac.toString(MACAddr::kNoSeparator | MACAddr::kHyphen), "001A2B3C4D5E");
    char buffer[20];
    std::memset(buffer, '#', sizeof buffer);
    mac.toString(buffer);
    EXPECT_EQ(std::string(buffer, 18), "00:1A:2B:3C:4D:5E#");  // 17 characters, nothing more
}

TEST(MACAddr, AssignKeepsValueOnFailure) {
    MACAddr mac;
    ASSERT_EQ(mac.assignFromString("00:1a:2B:3c:4D:5e"), 0);
    EXPECT_EQ(mac.assignFromString("00:1a:2B:3c:4D:5e:"), -1);
    EXPECT_EQ(mac.assignFromString("00-11-22-33-44-55"), -1);
    EXPECT_EQ(mac, MACAddr(kMacBytes));
    ASSERT_EQ(mac.assignFromString("00-11-22-33-44-55", '-'), 0);
    EXPECT_EQ(mac.toString(), "00:11:22:33:44:55");
}

TEST(MACAddr, MasksActOnTheNumber) {
    const unsigned char bytes[6] = {0x12, 0x34, 0x56, 0x78, 0x9a, 0xbc};
    EXPECT_EQ((MACAddr(bytes) & 0xffff0000u).toString(), "00:00:56:78:00:00");
    EXPECT_EQ((MACAddr(bytes) | 0xff000001u).toString(), "12:34:FF:78:9A:BD");
}

TEST(IPAddr, ParseAndPrint) {
    const std::pair<const char*, const char*> accepted[] = {
        {"010.001.000.001", "10.1.0.1"},  // decimal, never octal
        {"255.255.255.255", "255.255.255.255"},
        {"2001:DB8:0:0:1:0:0:1", "2001:db8::1:0:0:1"},
        {"::ffff:10.0.0.1", "::ffff:a00:1"},
        {"1:2:3:4:5:6:1.2.3.4", "1:2:3:4:5:6:102:304"}};
    for (const auto& [text, printed] : accepted)
        EXPECT_EQ(IPAddr2(text).toString(), printed) << text;

    const char* refused[] = {"10.1",
                             "1.2.3.4.5",
                             ":1:2:3:4:5:6:7",
                             "1:2",
                             "fe80::1%eth0",
                             "::ffff:1.2.3",
                             "0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0",
                             "",
                             nullptr};
    for (const char* text : refused) {
        IPAddr addr(0x01020304u);
        EXPECT_EQ(addr.assignFromString(text), -1) << (text ? text : "(null)");
        EXPECT_EQ(addr.toString(), "1.2.3.4");
    }
}

// Every pattern of zero and non-zero groups prints as inet_ntop does (when inet_ntop keeps to
// hexadecimal groups) and reads back to the same address, by us and by inet_pton.
TEST(IPAddr, IPv6TextMatchesLibc) {
    for (int pattern = 0; pattern < 256; ++pattern) {
        unsigned char bytes[16] = {};
        for (int g = 0; g < 8; ++g) {
            if (pattern & (1 << g)) {
                bytes[2 * g] = static_cast<unsigned char>(0x10 * g + 1);
                bytes[2 * g + 1] = 0x0a;
            }
        }
        IPAddr addr;
        addr.assignV6NtwkOrder(bytes);
        const std::string text = addr.toString();
        SCOPED_TRACE(text);

        char libc[INET6_ADDRSTRLEN];
        ASSERT_NE(inet_ntop(AF_INET6, bytes, libc, sizeof libc), nullptr);
        if (std::strchr(libc, '.') == nullptr) {
            EXPECT_EQ(text, libc);
        }

        unsigned char back[16];
        ASSERT_EQ(inet_pton(AF_INET6, text.c_str(), back), 1);
        EXPECT_EQ(std::memcmp(back, bytes, 16), 0);
        EXPECT_EQ(IPAddr2(text.c_str()), addr);
    }
}

TEST(IPAddr, ZeroAndUnspecified) {
    EXPECT_TRUE(IPAddr2("0.0.0.0").isZero());
    EXPECT_TRUE(IPAddr::ipv6_addr_unspec.isZero());
    EXPECT_EQ(IPAddr::ipv6_addr_unspec.toString(), "::");
    EXPECT_FALSE(IPAddr2("::1").isZero());
    EXPECT_NE(IPAddr2("0.0.0.0"), IPAddr::ipv6_addr_unspec);
    const IPAddr2 junk("junk");
    EXPECT_EQ(junk.family(), IPAddr::kIPv4Marker);
    EXPECT_EQ(junk.toString(), "0.0.0.0");
}

TEST(IPAddr, SummaryWordIsNoPartOfTheValue) {
    const IPAddr2 shortForm("::1");
    const IPAddr2 longForm("0:0:0:0:0:0:0:0001");
    EXPECT_EQ(shortForm.extra(), 0x10000000u);
    EXPECT_EQ(longForm.extra(), 0x41111111u);
    EXPECT_EQ(shortForm, longForm);

    unsigned char image[IPAddr::kSerializedSize];
    longForm.serialize(image);
    IPAddr copy;
    copy.unserialize(image);
    EXPECT_EQ(copy, longForm);
    EXPECT_EQ(copy.extra(), longForm.extra());
}

TEST(IPAddr, Ordering) {
    EXPECT_LT(IPAddr2("255.255.255.255"), IPAddr2("::"));
    EXPECT_LT(IPAddr2("10.0.0.2"), IPAddr2("10.0.0.10"));
    EXPECT_LT(IPAddr2("0:ffff::"), IPAddr2("1::"));
    EXPECT_FALSE(IPAddr2("1::") < IPAddr2("1::"));
}

TEST(IPAddr, MasksAndBitwise) {
    const std::tuple<const char*, unsigned, const char*> cases[] = {
        {"192.168.1.177", 24, "192.168.1.0"},
        {"192.168.1.77", 0, "0.0.0.0"},
        {"192.168.1.77", 40, "192.168.1.77"},
        {"2001:db8:abcd:1234::1", 52, "2001:db8:abcd:1000::"},
        {"2001:db8:abcd:1234::1", 129, "2001:db8:abcd:1234::1"}};
    for (const auto& [text, prefix, masked] : cases) {
        IPAddr addr = IPAddr2(text);
        EXPECT_EQ(addr.mask(prefix).toString(), masked) << text << "/" << prefix;
    }
    const IPAddr2 hostBits("0.0.0.255");
    EXPECT_EQ((IPAddr2("10.1.2.3") & ~hostBits).toString(), "10.1.2.0");
    EXPECT_EQ((IPAddr2("fe80::1") | IPAddr2("::ff00")).toString(), "fe80::ff01");
}

TEST(IPAddr, ArithmeticWraps) {
    IPAddr top = IPAddr2("255.255.255.255");
    EXPECT_EQ((++top).toString(), "0.0.0.0");
    EXPECT_EQ((top--).toString(), "0.0.0.0");
    EXPECT_EQ(top.toString(), "255.255.255.255");
    EXPECT_EQ((IPAddr(10) - INT_MIN).toString(), "128.0.0.10");
    EXPECT_EQ((IPAddr2("::ffff:ffff:ffff:ffff") + 1).toString(), "0:0:0:1::");
    EXPECT_EQ((IPAddr2("::1") - 2).toString(), "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
    EXPECT_EQ((IPAddr2("1::") + INT_MIN).toString(), "0:ffff:ffff:ffff:ffff:ffff:8000:0");
}

TEST(IPAddr, Hostname2ip) {
    IPAddr out = IPAddr2("1.2.3.4");
    EXPECT_EQ(IPAddr::hostname2ip(AF_UNIX, "localhost", out), -9);
    EXPECT_EQ(IPAddr::hostname2ip(AF_INET, nullptr, out), EAI_NONAME);
    EXPECT_EQ(out.toString(), "1.2.3.4");
    ASSERT_EQ(IPAddr::hostname2ip(AF_INET, "localhost", out), 0);
    EXPECT_TRUE(out.isV4());
    EXPECT_EQ(out.toString(), "127.0.0.1");
    ASSERT_EQ(IPAddr::hostname2ip(AF_INET6, "::1", out), 0);  // numeric: no lookup leaves the host
    EXPECT_EQ(out.toString(), "::1");
}

}  // namespace
