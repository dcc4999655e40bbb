// SPDX-License-Identifier: MIT
// The document schema: what `jsoncfgplus schema` prints is checked by a real validator
// (python3-jsonschema) against the example and the golden documents, and the schema and lint
// agree on planted mistakes; lint's unknown-member warnings name the near miss.
#include <json-c/json.h>

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

using testsupport::dataPath;
using testsupport::runTool;
using testsupport::TempDir;

const std::string kExample = std::string(JCP_EXAMPLES_DIR) + "/ap-config.json";

// The documents among the golden files (the others are outputs).
const char* const kGoldenDocuments[] = {
    "build.json",   "converter_defaults.json", "converters.json", "dump_small.json",
    "hotspot.json", "interfaces.json",         "walk.json"};

struct Validation {
    int status = -1;
    std::vector<std::string> pointers;  // one per failure
    std::string output;
};

std::string writeSchema(const TempDir& dir) {
    testsupport::ToolRun run = runTool("schema");
    EXPECT_EQ(run.status, 0) << run.err;
    std::string path = dir.file("schema.json");
    testsupport::writeFile(path, run.out);
    return path;
}

Validation validate(const std::string& schema, const std::string& document) {
    std::string script = dataPath("../schema/validate.py");
    std::string command = "python3 '" + script + "' '" + schema + "' '" + document + "' 2>&1";
    Validation out;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return out;
    char buffer[4096];
    while (fgets(buffer, sizeof buffer, pipe) != nullptr) out.output += buffer;
    int status = pclose(pipe);
    out.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    // Lines are "FILE: POINTER: message".
    size_t start = 0;
    while (start < out.output.size()) {
        size_t end = out.output.find('\n', start);
        if (end == std::string::npos) end = out.output.size();
        std::string line = out.output.substr(start, end - start);
        size_t first = line.find(": ");
        size_t second = first == std::string::npos ? first : line.find(": ", first + 2);
        if (second != std::string::npos)
            out.pointers.push_back(line.substr(first + 2, second - first - 2));
        start = end + 1;
    }
    return out;
}

struct LintProblem {
    std::string severity;
    std::string pointer;
    std::string message;
};

std::vector<LintProblem> lintProblems(const std::string& document) {
    testsupport::ToolRun run = runTool("lint --json " + document);
    std::vector<LintProblem> out;
    json_object* report = json_tokener_parse(run.out.c_str());
    json_object* problems = nullptr;
    if (json_object_object_get_ex(report, "problems", &problems)) {
        for (size_t i = 0; i < json_object_array_length(problems); ++i) {
            json_object* p = json_object_array_get_idx(problems, i);
            auto text = [p](const char* key) {
                json_object* value = nullptr;
                json_object_object_get_ex(p, key, &value);
                return std::string(value == nullptr ? "" : json_object_get_string(value));
            };
            out.push_back({text("severity"), text("pointer"), text("message")});
        }
    }
    json_object_put(report);
    return out;
}

// The value at an RFC 6901 pointer of simple keys and indexes; null when absent.
json_object* at(json_object* root, const std::string& pointer) {
    json_object* node = root;
    size_t start = 1;
    while (node != nullptr && start <= pointer.size()) {
        size_t end = pointer.find('/', start);
        if (end == std::string::npos) end = pointer.size();
        std::string step = pointer.substr(start, end - start);
        if (json_object_is_type(node, json_type_array)) {
            node = json_object_array_get_idx(node, std::stoul(step));
        } else if (!json_object_object_get_ex(node, step.c_str(), &node)) {
            node = nullptr;
        }
        start = end + 1;
    }
    return node;
}

std::string parentOf(const std::string& pointer) {
    return pointer.substr(0, pointer.rfind('/'));
}
std::string lastStep(const std::string& pointer) {
    return pointer.substr(pointer.rfind('/') + 1);
}

// The example with the value at pointer replaced by json, written to the directory.
std::string plant(const TempDir& dir, const std::string& pointer, const std::string& json) {
    json_object* root = json_object_from_file(kExample.c_str());
    json_object* parent = at(root, parentOf(pointer));
    json_object* value = json_tokener_parse(json.c_str());
    EXPECT_NE(parent, nullptr) << pointer;
    EXPECT_NE(value, nullptr) << json;
    if (json_object_is_type(parent, json_type_array)) {
        json_object_array_put_idx(parent, std::stoul(lastStep(pointer)), value);
    } else {
        EXPECT_TRUE(json_object_object_get_ex(parent, lastStep(pointer).c_str(), nullptr))
            << pointer << " is not in the example";
        json_object_object_add(parent, lastStep(pointer).c_str(), value);
    }
    std::string path = dir.file("planted.json");
    json_object_to_file_ext(path.c_str(), root, JSON_C_TO_STRING_PRETTY);
    json_object_put(root);
    return path;
}

