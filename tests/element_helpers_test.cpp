// SPDX-License-Identifier: MIT
// The converters' element helpers: lookup, texts, prefixes, and the in-place conversions with
// the printers they install.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

#include "convert/converter.h"
#include "test_support.h"

namespace {

using List = cfgPlusApiConverter::ElementList;

cfgPlusApiConverter converter;

// Renders an element as the caller sees it, through its installed printer.
std::string rendered(const cfgElement& element) {
    apiCfgPlusEntry entry = {};
    element.toApiCfgPlusEntry(entry);
    std::string text = cfgElement::printApiCfgPlusEntry(entry, 1);
    cfgElement::freeApiCfgPlusEntry(entry);
    return text;
}

TEST(ElementHelpers, LookupFindsTheFirstExactName) {
    List list = {cfgElement("a/b", 1, ""), cfgElement("a", 2, ""), cfgElement("a", 3, ""),
                 cfgElement("s", 4, "")};
    EXPECT_EQ(converter.findCfgElement(list, "a")->intValue, 2);
    EXPECT_EQ(converter.findCfgElement(list, "b"), list.end());
    EXPECT_EQ(converter.findCfgElement(list, "A"), list.end());
    EXPECT_EQ(converter.getCfgElementString(list, "s"), "");  // numeric: no string

    List portal = {cfgElement("captive_portal_enforcement", "", "")};
    EXPECT_TRUE(converter.captivePortal(portal));
    portal.front().strValue = "none";
    EXPECT_FALSE(converter.captivePortal(portal));
    EXPECT_FALSE(converter.captivePortal(List()));
}

TEST(ElementHelpers, TextSplittingAndNumbers) {
    std::string addr, prefix = "keep";
    converter.parseIpAddress("10.0.0.1", addr, prefix);
    EXPECT_EQ(addr + "|" + prefix, "10.0.0.1|keep");
    converter.parseIpAddress("10.0.0.0/8", addr, prefix);
    EXPECT_EQ(addr + "|" + prefix, "10.0.0.0|8");
    converter.parseIpAddress("a/b/c", addr, prefix);
    EXPECT_EQ(addr + "|" + prefix, "a/b|c");

    using Bytes = std::vector<unsigned char>;
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes("abc"), (Bytes{0x0A, 0xBC}));
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes("0102"), (Bytes{0x01, 0x02}));
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes("f"), (Bytes{0x0F}));
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes("0g"), (Bytes{0x00}));
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes("g1FF"), (Bytes{0x00, 0xFF}));
    EXPECT_EQ(converter.jsonCfgPlusHex2Bytes(""), Bytes());

    EXPECT_EQ(converter.jsonCfgPlusStr2IntList(",1,,2,", ','), (std::list<int>{1, 2}));
    EXPECT_EQ(converter.jsonCfgPlusStr2IntList(" 7x;8", ';'), (std::list<int>{7, 8}));
    EXPECT_THROW(converter.jsonCfgPlusStr2IntList("1,x", ','), std::invalid_argument);

    EXPECT_EQ(converter.mapTosMask(128), 0);
    EXPECT_EQ(converter.mapTosMask(0), 0);
    EXPECT_EQ(converter.mapTosMask(192), 1);
    EXPECT_EQ(converter.mapTosMask(255), 7);

    EXPECT_EQ(converter.ethProtocol("ip"), 2048);
    EXPECT_EQ(converter.ethProtocol("ipv6"), 0x86DD);
    EXPECT_EQ(converter.ethProtocol("arp"), 0x0806);
    EXPECT_EQ(converter.ethProtocol("IP"), -1);
    EXPECT_EQ(converter.ethProtocol("2048"), 2048);
    EXPECT_EQ(converter.ethProtocol("0x800"), -1);
    EXPECT_THROW(converter.ethProtocol(""), std::invalid_argument);
}

TEST(ElementHelpers, PrefixStripping) {
    cfgElement e("a/b/c", 1, "k");
    converter.jsonCfgPlusRemoveElementPrefix(e, 1);
    EXPECT_EQ(e.name, "b/c");
    converter.jsonCfgPlusRemoveElementPrefix(e, 5);
    EXPECT_EQ(e.name, "c");

    cfgElement object("o", List{cfgElement("a/b/c", 1, ""), cfgElement("x", 2, "")}, "o");
    cfgElement stripped = converter.jsonCfgPlusRemovePrefix(object, 2);
    EXPECT_EQ(stripped.elements.front().name, "c");
    EXPECT_EQ(stripped.elements.back().name, "x");
    EXPECT_EQ(object.elements.front().name, "a/b/c");
    EXPECT_EQ(converter.jsonCfgPlusRemovePrefix(cfgElement("i", 1, ""), 1).name, "");

    List list = {object, cfgElement("dropped", 1, "")};
    auto strip = [&](const std::string& prefix) {
        return converter.jsonCfgPlusRemovePrefix(list, prefix).front().elements.front().name;
    };
    EXPECT_EQ(converter.jsonCfgPlusRemovePrefix(list, "").size(), 1u);
    EXPECT_EQ(strip(""), "c");
    EXPECT_EQ(strip("a/"), "b/c");
    EXPECT_EQ(strip("b/"), "a/b/c");
}

