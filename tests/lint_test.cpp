// The tool's lint, diff and JSON dump: planted problems each reported once at their pointer,
// exact changes between documents, records decoded field by field.
#include <gtest/gtest.h>
#include <json-c/json.h>
#include <sys/wait.h>

#include <cstdlib>
#include <cstring>
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

// Runs the tool in directory cwd, or in the test's own when empty.
ToolRun runTool(const std::string& args, const std::string& cwd = "") {
    testsupport::TempDir dir;
    std::string command = (cwd.empty() ? "" : "cd " + cwd + " && ") + JCP_TOOL_PATH + " " + args +
                          " </dev/null >" + dir.file("out") + " 2>/dev/null";
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
       "\"lab\" loses slot 1 of \"radio1\" to wlan \"iot\""},
      {"error", "/profile/0/interface/1/wlanbssmap/0/bss", "bss 0 puts wlan \"corp\" outside"},
      {"error", "/profile/0/interface/1/meshpointbssmap/0",
       "meshpoint \"mesh\" loses slot 2 of \"radio2\" to wlan \"guest\""}}},
    {"interfaces.json",
     {{"error", "/profile/0/interface/0", "not an object"},
      {"error", "/profile/0/interface/1", "has no \"name\""},
      {"error", "/profile/0/interface/2/name", "not a string"},
      {"warning", "/profile/0/interface/3", "\"ge2\" of type \"ethernet\""},
      {"error", "/profile/0/interface/4/name", "\"radiox\" has no number after"},
      {"error", "/profile/0/interface/5/name", "shares id 4 with wired port \"p1\""},
      {"warning", "/profile/0/interface/6/name", "first five characters of \"wifi-2\""},
      {"error", "/profile/0/interface/7/name", "\"p0\" has a number out of range"}}},
    // Ids as the library reads them: radio0 and a zero-padded radio3 are built, bluetooth1 and
    // br0 have ids of their own, radio4 merges into p1, numbers past an int are skipped.
    {"radio_ids.json",
     {{"warning", "/device/interface/0/name", "radio index -1"},
      {"error", "/device/interface/2/name", "\"radio99999999999\" is above 2147483647"},
      {"error", "/device/interface/5/name", "\"br99999999999\" has a number out of range"},
      {"error", "/device/interface/7/name", "shares id 4 with wired port \"p1\""},
      {"error", "/device/interface/8/name", "\"p0\" has a number out of range"},
      {"error", "/device/interface/6/wlanbssmap/0",
       "\"corp\" loses slot 1 of \"p1\" to wlan \"guest\""}}},
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
    // Every invalid rule of every kind, each at its own pointer; an unused ACL's only warns.
    {"rules.json",
     {{"warning", "/mac_acl/1", "nothing refers to it"},
      {"warning", "/mac_acl/2", "nothing refers to it"},
      {"warning", "/mac_acl/0/mac_rules/2", "null is not a rule"},
      {"error", "/mac_acl/2/mac_rules", "without rule objects"},
      {"error", "/mac_acl/0/mac_rules/1",
       "MAC address in the MAC ACL is not valid: 00-11-22-33-44"},
      {"error", "/mac_acl/0/mac_rules/3", "Source and Dest MAC not the same"},
      {"error", "/mac_acl/0/mac_rules/4", "the filter step throws"},
      {"warning", "/mac_acl/1/mac_rules/0", "Precedence in the ACL rule is not valid: -1"},
      {"error", "/ip_acl/0/ip_rules/0", "IP address in the IP ACL is not valid: 10.0.0.0/33"},
      {"error", "/ip_acl/0/ip_rules/1", "Port in the IP ACL is not valid: 90-80"},
      {"error", "/ip_acl/0/ip_rules/2", "vlan: 4095 is not valid in rule with precedence: 12"},
      {"error", "/ipv6_acl/0/ip_rules/0", "Action in the ACL rule is not valid: 1"},
      {"error", "/ipv6_acl/0/ip_rules/1", "IP address in the IP ACL is not valid: fe80::1/129"},
      {"error", "/app_policy/0/rule_entry/0", "no canned_app or app_category"},
      {"error", "/app_policy/0/rule_entry/1", "precedence: 31"},
      {"error", "/dns_whitelist/0/entry/1", "DNS white-list entry of the captive portal"},
      {"warning", "/captive_portal/1", "nothing refers to it"},
      {"warning", "/captive_portal/1/cen_http_ports", "captive portal is not valid: null"},
      {"error", "/captive_portal/0/cen_http_ports",
       "HTTP port of the captive portal is not "
       "valid: 70000"}}},
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

