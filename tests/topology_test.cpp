// SPDX-License-Identifier: MIT
// Topology records byte by byte: every field, the type and tagging, the endpoint limit; a
// present list without topologies, and fields of other kinds, are golden (topologies).
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <cstring>

#include "convert/converter.h"
#include "test_support.h"

namespace {

using Bytes = std::vector<uint8_t>;
constexpr size_t kRecord = sizeof(TOPOLOGY_ENTRY);
const char kNative1[] = R"(,{"name": "port-channel1", "type": "ethernet", "switchport": )";

// Builds a device with these interfaces, then runs the topology converter alone.
std::string convert(jsonCfgPlus& doc, const std::string& interfaces, int trace = 0) {
    std::string text = R"({"device": {"interface": [)" + interfaces + "]}}";
    testsupport::captureStdout([&] { doc.buildConfig(text.data(), unsigned(text.size())); });
    doc.m_trace = trace;
    return testsupport::captureStdout([&] { cfgPlusApiConverter().jsonCfgPlusTopologies(doc); });
}

Bytes records(const jsonCfgPlus& doc) {
    for (const cfgElement& e : doc.m_global) {
        if (e.name == "cen_topologies") return e.bytesValue;
    }
    return Bytes();
}

// Little-endian value of `width` bytes, or text, at `at`.
void put(Bytes& b, size_t at, uint64_t value, size_t width) {
    for (size_t i = 0; i < width; ++i) b[at + i] = uint8_t(value >> (8 * i));
}
void put(Bytes& b, size_t at, const std::string& text) {
    std::memcpy(&b[at], text.data(), text.size());
}

::testing::AssertionResult sameBytes(const Bytes& actual, size_t from, const Bytes& expected) {
    for (size_t i = 0; i < expected.size(); ++i) {
        if (from + i >= actual.size() || actual[from + i] != expected[i]) {
            return ::testing::AssertionFailure() << "differs at offset " << from + i;
        }
    }
    return ::testing::AssertionSuccess();
}

Bytes join(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::string endpoints(int n) {
    std::string out;
    for (int i = 1; i <= n; ++i) {
        out += std::string(i > 1 ? "," : "") + R"({"addr": "10.0.0.)" + std::to_string(i) +
               R"(", "secure": true, "ikev2_psk": "key)" + std::to_string(i) + "\"}";
    }
    return R"("remote_endpoint": [)" + out + "]";
}

TEST(TopologyConverter, RecordsInDocumentOrderWithEveryField) {
    const std::string forty = "0123456789abcdefghijklmnopqrstuvwxyzABCD";
    jsonCfgPlus doc;
    std::string out = convert(doc,
                              R"({"name": ")" + forty + R"(", "type": "virtual_network",
        "internal_key": 7, "tenant_vlan": 20, "vxlan_vni": 5000, "proxy_arp": true,
        "multicast_acl_enable": true, "multicast_acl": [{"rule": 1}], "color": "red",
        "remote_endpoint_vxlan_ipaddress": "192.168.1.2",
        "remote_endpoint_vxlan_internal_management_IP": "fe80::1",
        "remote_endpoint_vxlan_internal_management_vni": 77,
        "remote_endpoint": [{"addr": "2001:db8::1", "secure": true, "ikev2_psk": ")" +
                                  forty + R"("}]},
        {"name": "nokey", "type": "vlan"})" +
                                  kNative1 + R"({"native_vlan": 1}})",
                              1);
    EXPECT_EQ(out,
              "jsonCfgPlusTopologies: Processing Topologies. \nsizeof(TOPOLOGY_ENTRY) = 4872\n"
              "[WARN] topology: nokey no internal_key, default to -1\n");
    Bytes all = records(doc);
    ASSERT_EQ(all.size(), 2 * kRecord);
    Bytes first(kRecord, 0);
    put(first, 0, 7, 4);
    put(first, 4, 20, 2);
    put(first, 8, 5000, 4);
    put(first, 12, 0xC0A80102, 4);  // host order; the IPv6 texts leave 0
    put(first, 20, 77, 4);
    put(first, 24, 0x01010108, 4);  // type, tagged (20 is not native), proxy ARP, ACL enable
    put(first, 28, 1, 4);
    first[36] = 1;
    put(first, 37, forty.substr(0, 32));
    put(first, 152, forty.substr(0, 32));
    EXPECT_TRUE(sameBytes(all, 0, first));
    Bytes second(kRecord, 0);
    put(second, 0, 0xFFFFFFFF, 4);
    second[24] = 7;
    put(second, 152, "nokey");
    EXPECT_TRUE(sameBytes(all, kRecord, second));

    jsonCfgPlus none;
    EXPECT_EQ(convert(none, R"({"name": "p1", "type": "ethernet"})"), "");
    EXPECT_TRUE(records(none).empty());
}

