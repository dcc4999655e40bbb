// SPDX-License-Identifier: MIT
// The document schema: what `jsoncfgplus schema` prints is checked by a real validator
// (python3-jsonschema) against the example and the golden documents, and the schema and lint
// agree on planted mistakes; lint's unknown-member warnings name the near miss.
#include <json-c/json.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

using testsupport::dataPath;
using testsupport::runTool;
using testsupport::TempDir;

const std::string kExample = std::string(JCP_EXAMPLES_DIR) + "/ap-config.json";

// What the tool prints as its schema, in a file that lasts the whole run.
const std::string& schemaFile() {
    static TempDir dir;
    static const std::string path = [] {
        testsupport::ToolRun run = runTool("schema");
        EXPECT_EQ(run.status, 0) << run.err;
        testsupport::writeFile(dir.file("schema.json"), run.out);
        return dir.file("schema.json");
    }();
    return path;
}

struct Validation {
    int status = -1;
    std::vector<std::string> pointers;  // one per failure
    std::string output;
};

Validation validate(const std::string& document) {
    testsupport::ToolRun run =
        testsupport::runCommand("python3 '" + dataPath("../schema/validate.py") + "' '" +
                                schemaFile() + "' '" + document + "'");
    Validation out{run.status, {}, run.out + run.err};
    // Lines are "FILE: POINTER: message".
    for (size_t start = 0, end; start < run.out.size(); start = end + 1) {
        end = std::min(run.out.find('\n', start), run.out.size());
        size_t first = run.out.find(": ", start);
        size_t second = first >= end ? end : run.out.find(": ", first + 2);
        if (second < end) out.pointers.push_back(run.out.substr(first + 2, second - first - 2));
    }
    return out;
}

struct LintProblem {
    std::string severity, pointer, message;
};

std::vector<LintProblem> lintProblems(const std::string& document) {
    json_object* report = json_tokener_parse(runTool("lint --json " + document).out.c_str());
    json_object* problems = nullptr;
    std::vector<LintProblem> out;
    const bool listed = json_object_object_get_ex(report, "problems", &problems);
    for (size_t i = 0; listed && i < json_object_array_length(problems); ++i) {
        auto text = [p = json_object_array_get_idx(problems, i)](const char* key) {
            json_object* value = nullptr;
            json_object_object_get_ex(p, key, &value);
            return std::string(value == nullptr ? "" : json_object_get_string(value));
        };
        out.push_back({text("severity"), text("pointer"), text("message")});
    }
    json_object_put(report);
    return out;
}

// The value at an RFC 6901 pointer of simple keys and indexes; null when absent.
json_object* at(json_object* root, const std::string& pointer) {
    json_object* node = root;
    for (size_t start = 1, end; node != nullptr && start <= pointer.size(); start = end + 1) {
        end = std::min(pointer.find('/', start), pointer.size());
        std::string step = pointer.substr(start, end - start);
        if (json_object_is_type(node, json_type_array)) {
            node = json_object_array_get_idx(node, std::stoul(step));
        } else if (!json_object_object_get_ex(node, step.c_str(), &node)) {
            node = nullptr;
        }
    }
    return node;
}

std::string parentOf(const std::string& pointer) {
    return pointer.substr(0, pointer.rfind('/'));
}

// The example with the value at pointer replaced by json or, given newName, its member renamed;
// written to the directory.
std::string edited(const TempDir& dir, const std::string& pointer, const std::string& json,
                   const char* newName = nullptr) {
    json_object* root = json_object_from_file(kExample.c_str());
    json_object* parent = at(root, parentOf(pointer));
    const std::string last = pointer.substr(pointer.rfind('/') + 1);
    json_object* value =
        newName != nullptr ? json_object_get(at(root, pointer)) : json_tokener_parse(json.c_str());
    EXPECT_NE(parent, nullptr) << pointer;
    EXPECT_NE(value, nullptr) << pointer << " = " << json;
    if (json_object_is_type(parent, json_type_array)) {
        json_object_array_put_idx(parent, std::stoul(last), value);
    } else {
        EXPECT_TRUE(json_object_object_get_ex(parent, last.c_str(), nullptr))
            << pointer << " is not in the example";
        if (newName != nullptr) json_object_object_del(parent, last.c_str());
        json_object_object_add(parent, newName != nullptr ? newName : last.c_str(), value);
    }
    std::string path = dir.file("edited.json");
    json_object_to_file_ext(path.c_str(), root, JSON_C_TO_STRING_PRETTY);
    json_object_put(root);
    return path;
}

