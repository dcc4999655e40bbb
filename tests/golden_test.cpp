// SPDX-License-Identifier: MIT
// Whole-document behaviour as golden text under tests/data/golden, each an input document and
// its expected output: the example and purpose-made documents through every converter, the
// element lists a build leaves, sets of small documents each pinning one behaviour, the walk of
// every JSON shape, the rendering of every entry kind, the tool's lint and diff reports, and a
// transcript of the tool's commands.
// Regenerate after an intended change with: JCP_UPDATE_GOLDEN=1 ctest --test-dir build -R golden
// and read the diff before committing it.
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

#include "api/jsoncfgplus.h"
#include "document/json_cfg_plus.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

using testsupport::captureStdout;
using testsupport::dataPath;
using testsupport::readFile;

// The example's signature files stand in for the AP's, so no output depends on the machine.
class ExampleSignatures : public testing::Environment {
    void SetUp() override {
        const std::string dir = JCP_EXAMPLES_DIR "/signatures/";
        cfgPlusSignatureMaps::m_inst.setPaths(dir + "appid.xml", dir + "displaynames.xml",
                                              dir + "none.xml", dir + "none.xml");
    }
};
testing::Environment* const kSignatures = testing::AddGlobalTestEnvironment(new ExampleSignatures);

// Compares text with golden/name, or rewrites the file when JCP_UPDATE_GOLDEN is set; on a
// mismatch the failure shows the unified diff, golden first.
void expectGolden(const std::string& name, const std::string& text) {
    const std::string path = dataPath("golden/" + name);
    if (std::getenv("JCP_UPDATE_GOLDEN") != nullptr) {
        testsupport::writeFile(path, text);
        return;
    }
    const std::string golden = readFile(path);
    if (text == golden) return;
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("actual"), text);
    const std::string diff =
        testsupport::runCommand("diff -u " + path + " " + dir.file("actual")).out;
    ADD_FAILURE() << name << " differs from its golden file (JCP_UPDATE_GOLDEN=1 rewrites it):\n"
                  << diff;
}

// The example through every converter as the demo dumps it, with what the build prints.
TEST(Golden, ExampleDocumentThroughEveryConverter) {
    testsupport::ToolRun run = testsupport::runTool(
        "dump examples/ap-config.json --signature-dir examples/signatures --icon-dir "
        "examples/icons",
        "", JCP_EXAMPLES_DIR "/..");
    EXPECT_EQ(run.status, 0) << run.err;
    expectGolden("ap-config.dump.txt", run.out);
}

// Before any converter: the global order, radios merged by id with the device's values
// winning, WLANs and meshpoints in their slots, ports and IoT interfaces as pseudo-radios
// (build), and the radio id each interface name gives, or the warning that skips it
// (interfaces).
TEST(Golden, ElementListsOfABuild) {
    for (const char* name : {"build", "interfaces"}) {
        SCOPED_TRACE(name);
        const std::string text = readFile(dataPath("golden/" + std::string(name) + ".json"));
        jsonCfgPlus doc;
        std::string out = captureStdout([&] {
            ASSERT_EQ(doc.buildConfig(text.data(), static_cast<unsigned int>(text.size())), 0);
            doc.printConfig();
        });
        expectGolden(name + std::string(".txt"), out);
    }
}

// The converters at their limits: radio lists and defaults, settings copied into each radio,
// meshpoints on radios of every band, WLAN slots beside wired and IoT ports, the first route,
// three sensor servers and 32 ARP-guard addresses (converters); what they give when the
// document holds next to nothing (converter_defaults); the OSEN rule and the Hotspot items
// dropped or cut, each with its warning (hotspot). With everything the build prints.
TEST(Golden, ConvertersAtTheirLimits) {
    for (const char* name : {"converters", "converter_defaults", "hotspot"}) {
        SCOPED_TRACE(name);
        std::string out;
        apiCfgPlusResult* result =
            testsupport::parseText(readFile(dataPath("golden/" + std::string(name) + ".json")),
                                   jsonCfgPlusParserCallback, &out);
        ASSERT_NE(result, nullptr) << out;
        expectGolden(name + std::string(".dump.txt"), out + captureStdout([&] {
                                                          printJsonCfgPlus(result);
                                                          freeJsonCfgPlus(result);
                                                      }));
    }
}

// The names of the files in a directory under tests/data, in order.
std::set<std::string> filesIn(const std::string& dir) {
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(dataPath(dir)))
        files.insert(file.path().filename().string());
    return files;
}

// Each small document of golden/<set>/ through the pipeline: what the parse prints, then each
// entry named in `shown`, wherever the result holds it, as the daemon's dump renders it.
void expectCases(const std::string& set, const std::set<std::string>& shown) {
    std::string report;
    for (const std::string& name : filesIn("golden/" + set)) {
        std::string out;
        apiCfgPlusResult* r = testsupport::parseText(
            readFile(dataPath("golden/" + set + "/" + name)), jsonCfgPlusParserCallback, &out);
        report += "== " + name + (r == nullptr ? " (no result)\n" : "\n") + out;
        auto show = [&](apiCfgPlusEntryArray* arrays, int32_t count) {
            for (int32_t a = 0; a < count; ++a) {
                for (int32_t i = 0; i < arrays[a].count; ++i) {
                    if (shown.count(arrays[a].entries[i].name) != 0)
                        report += cfgElement::printApiCfgPlusEntry(arrays[a].entries[i], 0) + "\n";
                }
            }
        };
        if (r != nullptr) {
            show(&r->global, 1);
            show(r->radios, r->radioCount);
            show(r->vnsList, r->vnsCount);
            show(r->meshpoints, r->meshpointCount);
        }
        captureStdout([&] { freeJsonCfgPlus(r); });
    }
    expectGolden(set + ".txt", report);
}

