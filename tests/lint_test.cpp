// The tool's lint, diff and JSON dump: planted problems each reported once at their pointer,
// exact changes between documents, records decoded field by field.
#include <gtest/gtest.h>
#include <json-c/json.h>
#include <sys/wait.h>

#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <vector>

#include "test_support.h"

namespace {

struct ToolRun {
    int status = -1;  // -1 when the tool did not exit normally (a crash)
    std::string out;
};

ToolRun runTool(const std::string& args) {
    testsupport::TempDir dir;
    std::string command = std::string(JCP_TOOL_PATH) + " " + args + " </dev/null >" +
                          dir.file("out") + " 2>/dev/null";
    int raw = std::system(command.c_str());
    ToolRun run;
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = testsupport::readFile(dir.file("out"));
    return run;
}

struct JsonRelease {
    void operator()(json_object* o) const { json_object_put(o); }
};
using Json = std::unique_ptr<json_object, JsonRelease>;

json_object* at(json_object* o, const char* key) {
    json_object* value = nullptr;
    json_object_object_get_ex(o, key, &value);
    return value;
}

json_object* item(json_object* o, size_t index) {
    return json_object_array_get_idx(o, index);
}

std::string text(json_object* o) {
    return json_object_get_string(o) != nullptr ? json_object_get_string(o) : "";
}

std::string example() {
    return std::string(JCP_EXAMPLES_DIR) + "/ap-config.json";
}

std::string lintData(const std::string& name) {
    return testsupport::dataPath("lint/" + name);
}

struct Expected {
    const char* severity;
    const char* pointer;
    const char* fragment;  // part of the message
};

struct PlantedCase {
    const char* file;
    std::vector<Expected> problems;
};

const PlantedCase kPlanted[] = {
    {"syntax.json", {{"error", "", "line 3, column 12: object property name separator"}}},
    {"no_device.json",
     {{"error", "/device", "must be an object"}, {"warning", "/wlan/0", "nothing refers to it"}}},
    {"references.json",
     {{"error", "/wlan/1/name", "duplicate name \"corp\" in \"wlan\" (first at /wlan/0)"},
      {"error", "/wlan/2", "has no \"name\""},
      {"error", "/wlan_qos", "must be an array of named objects"},
      {"error", "/device/rf_domain_name", "but is an integer"},
      {"error", "/device/meshpoint_device/0/name", "\"no-such-mesh\" names no \"meshpoint\""},
      {"error", "/profile/0/management_policy", "\"no-such-mgmt\" names no"},
      {"error", "/rf_domain/0/sensor_policy_name", "names no \"sensor_policy\""},
      {"error", "/rf_domain/0/smart_rf_policy", "names no \"smart_rf_policy\""},
      {"error", "/wlan/0/qos_policy", "not to an object"},
      {"error", "/wlan/0/mac_in_acl", "names no \"mac_acl\""},
      {"error", "/wlan/0/mac_out_acl", "names no \"mac_acl\""},
      {"error", "/wlan/0/ip_in_acl", "names no \"ip_acl\""},
      {"error", "/wlan/0/ip_out_acl", "names no \"ip_acl\""},
      {"error", "/wlan/0/ipv6_in_acl", "names no \"ipv6_acl\""},
      {"error", "/wlan/0/ipv6_out_acl", "names no \"ipv6_acl\""},
      {"error", "/wlan/0/app_policy", "names no \"app_policy\""},
      {"error", "/wlan/0/passpoint_policy", "names no \"passpoint_policy\""},
      {"error", "/captive_portal/0/dns_whitelist", "names no \"dns_whitelist\""},
      {"error", "/captive_portal/0/aaa_policy", "but is an array"},
      {"error", "/profile/0/interface/0/qos_policy", "names no \"radio_qos\""},
      {"error", "/profile/0/interface/0/meshpointbssmap/0/meshpoint", "names no \"meshpoint\""},
      {"error", "/profile/0/interface/0/wlanbssmap/0/wlan", "\"no-such-wlan\" names no"},
      {"error", "/profile/0/interface/0/wlanbssmap/1/wlan", "but is an object"},
      {"error", "/profile/0/interface/0/wlanbssmap/2", "has no \"wlan\""},
      {"error", "/profile/0/interface/0/wlanbssmap/3", "has no \"bss\""},
      {"error", "/profile/0/interface/0/wlanbssmap/4", "not an object"},
      {"warning", "/profile/1", "nothing refers to it"},
      {"warning", "/rf_domain/0", "nothing refers to it"},
      {"warning", "/mac_acl/0", "nothing refers to it"}}},
    {"services.json",
     {{"error", "/wlan/4", "has no \"cen_ssid_id\""},
      {"error", "/meshpoint/1/cen_ssid_id", "not an integer"},
      {"warning", "/device/interface/0/wlanbssmap/0/bss",
       "same cen_ssid_id as /profile/0/interface/0/wlanbssmap/0"},
      {"error", "/device/interface/0/meshpointbssmap", "meshpoints of this one are not merged"},
      {"error", "/profile/0/interface/0/wlanbssmap/1/bss", "bss 9 puts wlan \"guest\" outside"},
      {"error", "/profile/0/interface/0/wlanbssmap/2",
       "\"lab\" loses slot 1 of radio 1 to wlan \"iot\""},
      {"error", "/profile/0/interface/1/wlanbssmap/0/bss", "bss 0 puts wlan \"corp\" outside"},
      {"error", "/profile/0/interface/1/meshpointbssmap/0",
       "meshpoint \"mesh\" loses slot 2 of radio 2 to wlan \"guest\""}}},
    {"interfaces.json",
     {{"error", "/profile/0/interface/0", "not an object"},
      {"error", "/profile/0/interface/1", "has no \"name\""},
      {"error", "/profile/0/interface/2/name", "not a string"},
      {"warning", "/profile/0/interface/3", "\"ge2\" of type \"ethernet\""},
      {"error", "/profile/0/interface/4/name", "\"radiox\" has no usable number"},
      {"error", "/profile/0/interface/5/name", "radio number 4"},
      {"warning", "/profile/0/interface/6/name", "first five characters of \"wifi-2\""},
      {"error", "/profile/0/interface/7/name", "\"p0\" has no usable number"}}},
    {"types.json",
     {{"error", "/request-id", "is a string, but is read as an integer"},
      {"warning", "/cen_time", "the AP reads 2147483647"},
      {"error", "/device/hostname", "read as a string"},
      {"error", "/profile/0/interface/0/vlan", "read as an integer"},
      {"error", "/profile/0/interface/0/remote_endpoint/0/secure", "read as a boolean"},
      {"error", "/profile/0/interface/1/switchport/native_vlan", "is a boolean"},
      {"error", "/profile/0/interface/2/dtim", "read as an array of integers"},
      {"error", "/profile/0/interface/2/wlanbssmap/0/bss", "read as an integer"},
      {"error", "/wlan/0/vlans/0/vlan", "is a decimal number"}}},
};

TEST(LintTool, ReportsEachPlantedProblemOnceAtItsPointer) {
    for (const PlantedCase& row : kPlanted) {
        SCOPED_TRACE(row.file);
        ToolRun run = runTool("lint --json " + lintData(row.file));
        EXPECT_EQ(run.status, 1);
        Json report(json_tokener_parse(run.out.c_str()));
        json_object* problems = at(report.get(), "problems");
        ASSERT_NE(problems, nullptr) << run.out;
        std::vector<bool> matched(json_object_array_length(problems), false);
        for (const Expected& want : row.problems) {
            SCOPED_TRACE(want.pointer);
            int found = 0;
            for (size_t i = 0; i < matched.size(); ++i) {
                json_object* p = item(problems, i);
                if (text(at(p, "pointer")) != want.pointer ||
                    text(at(p, "severity")) != want.severity ||
                    text(at(p, "message")).find(want.fragment) == std::string::npos)
                    continue;
                ++found;
                matched[i] = true;
            }
            EXPECT_EQ(found, 1) << run.out;
        }
        for (size_t i = 0; i < matched.size(); ++i)
            EXPECT_TRUE(matched[i]) << "unexpected: " << text(at(item(problems, i), "message"));
    }
}

TEST(LintTool, SyntaxErrorsCarryLineAndColumn) {
    ToolRun run = runTool("lint --json " + lintData("syntax.json"));
    Json report(json_tokener_parse(run.out.c_str()));
    json_object* problem = item(at(report.get(), "problems"), 0);
    EXPECT_EQ(json_object_get_int(at(problem, "line")), 3);
    EXPECT_EQ(json_object_get_int(at(problem, "column")), 12);
    EXPECT_EQ(json_object_get_int(at(report.get(), "errors")), 1);
}

TEST(LintTool, ExampleIsCleanAndExitCodesFollowTheVerdict) {
    ToolRun clean = runTool("lint " + example());
    EXPECT_EQ(clean.status, 0);
    EXPECT_EQ(clean.out, "");
    // Warnings alone do not fail: text after the document is accepted by the build.
    EXPECT_EQ(runTool("lint " + testsupport::dataPath("bad/trailing_garbage.json")).status, 0);
    EXPECT_EQ(runTool("lint").status, 2);
    EXPECT_EQ(runTool("lint a.json b.json").status, 2);
    EXPECT_EQ(runTool("lint " + example() + " --bogus").status, 2);
}

TEST(LintTool, HostileInputEndsWithAVerdict) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("deep.json"), std::string(100000, '[') + "1");
    testsupport::writeFile(dir.file("deep_object.json"),
                           "{\"device\": " + std::string(40, '[') + std::string(40, ']') + "}");
    std::vector<std::string> files = {dir.file("deep.json"), dir.file("deep_object.json")};
    for (const char* bad :
         {"array_document", "duplicate_names", "empty", "members_of_wrong_types", "null_document",
          "numbers_out_of_range", "odd_strings", "references_of_wrong_types", "scalar_document",
          "scalar_objects", "string_document", "truncated"})
        files.push_back(testsupport::dataPath(std::string("bad/") + bad + ".json"));
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        ToolRun run = runTool("lint " + file);
        EXPECT_TRUE(run.status == 0 || run.status == 1) << run.status;
    }
}