// The pointer itself or a value inside it.
bool within(const std::string& pointer, const std::string& outer) {
    return pointer == outer || pointer.compare(0, outer.size() + 1, outer + "/") == 0;
}

// An error at the pointer, or at what encloses it (the filter converter judges a whole rule).
bool hasError(const std::vector<LintProblem>& problems, const std::string& pointer) {
    for (const LintProblem& p : problems) {
        if (p.severity == "error" && !p.pointer.empty() && within(pointer, p.pointer)) return true;
    }
    return false;
}

TEST(SchemaTest, TheExampleIsValid) {
    Validation v = validate(kExample);
    EXPECT_EQ(v.status, 0) << v.output;
    EXPECT_EQ(v.output, "");
}

// The golden documents carry planted faults of their own, for the converters' tests: the
// validator may fail them only where lint reports a problem too, at the value or around it.
TEST(SchemaTest, GoldenDocumentsFailOnlyWhereLintReports) {
    for (const auto& file : std::filesystem::directory_iterator(dataPath("golden"))) {
        if (file.path().extension() != ".json") continue;
        Validation v = validate(file.path().string());
        ASSERT_NE(v.status, 2) << v.output;  // the schema itself is sound
        ASSERT_NE(v.status, -1) << v.output;
        std::vector<LintProblem> problems = lintProblems(file.path().string());
        for (const std::string& failed : v.pointers) {
            bool reported = false;
            for (const LintProblem& p : problems) reported = reported || within(failed, p.pointer);
            EXPECT_TRUE(reported) << file.path() << ": the schema rejects " << failed
                                  << " but lint is silent";
        }
    }
}