TEST(ElementHelpers, AddressConversionsInPlace) {
    List list = {cfgElement("first", 0, ""),
                 cfgElement("net", "192.168.1.1", "net"),
                 cfgElement("local", "192.168.1.1", ""),
                 cfgElement("v6", "fe80::1", ""),
                 cfgElement("list", std::list<std::string>{"10.0.0.1", "::1"}, ""),
                 cfgElement("mac", "00:1a:2B:3c:4d:5e", ""),
                 cfgElement("num", 5, "")};
    converter.jsonCfgPlusElementIPStr2Network(list,
                                              cfgPlusApiConverter::NameList{"net", "v6", "num"});
    converter.jsonCfgPlusElementIPStr2Local(list, "local");
    converter.jsonCfgPlusElementIPStrList2NetworkList(list, "list");
    converter.jsonCfgPlusElementMacStr2Mac(list, "mac");

    auto it = std::next(list.begin());
    EXPECT_EQ(it->name, "net");
    EXPECT_EQ(it->key, "net");
    EXPECT_EQ(it->kind, CFG_INT);
    unsigned char bytes[4];
    std::memcpy(bytes, &it->intValue, 4);
    EXPECT_EQ(std::vector<unsigned char>(bytes, bytes + 4),
              (std::vector<unsigned char>{0xC0, 0xA8, 0x01, 0x01}));
    EXPECT_EQ(rendered(*it), "  \"net\": \"192.168.1.1\"");

    ++it;
    EXPECT_EQ(static_cast<uint32_t>(it->intValue), 0xC0A80101u);
    EXPECT_EQ(rendered(*it), "  \"local\": \"192.168.1.1\"");
    ++it;
    EXPECT_EQ(it->kind, CFG_INT);
    EXPECT_EQ(it->intValue, 0);  // IPv6 is not an IPv4 address
    ++it;
    EXPECT_EQ(it->kind, CFG_INT_LIST);
    EXPECT_EQ(it->intList.size(), 2u);
    EXPECT_EQ(it->intList.back(), 0);
    EXPECT_EQ(rendered(*it), "  \"list\": [\"10.0.0.1\",\"0.0.0.0\"]");
    ++it;
    EXPECT_EQ(it->bytesValue, (std::vector<uint8_t>{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}));
    EXPECT_EQ(rendered(*it), "  \"mac\": \"00:1A:2B:3C:4D:5E\"");
    ++it;
    EXPECT_EQ(it->kind, CFG_INT);  // not a string: left alone
    EXPECT_EQ(it->intValue, 5);
    EXPECT_EQ(it->printFn, nullptr);
}

TEST(ElementHelpers, ByteAndListConversionsInPlace) {
    List list = {cfgElement("octets", "", ""), cfgElement("name", "ap", ""),
                 cfgElement("hex", "0aff", ""), cfgElement("ints", "1,6,11", ""),
                 cfgElement("empty", std::list<std::string>(), "")};
    converter.jsonCfgPlusElementStrAsOctets(list, cfgPlusApiConverter::NameList{"octets", "name"});
    converter.jsonCfgPlusElementHex2Bin(list, "hex");
    converter.jsonCfgPlusElementStr2IntList(list, "ints");
    converter.jsonCfgPlusElementIPStrList2NetworkList(list, "empty");

    auto it = list.begin();
    EXPECT_EQ(it->bytesValue, (std::vector<uint8_t>{0}));
    ++it;
    EXPECT_EQ(it->bytesValue, (std::vector<uint8_t>{'a', 'p', 0}));
    EXPECT_EQ(rendered(*it), "  \"name\": \"ap\"");
    ++it;
    EXPECT_EQ(rendered(*it), "  \"hex\": 0x0AFF");
    ++it;
    EXPECT_EQ(it->intList, (std::list<int>{1, 6, 11}));
    EXPECT_EQ(it->printFn, nullptr);
    ++it;
    EXPECT_EQ(rendered(*it), "  \"empty\": [ ]");
}

}  // namespace