TEST(TopologyConverter, TypeAndNativeVlanTagging) {
    struct Case {
        std::string type, field, port;
        int expectType, expectVlan, expectTagged;
    } cases[] = {
        {"vlan", "\"vlan\": 1", R"({"native_vlan": 1}})", 7, 1, 0},
        {"vlan", "\"vlan\": 20", R"({"native_vlan": 1}})", 7, 20, 1},
        {"gre", "\"vlan\": 1", R"({"native_vlan": 1, "native_vlan_tagged": true}})", 9, 1, 1},
        {"marlin", "\"vlan\": 1", "", 6, 1, 1},  // no native VLAN: compared with -1
        {"virtual_network", "\"tenant_vlan\": 65537", R"({"native_vlan": 1}})", 8, 1, 0},
        // A native VLAN that is no integer is 0, so VLAN 0 takes the native tagged flag.
        {"vlan", "\"vlan\": 0", R"({"native_vlan": "1"}})", 7, 0, 0},
    };
    for (const Case& c : cases) {
        jsonCfgPlus doc;
        convert(doc, R"({"name": "t", "internal_key": 1, "type": ")" + c.type + "\", " + c.field +
                         "}" + (c.port.empty() ? "" : kNative1 + c.port));
        Bytes r = records(doc);
        ASSERT_EQ(r.size(), kRecord);
        EXPECT_EQ(r[24], c.expectType) << c.field;
        EXPECT_EQ(r[4] | r[5] << 8, c.expectVlan) << c.field;
        EXPECT_EQ(r[25], c.expectTagged) << c.type << " " << c.field;
    }
}

TEST(TopologyConverter, EndpointLimitPutsTheFourthOverTheName) {
    Bytes fourth(40, 0), name(40, 0);  // offsets 152 to 191
    put(fourth, 0, 0x0A000004, 4);
    fourth[4] = 1;
    put(fourth, 5, "key4");
    put(name, 0, "name");
    struct Case {
        int endpoints;
        bool nameFirst;
        uint8_t count;
        const Bytes& at152;
        bool warned;
    } cases[] = {{0, true, 0, name, false},   {3, true, 3, name, false},
                 {4, true, 4, fourth, false}, {4, false, 4, name, false},
                 {5, true, 3, fourth, true},  {40, true, 3, fourth, true}};
    for (const Case& c : cases) {
        jsonCfgPlus doc;
        std::string fields = c.nameFirst ? R"("name": "name", )" + endpoints(c.endpoints)
                                         : endpoints(c.endpoints) + R"(, "name": "name")";
        std::string out = convert(doc, R"({"type": "gre", "internal_key": 1, )" + fields + "}");
        Bytes r = records(doc);
        ASSERT_EQ(r.size(), kRecord);
        EXPECT_EQ(out, c.warned ? "topology: remote_endpoint has more than 3 remote endpoints, "
                                  "ignore them\n"
                                : "");
        EXPECT_TRUE(sameBytes(r, 28, {c.count, 0, 0, 0})) << c.endpoints;
        EXPECT_TRUE(sameBytes(r, 152, c.at152)) << c.endpoints << " name first " << c.nameFirst;
        if (c.endpoints >= 3) {  // the last slot of the array
            EXPECT_TRUE(sameBytes(r, 112, {3, 0, 0, 10, 1, 'k', 'e', 'y', '3', 0}));
        }
    }
}

// The fields of one topology as the walk gives them.
std::list<cfgElement> fields(const std::string& json) {
    std::list<cfgElement> out;
    json_object* root = json_tokener_parse(json.c_str());
    jsonCfgPlus::walk(root, "", {}, {}, out);
    json_object_put(root);
    return out;
}

// A field of another kind than its own reads as 0, false or "": it is never skipped. Where a
// document can say it, this is golden (topologies); a VLAN's tagging is seen only here.
TEST(TopologyConverter, FieldOfAnotherKindReadsAsZeroOrEmpty) {
    struct Row {
        std::string fields;
        size_t at;
        Bytes expected;
    } rows[] = {
        // VLAN 0 is not the native -1, so it travels tagged.
        {R"("internal_key": 1, "type": "vlan", "vlan": "20")", 4, join(Bytes(20, 0), {7, 1})},
        {R"("internal_key": 1, "type": 9)", 24, {6}},
        {R"("internal_key": 1, )" + endpoints(4) + R"(, "name": 5)", 152, Bytes(40, 0)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.fields);
        TOPOLOGY_ENTRY entry;
        std::memset(&entry, 0, sizeof entry);
        std::string out = testsupport::captureStdout([&] {
            cfgPlusApiConverter().jsonCfgPlusTopology(fields("{" + row.fields + "}"), entry, -1,
                                                      false);
        });
        const auto* bytes = reinterpret_cast<const uint8_t*>(&entry);
        EXPECT_TRUE(sameBytes(Bytes(bytes, bytes + kRecord), row.at, row.expected));
        EXPECT_EQ(out, "");  // nothing is reported missing
    }
}

}  // namespace