// What lint says of a rule is what the build itself prints when it refuses the document.
TEST(LintTool, RuleMessagesAreTheBuildsOwn) {
    const char* rows[][3] = {
        {"\"smac\": \"00-de-ad-be-ef-00\"", "\"smac\": \"00-de-ad-be-ef\"",
         "/mac_acl/0/mac_rules/0"},
        {"\"low_dport\": 22", "\"low_dport\": 70000", "/ipv6_acl/0/ip_rules/0"},
        {"\"canned_app\": \"BitTorrent\"", "\"canned_app\": 7", "/app_policy/0/rule_entry/0"},
        {"\"80,8080\"", "\"80,-1\"", "/captive_portal/0/cen_http_ports"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row[2]);
        testsupport::TempDir dir;
        std::string doc = testsupport::readFile(example());
        size_t pos = doc.find(row[0]);
        ASSERT_NE(pos, std::string::npos);
        testsupport::writeFile(dir.file("doc.json"), doc.replace(pos, strlen(row[0]), row[1]));
        ToolRun lint = runTool("lint --json " + dir.file("doc.json"));
        EXPECT_EQ(lint.status, 1);
        Json report(json_tokener_parse(lint.out.c_str()));
        json_object* problems = at(report.get(), "problems");
        ASSERT_EQ(json_object_array_length(problems), 1u) << lint.out;
        EXPECT_EQ(text(at(item(problems, 0), "pointer")), row[2]);
        std::string message = text(at(item(problems, 0), "message"));
        EXPECT_NE(runTool("dump " + dir.file("doc.json")).out.find(message + "\n"),
                  std::string::npos)
            << message;
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
    replace("\"low_dport\": 22 }", "\"low_dport\": 2222 }");
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
    // Both radios carry the WLANs that use the ACL; the tunnel and the rule are both walked
    // elements and records (a lone low port is a one-port range).
    const char* expected[][4] = {
        {"global", "cen_if_vlans[2].remote_endpoint[0].ikev2_psk", "\"hq-tunnel-secret\"",
         "\"hq-tunnel-rotated\""},
        {"global", "cen_topologies[2].remote_endpoint[0].ikev2_psk", "\"hq-tunnel-secret\"",
         "\"hq-tunnel-rotated\""},
        {"radio[0]/vns[0]", "ipv6_in_acl/ip_rules[0].low_dport", "22", "2222"},
        {"radio[0]/vns[0]", "cen_filter_rules[10].r_port_min", "22", "2222"},
        {"radio[0]/vns[0]", "cen_filter_rules[10].r_port_max", "22", "2222"},
        {"radio[0]/vns[1]", "ssid", "\"Guest\"", "\"Guest2\""},
        {"radio[1]/vns[0]", "ipv6_in_acl/ip_rules[0].low_dport", "22", "2222"},
        {"radio[1]/vns[0]", "cen_filter_rules[10].r_port_min", "22", "2222"},
        {"radio[1]/vns[0]", "cen_filter_rules[10].r_port_max", "22", "2222"},
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
    json_object* rules = nullptr;
    for (size_t i = 0; i < json_object_array_length(at(firstVns, "entries")); ++i) {
        json_object* entry = item(at(firstVns, "entries"), i);
        if (text(at(entry, "name")) == "cen_filter_rules") rules = entry;
    }
    ASSERT_NE(rules, nullptr);
    EXPECT_EQ(text(at(rules, "record")), "apiCfgPlusFilterRule");
    EXPECT_EQ(text(at(item(at(rules, "value"), 0), "r_mac")), "00:DE:AD:BE:EF:00");
    json_object* redirect = item(at(rules, "value"), 8);
    EXPECT_EQ(json_object_get_int(at(redirect, "precedence")), 40);
    EXPECT_EQ(text(at(redirect, "r_ipaddr")), "10.99.0.10");
    EXPECT_EQ(json_object_get_int(at(redirect, "r_port_min")), 80);
    EXPECT_EQ(json_object_get_int(at(redirect, "r_ext_action_flags")), 0x2000);
    EXPECT_EQ(text(at(item(at(rules, "value"), 10), "r_ip6addr")),
              "2001:0db8:0010:0000:0000:0000:0000:0000");
}

TEST(DumpJson, OsuProviderListKeepsItsHeadAndIconData) {
    // The icons' paths are relative to the project's top directory.
    ToolRun run = runTool("dump --json " + example(), std::string(JCP_EXAMPLES_DIR) + "/..");
    ASSERT_EQ(run.status, 0);
    Json dump(json_tokener_parse(run.out.c_str()));
    json_object* osu = nullptr;
    json_object* lists = at(dump.get(), "vns");
    for (size_t i = 0; i < json_object_array_length(lists) && osu == nullptr; ++i) {
        json_object* entries = at(item(lists, i), "entries");
        for (size_t j = 0; j < json_object_array_length(entries); ++j) {
            if (text(at(item(entries, j), "name")) == "passpoint_policy/cen_osu_provider")
                osu = item(entries, j);
        }
    }
    ASSERT_NE(osu, nullptr);
    EXPECT_EQ(text(at(osu, "record")), "OSU_SP_LIST");
    json_object* value = at(osu, "value");
    EXPECT_EQ(json_object_get_int(at(value, "count")), 1);
    json_object* provider = item(at(value, "records"), 0);
    EXPECT_EQ(text(at(provider, "osu_server_uri")), "https://osu.example.com/signup/");
    EXPECT_EQ(text(at(item(at(provider, "name_lang"), 1), "code")), "deu");
    json_object* icons = at(provider, "icons");
    ASSERT_EQ(json_object_array_length(icons), 2u);
    size_t iconBytes =
        testsupport::readFile(std::string(JCP_EXAMPLES_DIR) + "/hs20-icon.png").size();
    EXPECT_EQ(json_object_get_int(at(value, "icon_bytes")), int(2 * iconBytes));
    EXPECT_EQ(json_object_get_int(at(item(icons, 1), "icon_data_len")), int(iconBytes));
    // The icon data follows the records; a PNG starts with its signature.
    std::string data = text(at(value, "data"));
    EXPECT_EQ(data.size(), 4 * iconBytes);
    EXPECT_EQ(data.compare(0, 8, "89504E47"), 0);
}

}  // namespace
