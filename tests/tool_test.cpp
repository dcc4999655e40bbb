// SPDX-License-Identifier: MIT
// The command-line tool: exit codes, one-line errors, standard input, lint verdicts, diff, and
// the JSON dump's record decoding. Whole outputs of lint and diff are golden (golden_test).
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
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

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0, end; start < text.size(); start = end + 1) {
        end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

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
        {"lint", "", 2,
         "jsoncfgplus lint: expected at least 1 argument, got 0 (usage: jsoncfgplus lint"},
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
         {"\n  radios:          2: radio1, radio2\n", "\n  WLAN services:   3 in ",
          " slots: radio1: 2, radio2: 1,", "\n  meshpoints:      0\n",
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

// What json-c takes but strict JSON parsers refuse: one warning each, at its line and column
// and the pointer of the member it concerns; lines for anything else lint says are left out.
TEST(LintTool, StrictJsonWarningsWithPositions) {
    const std::string device = R"("device": {"hostname": "x"})";
    struct Row {
        const char* what;
        std::string text;
        std::vector<std::string> lines;
    } rows[] = {
        {"strict", "{" + device + ", \"a\": [1, \"\\u00e9\", {\"b\": null}]}", {}},
        {"duplicate key",
         "{" + device + ",\n  \"led\": 1,\n  \"led\": 2}",
         {"-:3:3: warning: /led: duplicate key \"led\" (first at line 2, column 3); the AP keeps "
          "only the last value given for it"}},
        {"nested duplicate, trailing commas",
         "{" + device + ", \"a\": [{\"b\": 1, \"b\": 2,}, 3,]}",
         {"-:1:46: warning: /a/0/b: duplicate key \"b\" (first at line 1, column 38); the AP "
          "keeps only the last value given for it",
          "-:1:52: warning: /a/0: a comma before '}'; json-c ignores it, strict JSON refuses it",
          "-:1:57: warning: /a: a comma before ']'; json-c ignores it, strict JSON refuses it"}},
        {"non-finite numbers",
         "{" + device + ", \"p\": NaN, \"q\": [-Infinity]}",
         {"-:1:36: warning: /p: NaN is not a JSON number; json-c reads it as a double, strict "
          "JSON refuses it",
          "-:1:47: warning: /q/0: -Infinity is not a JSON number; json-c reads it as a double, "
          "strict JSON refuses it"}},
        {"comments",
         "// head\n{" + device + " /* tail */}",
         {"-:1:1: warning: (document): a comment; json-c skips it, but strict JSON has no "
          "comments",
          "-:2:30: warning: (document): a comment; json-c skips it, but strict JSON has no "
          "comments"}},
        {"single quotes",
         "{" + device + ", 'k': 'v'}",
         {"-:1:31: warning: /k: a string in single quotes; strict JSON needs double quotes",
          "-:1:36: warning: /k: a string in single quotes; strict JSON needs double quotes"}},
        {"numbers json-c alone reads",
         "{" + device + ", \"n\": [010, -00.5, 1., 0, -0.5, 1e5]}",
         {"-:1:37: warning: /n/0: 010 has a leading zero; json-c reads it as a decimal number, "
          "strict JSON refuses it",
          "-:1:42: warning: /n/1: -00.5 has a leading zero; json-c reads it as a decimal number, "
          "strict JSON refuses it",
          "-:1:49: warning: /n/2: 1. has no digit after its '.'; json-c takes it, strict JSON "
          "refuses it"}},
        {"control characters, once per string",
         "{" + device + ", \"c\": \"a\tb\tc\", \"d\": \"\\t\"}",
         {"-:1:38: warning: /c: a control character (0x09) in a string; json-c keeps it, strict "
          "JSON needs it escaped"}},
        {"literal case",
         "{" + device + ", \"t\": True}",
         {"-:1:36: warning: /t: True is read as true by json-c; strict JSON knows only true"}},
        {"invalid UTF-8, told once",
         "{" + device + ", \"s\": \"\xC3\x28\", \"u\": \"\xED\xA0\x80\"}",
         {"-:1:37: warning: /s: invalid UTF-8 (byte 0xC3); json-c passes the bytes on as they "
          "are, strict JSON refuses them"}},
        {"byte-order mark",
         "\xEF\xBB\xBF{" + device + "}",
         {"-:1:1: error: (document): a byte-order mark starts the text; json-c refuses it, so "
          "the AP refuses the document"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ToolRun run = runTool("lint -", row.text);
        std::vector<std::string> positioned;
        for (const std::string& line : linesOf(run.out)) {
            if (line.rfind("-:", 0) == 0) positioned.push_back(line);
        }
        EXPECT_EQ(positioned, row.lines) << run.out;
    }
    // The JSON report carries the same positions.
    ToolRun json = runTool("lint --json -", "{" + device + ",\n \"led\": 1, \"led\": 2}");
    Json report(json_tokener_parse(json.out.c_str()));
    json_object* problem = item(at(report.get(), "problems"), 0);
    EXPECT_EQ(text(at(problem, "pointer")), "/led");
    EXPECT_EQ(json_object_get_int(at(problem, "line")), 2);
    EXPECT_EQ(json_object_get_int(at(problem, "column")), 12);
}

// Every problem, not only syntax ones, stands at its member: an object member at its key, an
// array item at its value, the document at its first character; of duplicate keys the one the
// AP keeps, and a key written with escapes where the build sees it.
TEST(LintTool, EveryProblemAtItsMembersLineAndColumn) {
    struct Row {
        const char* what;
        std::string text;
        std::vector<std::string> lines;
    } rows[] = {
        {"member at its key, array item at its value",
         "{\"device\": {\"name\": \"ap\", \"rf_domain_name\": 7,\n  \"interface\": [\"radio1\"]}}",
         {"-:1:27: error: /device/rf_domain_name: \"rf_domain_name\" must name a \"rf_domain\" "
          "object, but is an integer; the build ignores it",
          "-:1:27: error: /device/rf_domain_name: the RF domain is read only when the document "
          "has a \"profile\"",
          "-:2:17: error: /device/interface/0: is a string, not an object; the build skips it"}},
        {"the document",
         "\n  [1]",
         {"-:2:3: error: (document): the document is an array, not an object; the AP refuses it"}},
        {"the duplicate the AP keeps",
         "{\"device\": {\"name\": \"ap\"},\n \"wlan\": [{\"name\": \"a\", \"cen_ssid_id\": 1}],\n"
         " \"wlan\": [{\"name\": \"b\", \"cen_ssid_id\": 2}]}",
         {"-:3:2: warning: /wlan: duplicate key \"wlan\" (first at line 2, column 2); the AP "
          "keeps only the last value given for it",
          "-:3:11: warning: /wlan/0: defined but nothing refers to it; it is never used"}},
        {"escaped key",
         "{\"device\": {\"name\": \"ap\"},\n \"w\\u006can\": [\n   {\"name\": \"a\", "
         "\"cen_ssid_id\": 1}]}",
         {"-:3:4: warning: /wlan/0: defined but nothing refers to it; it is never used"}},
        {"key up to an escaped NUL, as json-c keeps it",
         "{\"device\": {\"name\": \"ap\"},\n \"wlan\\u0000x\": [{\"name\": \"a\", "
         "\"cen_ssid_id\": 1}]}",
         {"-:2:18: warning: /wlan/0: defined but nothing refers to it; it is never used"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<std::string> lines = linesOf(runTool("lint -", row.text).out);
        ASSERT_FALSE(lines.empty());
        lines.pop_back();  // the summary
        EXPECT_EQ(lines, row.lines);
    }
}

// Several files in one run: each problem names its file, one summary closes the run, and the
// run fails when any file has an error or cannot be read, the others still linted.
TEST(LintTool, SeveralFilesOneSummary) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("unused.json"),
                           "{\"device\": {\"name\": \"ap\"},\n \"wlan\": [{\"name\": \"a\", "
                           "\"cen_ssid_id\": 1}]}");
    testsupport::writeFile(dir.file("bad.json"), "{\"device\": 1}");
    ToolRun run = runTool("lint unused.json bad.json", "", dir.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "unused.json:2:11: warning: /wlan/0: defined but nothing refers to it; it is never "
              "used\n"
              "bad.json:1:2: error: /device: the device must be an object; the build finds none\n"
              "1 error(s), 1 warning(s)\n");
    EXPECT_EQ(runTool("lint unused.json " + kExample, "", dir.path()).status, 0);
    ToolRun unread = runTool("lint missing.json unused.json", "", dir.path());
    EXPECT_EQ(unread.status, 1);
    EXPECT_EQ(unread.err, "jsoncfgplus lint: cannot read missing.json\n");
    EXPECT_EQ(linesOf(unread.out).size(), 2u) << unread.out;
}

json_object* physicalLocation(json_object* sarifLog, size_t result) {
    json_object* results = at(item(at(sarifLog, "runs"), 0), "results");
    return at(item(at(item(results, result), "locations"), 0), "physicalLocation");
}

// --json: file, line and column on every problem; --format sarif: a SARIF 2.1.0 log with one
// result per problem at its file, line and column.
TEST(LintTool, JsonAndSarifReports) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("a b.json"), "{\"device\": 1,\n \"led\": 1, \"led\": 2}");
    ToolRun json = runTool("lint --json 'a b.json' -", "[]", dir.path());
    EXPECT_EQ(json.status, 1);
    Json report(json_tokener_parse(json.out.c_str()));
    ASSERT_NE(report, nullptr) << json.err;
    json_object* problems = at(report.get(), "problems");
    ASSERT_EQ(json_object_array_length(problems), 3u) << json.out;
    const struct {
        const char* file;
        int line, column;
        const char* pointer;
    } expected[] = {{"a b.json", 2, 12, "/led"}, {"a b.json", 1, 2, "/device"}, {"-", 1, 1, ""}};
    for (size_t i = 0; i < 3; ++i) {
        json_object* p = item(problems, i);
        EXPECT_EQ(text(at(p, "file")), expected[i].file);
        EXPECT_EQ(json_object_get_int(at(p, "line")), expected[i].line);
        EXPECT_EQ(json_object_get_int(at(p, "column")), expected[i].column);
        EXPECT_EQ(text(at(p, "pointer")), expected[i].pointer);
    }
    EXPECT_EQ(json_object_get_int(at(report.get(), "errors")), 2);

    ToolRun sarif = runTool("lint --format sarif 'a b.json'", "", dir.path());
    EXPECT_EQ(sarif.status, 1);
    Json log(json_tokener_parse(sarif.out.c_str()));
    ASSERT_NE(log, nullptr) << sarif.err;
    EXPECT_EQ(text(at(log.get(), "version")), "2.1.0");
    EXPECT_NE(text(at(log.get(), "$schema")).find("sarif-2.1.0"), std::string::npos);
    json_object* run = item(at(log.get(), "runs"), 0);
    EXPECT_EQ(text(at(at(at(run, "tool"), "driver"), "name")), "jsoncfgplus");
    json_object* results = at(run, "results");
    ASSERT_EQ(json_object_array_length(results), 2u) << sarif.out;
    json_object* first = item(results, 0);
    EXPECT_EQ(text(at(first, "ruleId")), "strict-json");
    EXPECT_EQ(text(at(first, "level")), "warning");
    EXPECT_EQ(text(at(at(first, "message"), "text")).rfind("/led: duplicate key", 0), 0u);
    json_object* physical = physicalLocation(log.get(), 0);
    EXPECT_EQ(text(at(at(physical, "artifactLocation"), "uri")), "a%20b.json");
    EXPECT_EQ(json_object_get_int(at(at(physical, "region"), "startLine")), 2);
    EXPECT_EQ(json_object_get_int(at(at(physical, "region"), "startColumn")), 12);
    EXPECT_EQ(text(at(item(results, 1), "level")), "error");
    // An absolute path is a file URI.
    Json absolute(json_tokener_parse(
        runTool("lint --format sarif '" + dir.file("a b.json") + "'").out.c_str()));
    std::string uri = text(at(at(physicalLocation(absolute.get(), 0), "artifactLocation"), "uri"));
    EXPECT_EQ(uri.rfind("file:///", 0), 0u) << uri;
    EXPECT_NE(uri.find("/a%20b.json"), std::string::npos) << uri;
    // A clean run is a log with no results, not an empty output.
    Json clean(json_tokener_parse(runTool("lint --format sarif " + kExample).out.c_str()));
    EXPECT_EQ(json_object_array_length(at(item(at(clean.get(), "runs"), 0), "results")), 0u);

    for (const char* args : {"lint --format xml -", "lint --json --format sarif -"})
        EXPECT_EQ(runTool(args, "{}").status, 2) << args;
}

TEST(DiffTool, NothingAddedRemovedAndUnbuildable) {
    ToolRun same = runTool("diff " + kExample + " " + kExample);
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.out, "");
    // Every test document equals itself, or does not build at all.
    for (const char* dir : {"golden", "lint"}) {
        for (const auto& file : std::filesystem::directory_iterator(testsupport::dataPath(dir))) {
            if (file.path().extension() != ".json") continue;
            ToolRun self = runTool("diff " + file.path().string() + " " + file.path().string());
            EXPECT_TRUE(self.status == 2 || (self.status == 0 && self.out.empty()))
                << file.path() << ": " << self.out;
        }
    }
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

// The example with one text replaced, for documents that differ from it in one place.
using Edits = std::vector<std::pair<std::string, std::string>>;

// The example with each text replaced in turn, as a person would edit it.
std::string exampleWith(const Edits& edits) {
    std::string doc = testsupport::readFile(kExample);
    for (const auto& [from, to] : edits) {
        size_t at = doc.find(from);
        if (at == std::string::npos) ADD_FAILURE() << from << " is not in the example";
        if (at != std::string::npos) doc.replace(at, from.size(), to);
    }
    return doc;
}

std::string exampleWith(const std::string& from, const std::string& to) {
    return exampleWith(Edits{{from, to}});
}

// A document that does not build is trouble (exit 2), not a difference: one line naming the
// file and the reason the library printed last, whichever side it is on.
TEST(DiffTool, UnbuiltDocumentNamedWithTheLibrarysReason) {
    struct Row {
        const char* what;
        std::string doc;
        std::string reason;
    } rows[] = {
        {"conversion throws", exampleWith("\"36,40,44,48\"", "\"36,forty,44\""),
         "[ERR] jsonCfgPlusParserCallback: not a decimal number: \"forty\""},
        {"invalid rule", exampleWith("\"00-de-ad-be-ef-00\"", "\"00-de-ad-be-ef-zz\""),
         "MAC address in the MAC ACL is not valid: 00-de-ad-be-ef-zz"},
        {"no device", R"({"wlan": []})", "[ERR] not found mandatory device."},
        {"truncated", R"({"device": {)", "Error: "},
    };
    testsupport::TempDir dir;
    const std::string bad = dir.file("bad.json");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        testsupport::writeFile(bad, row.doc);
        for (const std::string& args :
             {"diff " + bad + " " + kExample, "diff " + kExample + " " + bad}) {
            ToolRun run = runTool(args);
            EXPECT_EQ(run.status, 2);
            EXPECT_EQ(run.out, "");
            EXPECT_EQ(
                run.err.rfind("jsoncfgplus diff: " + bad + " was not built: " + row.reason, 0), 0u)
                << run.err;
            EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        }
    }
    ToolRun unread = runTool("diff /nonexistent.json " + kExample);
    EXPECT_EQ(unread.status, 2);
    EXPECT_EQ(unread.err, "jsoncfgplus diff: cannot read /nonexistent.json\n");
}

// Non-finite numbers equal themselves, so a document compared with itself is unchanged; an
// infinity of the other sign is a change.
TEST(DiffTool, NonFiniteNumbersEqualThemselves) {
    testsupport::TempDir dir;
    for (const char* value : {"NaN", "Infinity", "-Infinity", "-0.0"}) {
        SCOPED_TRACE(value);
        testsupport::writeFile(dir.file("a.json"),
                               exampleWith("\"power\": 17", std::string("\"power\": ") + value));
        ToolRun same = runTool("diff " + dir.file("a.json") + " " + dir.file("a.json"));
        EXPECT_EQ(same.status, 0) << same.out;
        EXPECT_EQ(same.out, "");
    }
    testsupport::writeFile(dir.file("b.json"), exampleWith("\"power\": 17", "\"power\": Infinity"));
    ToolRun other = runTool("diff " + dir.file("a.json") + " " + dir.file("b.json"));
    EXPECT_EQ(other.status, 1);
    EXPECT_NE(other.out.find("changed radio[1]: power: -0.0 -> Infinity"), std::string::npos)
        << other.out;
}

// Each edit a person makes to the example is told in one line per place the AP receives it
// (the corp WLAN sits on two radios: the document's rule list and the rule records on each);
// each expected text starts its line, or is the whole of it.
TEST(DiffTool, RulesAndSlotsMatchedAsAPersonReadsThem) {
    const std::string acl = "radio[0]/vns[0]: ";
    const std::string dnsRule =
        "      { \"precedence\": 5, \"allow\": \"allow\", \"dns_name\": \"intranet.example.net\" "
        "},\n";
    const std::string tcpRule =
        "      { \"precedence\": 10, \"allow\": \"allow\", \"dip\": \"10.20.0.0/16\", "
        "\"protocol\": 6,\n"
        "        \"low_dport\": 443, \"high_dport\": 443, \"match_dot1p\": 5, \"mark_8021p\": 6, "
        "\"transmit_queue\": 2 },\n";
    const std::string macRule =
        "      { \"precedence\": 20, \"allow\": \"deny\", \"smac\": "
        "\"00-de-ad-00-00-00\", \"smac_mask\": \"ff-ff-ff-00-00-00\" },\n";
    const std::string firstMacRule =
        "      { \"precedence\": 10, \"allow\": \"deny\", \"smac\": \"00-de-ad-be-ef-00\" },\n";
    std::string equalMacRule = macRule;
    equalMacRule.replace(equalMacRule.find("20"), 2, "10");
    const std::map<std::string, Edits> variants = {
        {"rules_swapped", {{dnsRule + tcpRule, tcpRule + dnsRule}}},
        {"rule_inserted",
         {{"      { \"precedence\": 90, \"allow\": \"deny\"",
           "      { \"precedence\": 50, \"allow\": \"deny\", \"dip\": \"10.66.0.0/16\", "
           "\"protocol\": 6, \"low_dport\": 23,\n        \"high_dport\": 23 },\n"
           "      { \"precedence\": 90, \"allow\": \"deny\""}}},
        {"mac_rule_removed", {{macRule, ""}}},
        {"rule_moved",
         {{"{ \"precedence\": 40, \"allow\": \"redirect\"",
           "{ \"precedence\": 95, \"allow\": \"redirect\""}}},
        {"rule_action_changed",
         {{"{ \"precedence\": 90, \"allow\": \"deny\"",
           "{ \"precedence\": 90, \"allow\": \"allow\""}}},
        {"equal_precedence", {{macRule, equalMacRule}}},
        {"equal_precedence_swapped", {{firstMacRule + macRule, equalMacRule + firstMacRule}}},
        {"wlan_moved",
         {{"{ \"bss\": 3, \"wlan\": \"guest\" }", "{ \"bss\": 4, \"wlan\": \"guest\" }"}}},
        {"wlan_to_other_radio",
         {{"{ \"bss\": 2, \"wlan\": \"guest\" }\n          ] },",
           "{ \"bss\": 2, \"wlan\": \"guest\" },\n            { \"bss\": 3, \"wlan\": \"hotspot\" "
           "}\n"
           "          ] },"},
          {"            { \"bss\": 2, \"wlan\": \"hotspot\" },\n", ""}}},
    };
    testsupport::TempDir dir;
    auto variant = [&](const std::string& name) {
        std::string path = dir.file(name + ".json");
        if (!std::ifstream(path)) testsupport::writeFile(path, exampleWith(variants.at(name)));
        return path;
    };
    struct Row {
        const char* old;
        const char* changed;
        std::vector<std::string> lines;  // radio[0]'s lines; radio[1]'s follow alike
    } rows[] = {
        {nullptr,
         "rules_swapped",
         {"reordered " + acl + "ip_in_acl/ip_rules: items in another order"}},
        {nullptr,
         "rule_inserted",
         {"inserted " + acl +
              "ip_in_acl/ip_rules[3]: "
              "{\"precedence\":50,\"allow\":\"deny\",\"dip\":\"10.66.0.0/16\"",
          "inserted " + acl + "cen_filter_rules: {\"precedence\":50,\"r_ipaddr\":\"10.66.0.0\""}},
        {nullptr,
         "mac_rule_removed",
         {"removed " + acl + "mac_in_acl/mac_rules[1]: {\"precedence\":20,",
          "removed " + acl +
              "cen_filter_rules: {\"precedence\":20,\"r_mac\":\"00:DE:AD:00:00:00\""}},
        {nullptr,
         "rule_moved",
         {"moved " + acl + "ip_in_acl/ip_rules[2]: {\"precedence\":40,",
          "moved " + acl + "cen_filter_rules: {\"precedence\":40,\"r_ipaddr\":\"10.99.0.10\""}},
        {nullptr,
         "rule_action_changed",
         {"changed " + acl + "ip_in_acl/ip_rules[3].allow: \"deny\" -> \"allow\"",
          "changed " + acl + "cen_filter_rules: {\"precedence\":90,"}},
        {"equal_precedence",
         "equal_precedence_swapped",
         {"reordered " + acl + "mac_in_acl/mac_rules: items in another order",
          "reordered " + acl +
              "cen_filter_rules: rules of equal precedence in another order, which the AP may "
              "apply differently"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.changed);
        std::string old = row.old == nullptr ? kExample : variant(row.old);
        ToolRun run = runTool("diff " + old + " " + variant(row.changed));
        EXPECT_EQ(run.status, 1) << run.err;
        std::vector<std::string> lines = linesOf(run.out);
        ASSERT_EQ(lines.size(), 2 * row.lines.size()) << run.out;
        for (size_t i = 0; i < lines.size(); ++i) {
            std::string expected = row.lines[i % row.lines.size()];
            if (i >= row.lines.size()) expected.replace(expected.find("radio[0]"), 8, "radio[1]");
            EXPECT_EQ(lines[i].rfind(expected, 0), 0u) << lines[i];
        }
    }
    // Moves and precedence changes end in what changed; a moved WLAN is one line.
    ToolRun moved = runTool("diff " + kExample + " " + variant("rule_moved"));
    EXPECT_EQ(linesOf(moved.out)[1].substr(linesOf(moved.out)[1].rfind("}: ")),
              "}: precedence: 40 -> 95");
    ToolRun slot = runTool("diff " + kExample + " " + variant("wlan_moved"));
    EXPECT_EQ(slot.out, "moved radio[1]/vns[2] -> radio[1]/vns[3]: name: \"guest\"\n");
    slot = runTool("diff " + kExample + " " + variant("wlan_to_other_radio"));
    EXPECT_EQ(slot.out, "moved radio[1]/vns[1] -> radio[0]/vns[2]: name: \"hotspot\"\n");
    // Two WLANs that trade slots: each is one line.
    testsupport::writeFile(
        dir.file("swapped.json"),
        exampleWith("{ \"bss\": 1, \"wlan\": \"corp\" },\n            { \"bss\": 2, "
                    "\"wlan\": \"guest\" }\n          ] },",
                    "{ \"bss\": 2, \"wlan\": \"corp\" },\n            { \"bss\": 1, "
                    "\"wlan\": \"guest\" }\n          ] },"));
    slot = runTool("diff " + kExample + " " + dir.file("swapped.json"));
    EXPECT_EQ(slot.out,
              "moved radio[0]/vns[0] -> radio[0]/vns[1]: name: \"corp\"\n"
              "moved radio[0]/vns[1] -> radio[0]/vns[0]: name: \"guest\"\n");
    slot = runTool("diff --json " + kExample + " " + variant("wlan_moved"));
    Json report(json_tokener_parse(slot.out.c_str()));
    json_object* change = item(at(report.get(), "changes"), 0);
    EXPECT_EQ(text(at(change, "where")), "radio[1]/vns[2]");
    EXPECT_EQ(text(at(change, "to")), "radio[1]/vns[3]");

    // --verbose keeps every field at its position.
    ToolRun verbose = runTool("diff --verbose " + kExample + " " + variant("rules_swapped"));
    EXPECT_EQ(linesOf(verbose.out).size(), 36u);
    EXPECT_EQ(linesOf(verbose.out)[0],
              "changed " + acl + "ip_in_acl/ip_rules[0].precedence: 5 -> 10");
    verbose = runTool("diff --verbose " + kExample + " " + variant("wlan_moved"));
    EXPECT_EQ(linesOf(verbose.out).size(), 98u);
}

// Diagnostics of a JSON dump, each as {severity, text}.
std::vector<std::pair<std::string, std::string>> diagnosticsOf(const std::string& out) {
    Json dump(json_tokener_parse(out.c_str()));
    std::vector<std::pair<std::string, std::string>> diagnostics;
    json_object* list = at(dump.get(), "diagnostics");
    for (size_t i = 0; i < json_object_array_length(list); ++i)
        diagnostics.emplace_back(text(at(item(list, i), "severity")),
                                 text(at(item(list, i), "text")));
    return diagnostics;
}

// Every line the library reports while building stays in the JSON dump, whole, at the level the
// library gives it; separators, which say nothing, do not.
TEST(DumpJson, KeepsTheLibrarysDiagnostics) {
    ToolRun run = runTool("dump --json -", R"({"profile": [{"name": "p"}],
        "device": {"profile_name": "nope", "interface": [{"name": "radio1", "type": "radio",
            "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
        "wlan": [{"name": "w", "ssid": "x"}]})");
    ASSERT_EQ(run.status, 0) << run.err;
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"info", "parseJsonCfgPlus starts..."},
        {"note", "JSON-Q+: buildConfig()..."},
        {"info", "build top level look-up table..."},
        {"info", " request-id=0"},
        {"info", "[INFO] device: profile not resolved"},
        {"info", "[INFO] management policy not resolved."},
        {"info", "[INFO] device: rf_domain not resolved"},
        {"error", "[ERROR] cen_ssid_id is not specified."},
        {"note", "JSON-Q+: freeJsonCfgPlus done."},
    };
    EXPECT_EQ(diagnosticsOf(run.out), expected);

    // A warning that carries no bracketed tag is still a warning.
    testsupport::TempDir noSignatures;
    run = runTool("dump --json - --signature-dir " + noSignatures.path(),
                  R"({"device": {"interface": [{"name": "radio1", "type": "radio",
            "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
        "wlan": [{"name": "w", "cen_ssid_id": 1, "ip_in_acl": "a"}],
        "ip_acl": [{"name": "a", "ip_rules": [{"dns_name": "a.example"}]}]})");
    ASSERT_EQ(run.status, 0) << run.err;
    const std::pair<std::string, std::string> fqdn = {
        "warning", "warning: the specified FQDN rule not found its definition."};
    auto diagnostics = diagnosticsOf(run.out);
    EXPECT_NE(std::find(diagnostics.begin(), diagnostics.end(), fqdn), diagnostics.end())
        << run.out;

    // The example without its signature files: each rule's warning, as often as printed.
    // With the example's icons, so that only the rules warn.
    run = runTool("dump --json " + kExample + " --icon-dir " JCP_EXAMPLES_DIR "/icons");
    int warnings = 0;
    for (const auto& diagnostic : diagnosticsOf(run.out)) {
        if (diagnostic.first != "warning") continue;
        ++warnings;
        EXPECT_EQ(diagnostic.second.rfind("[WARN] application policy: no signature for ", 0), 0u);
    }
    EXPECT_EQ(warnings, 4);

    // json-c's reason goes to standard error with the library's other lines, none to the output.
    run = runTool("dump --json -", R"({"device": {)");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("\nError: "), std::string::npos) << run.err;
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