// The example with the member at pointer renamed to newName.
std::string rename(const TempDir& dir, const std::string& pointer, const std::string& newName) {
    json_object* root = json_object_from_file(kExample.c_str());
    json_object* parent = at(root, parentOf(pointer));
    json_object* value = json_object_get(at(root, pointer));
    EXPECT_NE(value, nullptr) << pointer << " is not in the example";
    json_object_object_del(parent, lastStep(pointer).c_str());
    json_object_object_add(parent, newName.c_str(), value);
    std::string path = dir.file("renamed.json");
    json_object_to_file_ext(path.c_str(), root, JSON_C_TO_STRING_PRETTY);
    json_object_put(root);
    return path;
}

// An error at the pointer, or at what encloses it (the filter converter judges a whole rule).
bool hasError(const std::vector<LintProblem>& problems, const std::string& pointer) {
    for (const LintProblem& p : problems) {
        bool encloses =
            pointer == p.pointer ||
            (!p.pointer.empty() && pointer.compare(0, p.pointer.size() + 1, p.pointer + "/") == 0);
        if (p.severity == "error" && encloses) return true;
    }
    return false;
}

TEST(SchemaTest, TheExampleIsValid) {
    TempDir dir;
    Validation v = validate(writeSchema(dir), kExample);
    EXPECT_EQ(v.status, 0) << v.output;
    EXPECT_EQ(v.output, "");
}

// The golden documents carry planted faults of their own, for the converters' tests: the
// validator may fail them only where lint reports a problem too, at the value or around it.
TEST(SchemaTest, GoldenDocumentsFailOnlyWhereLintReports) {
    TempDir dir;
    std::string schema = writeSchema(dir);
    for (const char* name : kGoldenDocuments) {
        std::string document = dataPath(std::string("golden/") + name);
        Validation v = validate(schema, document);
        ASSERT_NE(v.status, 2) << v.output;  // the schema itself is sound
        ASSERT_NE(v.status, -1) << v.output;
        std::vector<LintProblem> problems = lintProblems(document);
        for (const std::string& failed : v.pointers) {
            bool reported = false;
            for (const LintProblem& p : problems) {
                reported = reported || failed == p.pointer ||
                           failed.compare(0, p.pointer.size() + 1, p.pointer + "/") == 0;
            }
            EXPECT_TRUE(reported) << name << ": the schema rejects " << failed
                                  << " but lint is silent";
        }
    }
}

// Each planted mistake fails the validator at its pointer and is a lint error there.
TEST(SchemaTest, PlantedMistakesFailValidationAndLint) {
    struct Row {
        const char* pointer;
        const char* value;
    };
    const Row rows[] = {
        {"/wlan/0/vlans/0/vlan", "5000"},
        {"/wlan/0/vlans/0/cen_tagged", "\"true\""},
        {"/wlan/0/ssid", "\"an SSID that is longer than 32 octets\""},
        {"/device/arp_guard_acl/0/ip", "\"10.20.0.300\""},
        {"/device/hostname", "7"},
        {"/profile/0/interface/6/fallback_channels/0", "\"4O\""},
        {"/profile/0/interface/6/dtim/0", "\"1\""},
        {"/profile/0/interface/3/switchport/native_vlan", "true"},
        {"/profile/0/interface/2/remote_endpoint/0/addr", "\"10.0.0.256\""},
        {"/profile/0/meshpoint_device/0/acs_channel_list_5/0", "\"36,forty,44\""},
        {"/cen_ext_app_cfg_tbl/0/cen_ext_app_id", "\"901\""},
        {"/mac_acl/0/mac_rules/0/allow", "\"dney\""},
        {"/mac_acl/0/mac_rules/0/smac", "\"00:11:22:aa:bb:cc\""},
        {"/ip_acl/0/ip_rules/1/dip", "\"10.20.0.0/x\""},
        {"/ip_acl/0/ip_rules/1/protocol", "300"},
        {"/rf_domain/0/sensor_server/1/port", "\"8080\""},
        {"/passpoint_policy/0/plmnid/0/mcc", "\"31\""},
        {"/passpoint_policy/0/plmnid/0/mnc", "\"1\""},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/method", "\"peap\""},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_type", "\"inner\""},
        {"/passpoint_policy/0/cc_variable/0/status", "\"opened\""},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_val", "\"cert\""},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/index", "256"},
        {"/passpoint_policy/0/cc_variable/0/port", "\"https\""},
        {"/passpoint_policy/0/cc_variable/0/protocol", "\"sctp\""},
        {"/passpoint_policy/0/venue_name_lang", "\"en\""},
        {"/passpoint_policy/0/plmnid/0/mcc", "1000"},
        {"/passpoint_policy/0/osu_provider/0/icon/0/width", "\"32\""},
    };
    TempDir dir;
    std::string schema = writeSchema(dir);
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.pointer) + " = " + row.value);
        std::string document = plant(dir, row.pointer, row.value);
        Validation v = validate(schema, document);
        EXPECT_EQ(v.status, 1) << v.output;
        EXPECT_EQ(v.pointers, std::vector<std::string>{row.pointer}) << v.output;
        EXPECT_TRUE(hasError(lintProblems(document), row.pointer));
    }
}