// Each planted mistake fails the validator at its pointer and is a lint error there; what the
// AP keeps as written is valid and at most a lint warning. Lint's messages at the pointer say
// `message` where one is given; a value the AP keeps without one draws none.
TEST(SchemaTest, PlantedValuesJudgedAlikeByTheSchemaAndLint) {
    const struct {
        const char* pointer;
        const char* value;
        bool valid;
        const char* message;
    } rows[] = {
        {"/wlan/0/vlans/0/vlan", "5000", false, nullptr},
        {"/wlan/0/vlans/0/cen_tagged", "\"true\"", false, nullptr},
        {"/wlan/0/ssid", "\"an SSID that is longer than 32 octets\"", false, nullptr},
        {"/device/arp_guard_acl/0/ip", "\"10.20.0.300\"", false, nullptr},
        {"/device/hostname", "7", false, nullptr},
        {"/profile/0/interface/6/fallback_channels/0", "\"4O\"", false, nullptr},
        {"/profile/0/interface/6/dtim/0", "\"1\"", false, nullptr},
        {"/profile/0/interface/3/switchport/native_vlan", "true", false, nullptr},
        {"/profile/0/interface/2/remote_endpoint/0/addr", "\"10.0.0.256\"", false, nullptr},
        {"/profile/0/meshpoint_device/0/acs_channel_list_5/0", "\"36,forty,44\"", false, nullptr},
        {"/cen_ext_app_cfg_tbl/0/cen_ext_app_id", "\"901\"", false, nullptr},
        // A value with no meaning names the value it probably meant, beside the library's verdict.
        {"/mac_acl/0/mac_rules/0/allow", "\"dney\"", false,
         "treated as allow (did you mean \"deny\"?)"},
        {"/mac_acl/0/mac_rules/0/smac", "\"00:11:22:aa:bb:cc\"", false, nullptr},
        {"/ip_acl/0/ip_rules/1/dip", "\"10.20.0.0/x\"", false, nullptr},
        {"/ip_acl/0/ip_rules/1/protocol", "300", false, nullptr},
        {"/rf_domain/0/sensor_server/1/port", "\"8080\"", false, nullptr},
        {"/passpoint_policy/0/plmnid/0/mcc", "\"31\"", false, nullptr},
        {"/passpoint_policy/0/plmnid/0/mnc", "\"1\"", false, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/method", "\"peap\"", false, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_type", "\"inner\"", false, nullptr},
        {"/passpoint_policy/0/cc_variable/0/status", "\"opened\"", false, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_val", "\"cert\"", false, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/index", "256", false, nullptr},
        {"/passpoint_policy/0/cc_variable/0/port", "\"https\"", false, nullptr},
        {"/passpoint_policy/0/cc_variable/0/protocol", "\"sctp\"", false, nullptr},
        {"/passpoint_policy/0/venue_name_lang", "\"en\"", false, nullptr},
        {"/passpoint_policy/0/plmnid/0/mcc", "1000", false, nullptr},
        {"/passpoint_policy/0/osu_provider/0/icon/0/width", "\"32\"", false, nullptr},
        {"/rf_domain/0/country_code", "\"deu\"", true, "is not an ISO 3166 country code"},
        {"/rf_domain/0/sensor_server/1/port", "70000", true, "outside 1 to 65535, the standard's"},
        {"/passpoint_policy/0/plmnid/0/mnc", "\"410\"", true, nullptr},
        // The Passpoint converters take codes as numbers and a single object for a list.
        {"/passpoint_policy/0/plmnid/0/mcc", "310", true, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/method", "21", true, nullptr},
        {"/passpoint_policy/0/nai_realm/0/eap_method/0/auth_val", "4", true, nullptr},
        {"/passpoint_policy/0/cc_variable/0/port", "\"443\"", true, nullptr},
        {"/passpoint_policy/0/cc_variable/0/protocol", "6", true, nullptr},
        {"/passpoint_policy/0/plmnid", "{\"mcc\": \"310\", \"mnc\": \"410\"}", true, nullptr},
        {"/profile/0/interface/6/fallback_channels/0", "\" 6\"", true, nullptr},
        {"/profile/0/interface/5/ocs_channel_list_bg/0", "\"36\"", true,
         "channel 36 is outside 1 to 14, the channels of its band"},
        {"/profile/0/meshpoint_device/0/acs_channel_list_5/0", "\"36,40,6\"", true,
         "channel 6 is outside 32 to 177"},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pointer) + " = " + row.value);
        std::string document = edited(dir, row.pointer, row.value);
        Validation v = validate(document);
        EXPECT_EQ(v.status, row.valid ? 0 : 1) << v.output;
        if (!row.valid) {
            EXPECT_EQ(v.pointers, std::vector<std::string>{row.pointer}) << v.output;
        }
        std::vector<LintProblem> problems = lintProblems(document);
        EXPECT_EQ(hasError(problems, row.pointer), !row.valid);
        std::string messages;
        for (const LintProblem& p : problems) {
            if (p.pointer == row.pointer) messages += p.message + "\n";
        }
        if (row.message != nullptr) {
            EXPECT_NE(messages.find(row.message), std::string::npos) << messages;
        } else if (row.valid) {
            EXPECT_EQ(messages, "");
        }
    }
}

// A value of any length is judged, not a crash: the format check must not recurse per
// character through a megabyte of text.
TEST(SchemaTest, HugeValuesAreReportedNotFatal) {
    TempDir dir;
    std::string list = "36";
    while (list.size() < 1000000) list += ",40";
    const std::string pointer = "/profile/0/meshpoint_device/0/acs_channel_list_5/0";
    EXPECT_TRUE(hasError(lintProblems(edited(dir, pointer, "\"" + list + "\"")), pointer));
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
        std::string document = edited(dir, row.pointer, "", row.renamed);
        std::vector<std::string> messages;
        for (const LintProblem& p : lintProblems(document)) {
            if (p.pointer == parentOf(row.pointer) + "/" + row.renamed)
                messages.push_back(p.severity + ": " + p.message);
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

}  // namespace