// The example with one ACL rule, one WLAN and one topology changed.
std::string changedExample(const testsupport::TempDir& dir) {
    std::string doc = testsupport::readFile(example());
    auto replace = [&doc](const std::string& from, const std::string& to) {
        size_t at = doc.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        doc.replace(at, from.size(), to);
    };
    replace("\"dest_port\": 443", "\"dest_port\": 8443");
    replace("\"ssid\": \"Guest\"", "\"ssid\": \"Guest2\"");
    replace("\"hq-tunnel-secret\"", "\"hq-tunnel-rotated\"");
    testsupport::writeFile(dir.file("changed.json"), doc);
    return dir.file("changed.json");
}

TEST(DiffTool, IdenticalDocumentsGiveNothing) {
    ToolRun run = runTool("diff " + example() + " " + example());
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

TEST(DiffTool, ReportsExactlyTheChangedFields) {
    testsupport::TempDir dir;
    ToolRun run = runTool("diff --json " + example() + " " + changedExample(dir));
    EXPECT_EQ(run.status, 1);
    Json report(json_tokener_parse(run.out.c_str()));
    json_object* changes = at(report.get(), "changes");
    ASSERT_NE(changes, nullptr) << run.out;
    // Both radios carry the WLANs that use the ACL; the tunnel is both walked and a record.
    const char* expected[][4] = {
        {"global", "cen_if_vlans[2].remote_endpoint[0].ikev2_psk", "\"hq-tunnel-secret\"",
         "\"hq-tunnel-rotated\""},
        {"global", "cen_topologies[2].remote_endpoint[0].ikev2_psk", "\"hq-tunnel-secret\"",
         "\"hq-tunnel-rotated\""},
        {"radio[0]/vns[0]", "ip_out_acl/ip_rules[0].dest_port", "443", "8443"},
        {"radio[0]/vns[1]", "ssid", "\"Guest\"", "\"Guest2\""},
        {"radio[1]/vns[0]", "ip_out_acl/ip_rules[0].dest_port", "443", "8443"},
        {"radio[1]/vns[2]", "ssid", "\"Guest\"", "\"Guest2\""},
    };
    ASSERT_EQ(json_object_array_length(changes), std::size(expected)) << run.out;
    for (size_t i = 0; i < std::size(expected); ++i) {
        SCOPED_TRACE(expected[i][1]);
        json_object* c = item(changes, i);
        EXPECT_EQ(text(at(c, "change")), "changed");
        EXPECT_EQ(text(at(c, "where")), expected[i][0]);
        EXPECT_EQ(text(at(c, "path")), expected[i][1]);
        EXPECT_STREQ(json_object_to_json_string(at(c, "old")), expected[i][2]);
        EXPECT_STREQ(json_object_to_json_string(at(c, "new")), expected[i][3]);
    }
}

TEST(DiffTool, AddedAndRemovedEntriesAndUnbuildableDocuments) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("old.json"), R"({"device": {"hostname": "a", "led": 1}})");
    testsupport::writeFile(dir.file("new.json"), R"({"device": {"hostname": "a", "mode": "x"}})");
    ToolRun run = runTool("diff " + dir.file("old.json") + " " + dir.file("new.json"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "removed global: led: 1\nadded global: mode: \"x\"\n");
    testsupport::writeFile(dir.file("bad.json"), R"({"wlan": []})");
    EXPECT_EQ(runTool("diff " + dir.file("bad.json") + " " + dir.file("new.json")).status, 2);
}

