// SPDX-License-Identifier: MIT
// The command-line tool where a transcript cannot say it: the version against the library's
// soname, the manual page against the help, absolute paths, saved slots by modification time,
// and the JSON dump's record decoding checked field by field. What the tool prints for a
// command is golden (golden_test's transcript, lint and diff).
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "api/version.h"
#include "test_support.h"

namespace {

using testsupport::runTool;
using testsupport::ToolRun;

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

const std::string kExample = JCP_EXAMPLES_DIR "/ap-config.json";

TEST(Tool, VersionIsTheHeadersAndTheSonamesMajor) {
    ToolRun run = runTool("--version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "jsoncfgplus " JSONCFGPLUS_VERSION_STRING "\n");
    EXPECT_EQ(std::to_string(JSONCFGPLUS_VERSION_MAJOR) + "." +
                  std::to_string(JSONCFGPLUS_VERSION_MINOR) + "." +
                  std::to_string(JSONCFGPLUS_VERSION_PATCH),
              JSONCFGPLUS_VERSION_STRING);
    const std::string dynamic =
        testsupport::runCommand(std::string("readelf -d ") + JCP_SHARED_LIBRARY).out;
    EXPECT_NE(dynamic.find("[libjsoncfgplus.so." + std::to_string(JSONCFGPLUS_VERSION_MAJOR) + "]"),
              std::string::npos)
        << dynamic;
}

// Options as "--name" tokens; the manual page writes them with escaped hyphens.
std::set<std::string> optionsIn(const std::string& text) {
    std::string plain = std::regex_replace(text, std::regex(R"(\\-)"), "-");
    std::set<std::string> options;
    static const std::regex kOption("--[a-z][a-z-]*");
    for (auto it = std::sregex_iterator(plain.begin(), plain.end(), kOption);
         it != std::sregex_iterator(); ++it)
        options.insert(it->str());
    return options;
}

TEST(Tool, ManualPageCoversEveryCommandAndOptionOfTheHelp) {
    const std::string help = runTool("--help").out;
    const std::string man = testsupport::readFile(JCP_MAN_PAGE);
    ASSERT_FALSE(man.empty());
    EXPECT_NE(man.find("\"jsoncfgplus " JSONCFGPLUS_VERSION_STRING "\""), std::string::npos)
        << "the page's title line names another version";
    // Commands are the help's two-space-indented names; in the page each heads a ".B" line.
    std::vector<std::string> commands;
    static const std::regex kCommand(R"(\n  ([a-z][a-z-]*) )");
    for (auto it = std::sregex_iterator(help.begin(), help.end(), kCommand);
         it != std::sregex_iterator(); ++it)
        commands.push_back((*it)[1]);
    ASSERT_GE(commands.size(), 10u) << help;
    std::vector<size_t> starts;
    for (const std::string& command : commands) {
        std::string heading = "\n.B " + std::regex_replace(command, std::regex("-"), "\\-") + " ";
        size_t at = man.find(heading);
        EXPECT_NE(at, std::string::npos) << "no section for " << command;
        starts.push_back(at == std::string::npos ? 0 : at);
    }
    // Each command's own options are described in its section.
    for (size_t i = 0; i < commands.size(); ++i) {
        size_t end = man.find("\n.SH", starts[i]);
        for (size_t j = 0; j < starts.size(); ++j)
            if (starts[j] > starts[i]) end = std::min(end, starts[j]);
        std::string section = man.substr(starts[i], end - starts[i]);
        for (const std::string& option : optionsIn(runTool(commands[i] + " --help").out))
            EXPECT_EQ(optionsIn(section).count(option), 1u) << commands[i] << " " << option;
    }
    // Nothing the tool no longer has.
    EXPECT_EQ(optionsIn(man), optionsIn(help));
}

// An absolute path is a file URI in the SARIF log.
TEST(LintTool, SarifNamesAnAbsolutePathAsAFileUri) {
    const std::string path = testsupport::dataPath("tool/a b.json");
    Json log(json_tokener_parse(runTool("lint --format sarif '" + path + "'").out.c_str()));
    json_object* result = item(at(item(at(log.get(), "runs"), 0), "results"), 0);
    json_object* location = at(item(at(result, "locations"), 0), "physicalLocation");
    std::string uri = text(at(at(location, "artifactLocation"), "uri"));
    EXPECT_EQ(uri.rfind("file:///", 0), 0u) << uri;
    EXPECT_NE(uri.find("/tool/a%20b.json"), std::string::npos) << uri;
}

// Every test document equals itself, or does not build at all.
TEST(DiffTool, EveryTestDocumentEqualsItself) {
    for (const char* dir : {"golden", "lint"}) {
        for (const auto& file : std::filesystem::directory_iterator(testsupport::dataPath(dir))) {
            if (file.path().extension() != ".json") continue;
            ToolRun self = runTool("diff " + file.path().string() + " " + file.path().string());
            EXPECT_TRUE(self.status == 2 || (self.status == 0 && self.out.empty()))
                << file.path() << ": " << self.out;
        }
    }
}

// --saved compares the AP's two saved slots, the older by modification time as OLD whichever
// slot it is in, and is trouble (exit 2, one line) while fewer than two are saved.
TEST(DiffTool, SavedComparesTheOlderSlotWithTheNewer) {
    testsupport::TempDir dir;
    const std::string saved = "diff --saved --saved-dir " + dir.path();
    const std::string q1 = dir.file("json_q1.json");
    const std::string q2 = dir.file("json_q2.json");
    ToolRun none = runTool(saved);
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err,
              "jsoncfgplus diff: --saved needs both " + q1 + " and " + q2 + "; neither exists\n");
    testsupport::writeFile(q2, R"({"device": {"hostname": "a", "led": 1}})");
    ToolRun one = runTool(saved);
    EXPECT_EQ(one.status, 2);
    EXPECT_EQ(one.err, "jsoncfgplus diff: --saved needs both " + q1 + " and " + q2 + "; only " +
                           q2 + " exists\n");

    testsupport::writeFile(q1, R"({"device": {"hostname": "a", "led": 2}})");
    auto now = std::filesystem::file_time_type::clock::now();
    struct Row {
        const char* older;
        const char* out;
    } rows[] = {{"json_q2.json", "changed global: led: 1 -> 2\n"},
                {"json_q1.json", "changed global: led: 2 -> 1\n"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.older);
        for (const std::string& slot : {q1, q2}) {
            bool older = slot == dir.file(row.older);
            std::filesystem::last_write_time(slot, now - std::chrono::seconds(older ? 60 : 30));
        }
        ToolRun run = runTool(saved);
        EXPECT_EQ(run.status, 1) << run.err;
        EXPECT_EQ(run.out, row.out);
    }
    const std::vector<std::string> misuses = {saved + " " + q1 + " " + q2,
                                              "diff --saved-dir /tmp a b"};
    for (const std::string& args : misuses) EXPECT_EQ(runTool(args).status, 2) << args;
}

TEST(DumpJson, EntriesAndRecordsFieldByField) {
    ToolRun run = runTool("dump --json " + kExample);
    ASSERT_EQ(run.status, 0);
    Json dump(json_tokener_parse(run.out.c_str()));
    json_object* global = at(dump.get(), "global");
    ASSERT_NE(global, nullptr) << run.out.substr(0, 200);
    std::map<std::string, json_object*> byName;
    for (size_t i = 0; i < json_object_array_length(global); ++i)
        byName[text(at(item(global, i), "name"))] = item(global, i);

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
    ToolRun run = runTool("dump --json " + kExample + " --icon-dir " JCP_EXAMPLES_DIR "/icons");
    ASSERT_EQ(run.status, 0) << run.err;
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
    size_t signUp = testsupport::readFile(JCP_EXAMPLES_DIR "/icons/signup-eng.png").size();
    size_t logo = testsupport::readFile(JCP_EXAMPLES_DIR "/icons/example-logo.png").size();
    EXPECT_EQ(json_object_get_int(at(value, "icon_bytes")), int(signUp + logo));
    EXPECT_EQ(json_object_get_int(at(item(icons, 1), "icon_data_len")), int(logo));
    // The icon data follows the records, in hexadecimal; a PNG starts with its signature.
    std::string data = text(at(value, "data"));
    EXPECT_EQ(data.size(), 2 * (signUp + logo));
    EXPECT_EQ(data.compare(0, 8, "89504E47"), 0);
    EXPECT_EQ(data.compare(2 * signUp, 8, "89504E47"), 0);
}

}  // namespace