// Sets of small documents, each giving what the parse prints and the entries it names:
// - filter_rules: a rule of each form, each refusal with its message, a WLAN's lists merged by
//   precedence and joined in their order, and the external applications rules name;
// - value_kinds: a present value of another kind than the converter reads reads as 0, false,
//   "" or an empty list, never as absent;
// - hotspot_texts: texts with a zero or control byte, named so and shown escaped;
// - class_of_service: the default class of service, its nibbles and flags;
// - topologies: fields of another kind, and a present list that holds no topology.
TEST(Golden, SmallDocuments) {
    const std::pair<const char*, std::set<std::string>> sets[] = {
        {"filter_rules", {"cen_filter_rules", "cen_ext_applications"}},
        {"value_kinds",
         {"cen_ap_name", "rf_domain/sensor_server_addresses", "cen_antenna_group",
          "cen_antenna_mode", "rf_domain/sensor_policy/scan_channels",
          "wds/meshpoint_device/hysteresis_snr_min", "meshpoint_device/acs_path_min",
          "meshpoint_device/acs_tolerance_period", "meshpoint_device/acs_channel_list",
          "vlans/cen_wlan_vlan"}},
        {"hotspot_texts", {"passpoint_policy/cen_venue_name_lang"}},
        {"class_of_service", {"cen_default_cos"}},
        {"topologies", {"cen_topologies"}},
    };
    for (const auto& [set, shown] : sets) {
        SCOPED_TRACE(set);
        expectCases(set, shown);
    }
}

// Each JSON shape as the walk turns it into an element: kind, [path string], rendering; a
// repeated name replaces the first in place, within one array item only.
TEST(Golden, WalkOfEveryJsonShape) {
    json_object* root = json_tokener_parse(readFile(dataPath("golden/walk.json")).c_str());
    ASSERT_NE(root, nullptr);
    cfgElementList elements;
    jsonCfgPlus::walk(root, "", {}, {}, elements);
    json_object_put(root);
    std::string text;
    for (const cfgElement& e : elements)
        text += std::to_string(e.kind) + " [" + e.key + "] " + e.toString(0) + "\n";
    expectGolden("walk.txt", text);
}

// Every entry kind as the daemon's dump renders it, without the converters.
TEST(Golden, DumpOfEveryEntryKind) {
    apiCfgPlusResult* result = testsupport::parseText(readFile(dataPath("golden/dump_small.json")));
    ASSERT_NE(result, nullptr);
    expectGolden("dump_small.txt", captureStdout([&] {
                     printJsonCfgPlus(result);
                     freeJsonCfgPlus(result);
                 }));
}

// Every problem planted in the documents under tests/data/lint, one line each at its pointer;
// and lint's verdict on the golden documents, whose faults are there on purpose: each must be
// reported, and nothing else.
TEST(Golden, LintOfEveryPlantedProblem) {
    std::set<std::string> files;
    for (const char* dir : {"lint", "golden"}) {
        for (const auto& file : std::filesystem::directory_iterator(dataPath(dir))) {
            if (file.path().extension() == ".json")
                files.insert(std::string(dir) + "/" + file.path().filename().string());
        }
    }
    std::string report;
    for (const std::string& name : files) {
        // From the data directory, so positions name the file the same way on every machine.
        testsupport::ToolRun run = testsupport::runTool("lint " + name, "", dataPath(""));
        report += "== " + name + " (exit " + std::to_string(run.status) + ")\n" + run.out;
    }
    expectGolden("lint.txt", report);
}

// The example with a changed ACL rule, WLAN and topology, and a sensor scan list added, which
// gives each radio a second entry of the same name.
TEST(Golden, DiffOfTheChangedExample) {
    std::string doc = readFile(JCP_EXAMPLES_DIR "/ap-config.json");
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"\"low_dport\": 22, \"high_dport\": 22 }",
              "\"low_dport\": 2222, \"high_dport\": 2222 }"},
             {"\"ssid\": \"Guest\"", "\"ssid\": \"Guest2\""},
             {"\"hq-tunnel-secret\"", "\"hq-tunnel-rotated\""},
             {"\"sensor_scanmode\": {", "\"scan_channels\": [\"36\"], \"sensor_scanmode\": {"}}) {
        size_t at = doc.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        doc.replace(at, from.size(), to);
    }
    testsupport::ToolRun run =
        testsupport::runTool("diff " JCP_EXAMPLES_DIR "/ap-config.json -", doc);
    EXPECT_EQ(run.status, 1) << run.err;
    expectGolden("diff.txt", run.out);
}

// The tool as a person at a shell meets it: each command of golden/tool/commands.txt run by bash
// from tests/data, so paths read the same on every machine, with its exit status, standard
// output and standard error; lines starting with '#' head a group.
TEST(Golden, ToolTranscript) {
    std::istringstream commands(readFile(dataPath("golden/tool/commands.txt")));
    std::string transcript;
    for (std::string line; std::getline(commands, line);) {
        if (line.empty() || line[0] == '#') {
            transcript += line + "\n";
            continue;
        }
        testsupport::TempDir dir;
        testsupport::writeFile(dir.file("script"),
                               "jsoncfgplus() { " JCP_TOOL_PATH " \"$@\"; }\n" + line);
        const testsupport::ToolRun run =
            testsupport::runCommand("bash " + dir.file("script"), "", dataPath(""));
        transcript += "$ " + line + "\nexit " + std::to_string(run.status) + "\n" + run.out +
                      (run.out.empty() || run.out.back() == '\n' ? "" : "\n(no newline)\n") +
                      (run.err.empty() ? "" : "-- standard error\n" + run.err);
    }
    expectGolden("tool.txt", transcript);
}

}  // namespace