TEST(DumpJson, EntriesAndRecordsFieldByField) {
    ToolRun run = runTool("dump --json " + example());
    ASSERT_EQ(run.status, 0);
    Json dump(json_tokener_parse(run.out.c_str()));
    json_object* global = at(dump.get(), "global");
    ASSERT_NE(global, nullptr) << run.out.substr(0, 200);
    std::map<std::string, json_object*> byName;
    for (size_t i = 0; i < json_object_array_length(global); ++i)
        byName[text(at(item(global, i), "name"))] = item(global, i);

    json_object* requestId = byName["request-id"];
    EXPECT_EQ(json_object_get_int(at(requestId, "kind")), 3);
    EXPECT_EQ(json_object_get_int(at(requestId, "radio")), -1);
    EXPECT_EQ(json_object_get_int(at(requestId, "value")), 4711);

    json_object* topologies = byName["cen_topologies"];
    EXPECT_EQ(text(at(topologies, "record")), "TOPOLOGY_ENTRY");
    json_object* tunnel = item(at(topologies, "value"), 2);
    EXPECT_EQ(text(at(tunnel, "name")), "tunnel-hq");
    EXPECT_EQ(json_object_get_int(at(tunnel, "internal_key")), 30);
    EXPECT_EQ(json_object_get_int(at(tunnel, "vlan")), 30);
    EXPECT_EQ(json_object_get_int(at(tunnel, "type")), 9);
    json_object* endpoints = at(tunnel, "remote_endpoint");
    ASSERT_EQ(json_object_array_length(endpoints), 2u);
    EXPECT_EQ(text(at(item(endpoints, 0), "addr")), "192.0.2.10");
    EXPECT_TRUE(json_object_get_boolean(at(item(endpoints, 0), "secure")));
    EXPECT_EQ(text(at(item(endpoints, 0), "ikev2_psk")), "hq-tunnel-secret");
    EXPECT_FALSE(json_object_get_boolean(at(item(endpoints, 1), "secure")));

    json_object* arpGuard = item(at(byName["cen_arp_guard_acl"], "value"), 0);
    EXPECT_EQ(json_object_get_int(at(arpGuard, "count")), 2);
    EXPECT_EQ(text(item(at(arpGuard, "addr"), 1)), "10.20.0.2");

    json_object* firstVns = item(at(dump.get(), "vns"), 0);
    EXPECT_EQ(json_object_get_int(at(firstVns, "radio")), 0);
    EXPECT_EQ(json_object_get_int(at(firstVns, "vns")), 0);
}

}  // namespace