// A value of any length is judged, not a crash: the format check must not recurse per
// character through a megabyte of text.
TEST(SchemaTest, HugeValuesAreReportedNotFatal) {
    TempDir dir;
    std::string list = "36";
    while (list.size() < 1000000) list += ",40";
    std::string document =
        plant(dir, "/profile/0/meshpoint_device/0/acs_channel_list_5/0", "\"" + list + "\"");
    EXPECT_TRUE(
        hasError(lintProblems(document), "/profile/0/meshpoint_device/0/acs_channel_list_5/0"));
}

// What the AP keeps as written is valid and at most a lint warning.
TEST(SchemaTest, ValuesTheApKeepsAreValid) {
    const struct {
        const char* pointer;
        const char* value;
        const char* warning;  // in lint's warning at the pointer; null for none
    } rows[] = {
        {"/rf_domain/0/country_code", "\"deu\"", "is not an ISO 3166 country code"},
        {"/rf_domain/0/sensor_server/1/port", "70000", "outside 1 to 65535, the standard's"},
        {"/passpoint_policy/0/plmnid/0/mnc", "\"410\"", nullptr},
        // The Passpoint converters take codes as numbers and a single object for a list.
        {"/passpoint_policy/0/plmnid/0/mcc", "310", nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/method", "21", nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_val", "4", nullptr},
        {"/passpoint_policy/0/cc_variable/0/port", "\"443\"", nullptr},
        {"/passpoint_policy/0/cc_variable/0/protocol", "6", nullptr},
        {"/passpoint_policy/0/plmnid", "{\"mcc\": \"310\", \"mnc\": \"410\"}", nullptr},
        {"/profile/0/interface/6/fallback_channels/0", "\" 6\"", nullptr},
        {"/profile/0/interface/5/ocs_channel_list_bg/0", "\"36\"",
         "channel 36 is outside 1 to 14, the channels of its band"},
        {"/profile/0/meshpoint_device/0/acs_channel_list_5/0", "\"36,40,6\"",
         "channel 6 is outside 32 to 177"},
    };
    TempDir dir;
    std::string schema = writeSchema(dir);
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pointer) + " = " + row.value);
        std::string document = plant(dir, row.pointer, row.value);
        Validation v = validate(schema, document);
        EXPECT_EQ(v.status, 0) << v.output;
        std::vector<LintProblem> problems = lintProblems(document);
        EXPECT_FALSE(hasError(problems, row.pointer));
        std::string warnings;
        for (const LintProblem& p : problems) {
            if (p.pointer == row.pointer) warnings += p.message + "\n";
        }
        if (row.warning == nullptr) {
            EXPECT_EQ(warnings, "");
        } else {
            EXPECT_NE(warnings.find(row.warning), std::string::npos) << warnings;
        }
    }
}

// A misspelt member loses what it held: lint names the member it probably meant. Where the
// table lists every member, any other is reported; elsewhere only near misses are.
TEST(SchemaTest, UnknownMembersNameTheNearMiss) {
    const struct {
        const char* pointer;
        const char* renamed;
        const char* expected;  // in the warning's message; null for no warning at all
    } rows[] = {
        {"/profile/0/interface/5/wlanbssmap", "wlanbssmaps", "did you mean \"wlanbssmap\"?"},
        {"/wlan/0/mac_in_acl", "mac_inacl", "did you mean \"mac_in_acl\"?"},
        {"/device/rf_domain_name", "rf_domain_nam", "did you mean \"rf_domain_name\"?"},
        {"/passpoint_policy/0/plmnid/0/mnc", "mnx", "did you mean \"mnc\"?"},
        {"/mac_acl/0/mac_rules/1/smac_mask", "source_mask", "unknown member; the AP ignores it"},
        {"/wlan/0/enable", "enabled", nullptr},
        {"/profile/0/led_mode", "led_colour", nullptr},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pointer) + " -> " + row.renamed);
        std::string document = rename(dir, row.pointer, row.renamed);
        std::string renamedAt = parentOf(row.pointer) + "/" + row.renamed;
        std::vector<std::string> messages;
        for (const LintProblem& p : lintProblems(document)) {
            if (p.pointer == renamedAt) messages.push_back(p.severity + ": " + p.message);
        }
        if (row.expected == nullptr) {
            EXPECT_TRUE(messages.empty()) << messages.front();
        } else {
            ASSERT_EQ(messages.size(), 1u);
            EXPECT_EQ(messages[0].rfind("warning: ", 0), 0u) << messages[0];
            EXPECT_NE(messages[0].find(row.expected), std::string::npos) << messages[0];
        }
    }
}

// A value with no meaning names the value it probably meant.
TEST(SchemaTest, UnknownValuesNameTheNearMiss) {
    TempDir dir;
    std::string document = plant(dir, "/mac_acl/0/mac_rules/0/allow", "\"dney\"");
    bool found = false;
    for (const LintProblem& p : lintProblems(document)) {
        if (p.pointer != "/mac_acl/0/mac_rules/0/allow") continue;
        found = true;
        // The library's own verdict, with the schema's suggestion.
        EXPECT_NE(p.message.find("treated as allow (did you mean \"deny\"?)"), std::string::npos)
            << p.message;
    }
    EXPECT_TRUE(found);
}

}  // namespace
