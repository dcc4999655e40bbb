// The command-line tool: exit codes, one-line errors, standard input, lint verdicts, diff, and
// the JSON dump's record decoding. Whole outputs of lint and diff are golden (golden_test).
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <regex>
#include <set>

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

TEST(Tool, ReadsStandardInput) {
    ToolRun run = runTool("reqid -", R"({"request-id": 31})");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "31\n");
    run = runTool("dump --no-convert -", R"({"device": {"hostname": "x"}})");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\"hostname\": \"x\"\n"), std::string::npos);
    run = runTool("dump --json -", R"({"device": {"hostname": "x"}})");
    EXPECT_EQ(run.status, 0) << run.err;
    for (const char* list : {"\"global\"", "\"radios\"", "\"vns\"", "\"meshpoints\""})
        EXPECT_NE(run.out.find(list), std::string::npos) << list << " in\n" << run.out;
}

TEST(Tool, FailuresEndInOneLineOnStandardError) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("cap.xml"),
                           "<config><debug><cap>x</cap></debug><cfg></cfg></config>");
    // A group id that is not a number, met when the application policy is converted.
    testsupport::writeFile(
        dir.file("appid.xml"),
        R"(<Cockatrice><AppGroupID name="Streaming" value="many"/></Cockatrice>)");
    const std::string appPolicy = R"({"device": {"interface": [{"name": "radio1", "type": "radio",
        "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
        "wlan": [{"name": "w", "cen_ssid_id": 1, "app_policy": "p"}],
        "app_policy": [{"name": "p", "rule_entry": [{"app_category": "Streaming"}]}]})";
    const std::string serial = R"({"device": {"cen_serial_number": "A"}})";
    struct Row {
        std::string args, input;
        int status;
        std::string lastLine;
    } rows[] = {
        {"dump -", "{\"device\": 1", 1,
         "jsoncfgplus dump: the document was not built (the reason is printed above)"},
        {"dump /nonexistent.json", "", 1, "jsoncfgplus dump: cannot read /nonexistent.json"},
        {"validate -", "{", 1, "jsoncfgplus validate: - is not a valid JSON document"},
        {"check - --serial B", serial, 1, "jsoncfgplus check: serial number mismatch"},
        {"dump a b", "", 2,
         "jsoncfgplus dump: expected 1 argument, got 2 (usage: jsoncfgplus dump"},
        {"lint", "", 2, "jsoncfgplus lint: expected 1 argument, got 0 (usage: jsoncfgplus lint"},
        {"lint - --bogus", "", 2, "jsoncfgplus lint: unknown option --bogus (usage: "},
        {"frobnicate", "", 2, "jsoncfgplus: unknown command 'frobnicate' (see jsoncfgplus --help)"},
        {"debug-config --file " + dir.file("cap.xml"), "", 1,
         "jsoncfgplus debug-config: " + dir.file("cap.xml") +
             ": a debug switch is not a decimal number that fits an int"},
        {"dump - --signature-dir " + dir.path(), appPolicy, 1,
         "jsoncfgplus dump: the document was not built (the reason is printed above)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("jsoncfgplus " + row.args);
        ToolRun run = runTool(row.args, row.input);
        EXPECT_EQ(run.status, row.status) << run.err;
        // Only the parser's own "Error: " line may come before the tool's line.
        std::string last =
            run.err.rfind("Error: ", 0) == 0 ? run.err.substr(run.err.find('\n') + 1) : run.err;
        EXPECT_EQ(last.rfind(row.lastLine, 0), 0u) << run.err;
        EXPECT_EQ(std::count(last.begin(), last.end(), '\n'), 1) << run.err;
    }
}

TEST(Tool, CheckLeavesTheClockAloneUnlessAsked) {
    ToolRun run =
        runTool("check - --serial A", R"({"cen_time": 5, "device": {"cen_serial_number": "A"}})");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("set clock(Epoch seconds):5\n"), std::string::npos);
    EXPECT_EQ(run.out.find("set clock errno="), std::string::npos);
    EXPECT_NE(run.err.find("clock left unchanged"), std::string::npos);
}

TEST(Tool, HelpOnEveryCommand) {
    for (const char* command : {"dump", "validate", "reqid", "check", "lint", "diff"}) {
        ToolRun run = runTool(std::string(command) + " --help");
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_EQ(run.out.rfind(std::string("usage: jsoncfgplus ") + command, 0), 0u) << command;
    }
    EXPECT_EQ(runTool("--help").status, 0);
}

