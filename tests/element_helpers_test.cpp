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
    std::string text = cfgElement::printApiCfgPlusEntry(entry, 0);
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
    converter.parseIpAddress("a/b/c", addr, prefix);
    EXPECT_EQ(addr + "|" + prefix, "a/b|c");

    // An odd digit count pads at the front; a non-digit ends its byte.
    std::string bytes;
    for (const char* hex : {"abc", "0102", "f", "0g", "g1FF", ""}) {
        for (unsigned char b : converter.jsonCfgPlusHex2Bytes(hex))
            bytes += std::to_string(b) + ",";
        bytes += ";";
    }
    EXPECT_EQ(bytes, "10,188,;1,2,;15,;0,;0,255,;;");

    EXPECT_EQ(converter.jsonCfgPlusStr2IntList(",1,,2,", ','), (std::list<int>{1, 2}));
    EXPECT_EQ(converter.jsonCfgPlusStr2IntList(" 7x;8", ';'), (std::list<int>{7, 8}));
    EXPECT_THROW(converter.jsonCfgPlusStr2IntList("1,x", ','), std::invalid_argument);

    std::string codes;
    for (int mask : {128, 0, 192, 224, 240, 248, 252, 254, 255})
        codes += std::to_string(converter.mapTosMask(mask));
    EXPECT_EQ(codes, "001234567");
    codes.clear();
    for (const char* name : {"ip", "ipv6", "arp", "IP", "2048", "0x800"})
        codes += std::to_string(converter.ethProtocol(name)) + ",";
    EXPECT_EQ(codes, "2048,34525,2054,-1,2048,-1,");
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

// Only string elements (string lists for the list conversion) are converted; each keeps its
// name, key and place, and the caller sees it through the printer the conversion installs.
TEST(ElementHelpers, ConversionsInPlaceWithTheirPrinters) {
    List list = {cfgElement("net", "192.168.1.1", "net"),
                 cfgElement("local", "192.168.1.1", ""),
                 cfgElement("v6", "fe80::1", ""),
                 cfgElement("list", std::list<std::string>{"10.0.0.1", "::1"}, ""),
                 cfgElement("mac", "00:1a:2B:3c:4d:5e", ""),
                 cfgElement("num", 5, ""),
                 cfgElement("octets", "", ""),
                 cfgElement("name", "ap", ""),
                 cfgElement("hex", "0aff", ""),
                 cfgElement("ints", "1,6,11", ""),
                 cfgElement("empty", std::list<std::string>(), "")};
    converter.jsonCfgPlusElementIPStr2Network(list,
                                              cfgPlusApiConverter::NameList{"net", "v6", "num"});
    converter.jsonCfgPlusElementIPStr2Local(list, "local");
    converter.jsonCfgPlusElementIPStrList2NetworkList(list, "list");
    converter.jsonCfgPlusElementIPStrList2NetworkList(list, "empty");
    converter.jsonCfgPlusElementMacStr2Mac(list, "mac");
    converter.jsonCfgPlusElementStrAsOctets(list, cfgPlusApiConverter::NameList{"octets", "name"});
    converter.jsonCfgPlusElementHex2Bin(list, "hex");
    converter.jsonCfgPlusElementStr2IntList(list, "ints");

    std::string all;
    for (const cfgElement& e : list) all += std::to_string(e.kind) + " " + rendered(e) + "\n";
    EXPECT_EQ(all,
              "3 \"net\": \"192.168.1.1\"\n3 \"local\": \"192.168.1.1\"\n3 \"v6\": \"0.0.0.0\"\n"
              "8 \"list\": [\"10.0.0.1\",\"0.0.0.0\"]\n5 \"mac\": \"00:1A:2B:3C:4D:5E\"\n"
              "3 \"num\": 5\n5 \"octets\": \"\"\n5 \"name\": \"ap\"\n5 \"hex\": 0x0AFF\n"
              "8 \"ints\": [1,6,11]\n8 \"empty\": [ ]\n");
    auto it = list.begin();
    EXPECT_EQ(it->key, "net");
    unsigned char bytes[4];
    std::memcpy(bytes, &it->intValue, 4);  // the network-order address, byte by byte
    EXPECT_EQ(std::vector<unsigned char>(bytes, bytes + 4),
              (std::vector<unsigned char>{0xC0, 0xA8, 0x01, 0x01}));
    EXPECT_EQ(static_cast<uint32_t>((++it)->intValue), 0xC0A80101u);  // host order
    EXPECT_EQ(std::next(it, 5)->bytesValue, (std::vector<uint8_t>{0}));
    EXPECT_EQ(std::next(it, 6)->bytesValue, (std::vector<uint8_t>{'a', 'p', 0}));
}

}  // namespace