TEST(Tool, VersionIsTheHeadersAndTheSonamesMajor) {
    ToolRun run = runTool("--version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "jsoncfgplus " JSONCFGPLUS_VERSION_STRING "\n");
    EXPECT_EQ(std::to_string(JSONCFGPLUS_VERSION_MAJOR) + "." +
                  std::to_string(JSONCFGPLUS_VERSION_MINOR) + "." +
                  std::to_string(JSONCFGPLUS_VERSION_PATCH),
              JSONCFGPLUS_VERSION_STRING);
    std::string dynamic;
    FILE* pipe = popen((std::string("readelf -d ") + JCP_SHARED_LIBRARY).c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    char buffer[4096];
    while (size_t n = std::fread(buffer, 1, sizeof buffer, pipe)) dynamic.append(buffer, n);
    pclose(pipe);
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

TEST(Tool, SummaryCountsWhatTheApGetsAndShowsTheWarnings) {
    const std::string document = R"({"device": {"name": "ap", "interface": [
        {"name": "radio1", "type": "radio", "wlanbssmap": [{"bss": 1, "wlan": "corp"},
                                                           {"bss": 3, "wlan": "guest"}]},
        {"name": "radio2", "type": "radio", "wlanbssmap": [{"bss": 2, "wlan": "corp"}]},
        {"name": "radioX", "type": "radio"}]},
        "wlan": [{"name": "corp", "ssid": "Corp", "cen_ssid_id": 1},
                 {"name": "guest", "ssid": "Guest", "cen_ssid_id": 2}]})";
    ToolRun run = runTool("summary -", document);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("-: built\n", 0), 0u) << run.out;
    for (const char* line :
         {"\n  radios:          2: radio 0, radio 1\n", "\n  WLAN services:   3 in ",
          " slots: radio 0: 2, radio 1: 1,", "\n  meshpoints:      0\n",
          "\n  warnings:        1\n    [WARN] radio without a radio "})
        EXPECT_NE(run.out.find(line), std::string::npos) << line << " in\n" << run.out;
    // The library's progress lines stay out of the summary.
    EXPECT_EQ(run.out.find("parseJsonCfgPlus"), std::string::npos) << run.out;
    EXPECT_EQ(runTool("summary -", "{\"device\": 1").status, 1);
}

TEST(LintTool, VerdictsAndTheJsonReport) {
    ToolRun clean = runTool("lint " + kExample);
    EXPECT_EQ(clean.status, 0);
    EXPECT_EQ(clean.out, "");
    // Warnings alone do not fail: text after the document is accepted by the build.
    EXPECT_EQ(runTool("lint " + testsupport::dataPath("bad/trailing_garbage.json")).status, 0);

    ToolRun syntax = runTool("lint --json " + testsupport::dataPath("lint/syntax.json"));
    Json report(json_tokener_parse(syntax.out.c_str()));
    json_object* problem = item(at(report.get(), "problems"), 0);
    EXPECT_EQ(text(at(problem, "severity")), "error");
    EXPECT_EQ(json_object_get_int(at(problem, "line")), 3);
    EXPECT_EQ(json_object_get_int(at(problem, "column")), 12);
    EXPECT_EQ(json_object_get_int(at(report.get(), "errors")), 1);
}

TEST(DiffTool, NothingAddedRemovedAndUnbuildable) {
    ToolRun same = runTool("diff " + kExample + " " + kExample);
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.out, "");
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("old.json"), R"({"device": {"hostname": "a", "led": 1}})");
    testsupport::writeFile(dir.file("new.json"), R"({"device": {"hostname": "a", "mode": "x"}})");
    ToolRun run = runTool("diff " + dir.file("old.json") + " " + dir.file("new.json"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "removed global: led: 1\nadded global: mode: \"x\"\n");
    run = runTool("diff --json " + dir.file("old.json") + " " + dir.file("new.json"));
    Json changes(json_tokener_parse(run.out.c_str()));
    EXPECT_STREQ(json_object_to_json_string_ext(changes.get(), JSON_C_TO_STRING_PLAIN),
                 R"({"changes":[{"change":"removed","where":"global","path":"led","old":1},)"
                 R"({"change":"added","where":"global","path":"mode","new":"x"}]})");
    testsupport::writeFile(dir.file("bad.json"), R"({"wlan": []})");
    EXPECT_EQ(runTool("diff " + dir.file("bad.json") + " " + dir.file("new.json")).status, 2);
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

TEST(Diff, ComparesTheIconBytesReadFromTheIconDirectory) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("a.png"), std::string("\x89PNG\r\n\x1A\nA", 9));
    testsupport::writeFile(dir.file("b.png"), std::string("\x89PNG\r\n\x1A\nB", 9));
    for (const char* name : {"a", "b"}) {
        testsupport::writeFile(dir.file(std::string(name) + ".json"),
                               R"({"device": {"interface": [{"name": "radio1", "type": "radio",
                "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
              "wlan": [{"name": "w", "cen_ssid_id": 1, "passpoint_policy": "p"}],
              "passpoint_policy": [{"name": "p", "osu_provider": [{"server_url": "https://osu/",
                "method_oma_dm_priority": 1, "icon": [{"width": 1, "height": 1,
                "filename": "logo.png", "file": ")" +
                                   std::string(name) + R"(.png"}]}]}]})");
    }
    ToolRun run = runTool("diff " + dir.file("a.json") + " " + dir.file("b.json") + " --icon-dir " +
                          dir.path());
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_NE(run.out.find("changed radio[0]/vns[0]: passpoint_policy/cen_osu_provider.data: "
                           "\"89504E470D0A1A0A41\" -> \"89504E470D0A1A0A42\"\n"),
              std::string::npos)
        << run.out;
}

}  // namespace
