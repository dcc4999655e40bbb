// SPDX-License-Identifier: MIT
// lint's verdicts from the library itself: mistakes planted one at a time into the example
// document, each expected at its member's pointer with what the AP does with it; and the
// library's printed lines, which stay the same whether or not anyone listens to its events.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "api/jsoncfgplus.h"
#include "base/build_events_priv.h"
#include "convert/hotspot_icons.h"
#include "lint/lint_priv.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

std::string example() {
    return testsupport::readFile(JCP_EXAMPLES_DIR "/ap-config.json");
}

// The example with the one text from replaced by to; the text must be there.
std::string planted(const std::string& from, const std::string& to) {
    std::string text = example();
    size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
}

std::string lines(const jcp::lint::Findings& findings) {
    std::string out;
    for (const jcp::lint::Problem& p : findings.problems()) {
        out += (p.severity == jcp::lint::Severity::Error ? "error: " : "warning: ") + p.pointer +
               ": " + p.message + "\n";
    }
    return out;
}

// The AP's surroundings as lint finds them on the AP: its icon files and signature files.
class LintLibrary : public ::testing::Test {
  protected:
    void SetUp() override {
        const std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);
        testsupport::writeFile(dir.file("example-logo.png"), png);
        testsupport::writeFile(dir.file("signup-eng.png"), png);
        jcp::hs2::setIconDir(dir.path());
        cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
        maps.clear();
        maps.setPaths(dir.file("a.xml"), dir.file("d.xml"), dir.file("ma.xml"), dir.file("md.xml"));
        testsupport::writeFile(
            dir.file("a.xml"),
            R"(<Cockatrice><AppGroupID name="Streaming" value="17"/></Cockatrice>)");
        testsupport::writeFile(dir.file("d.xml"), R"(<DisplayNames>
            <DisplayName name="BitTorrent" id="1204"/><DisplayName name="Corp Wiki" id="9001"/>
            </DisplayNames>)");
    }
    void TearDown() override {
        cfgPlusSignatureMaps::m_inst.clear();
        jcp::hs2::setIconDir(jcp::hs2::kDefaultIconDir);
        setJsonCfgPlusElementBudget(0);
    }

    testsupport::TempDir dir;
};

TEST_F(LintLibrary, TheExampleHasNoError) {
    jcp::lint::Findings findings = jcp::lint::lintText(example());
    EXPECT_EQ(findings.count(jcp::lint::Severity::Error), 0u) << lines(findings);
}

TEST_F(LintLibrary, EachPlantedMistakeIsAnErrorAtItsMember) {
    const struct {
        const char* what;
        std::string from, to;
        const char* pointer;
        const char* message;  // a part of it
    } cases[] = {
        {"an action misspelt", R"("allow": "deny", "smac": "00-de-ad-be-ef-00")",
         R"("allow": "dney", "smac": "00-de-ad-be-ef-00")", "/mac_acl/0/mac_rules/0/allow",
         "treated as allow"},
        {"an action misspelt after a null the build leaves out",
         R"({ "precedence": 20, "allow": "deny", "smac": "00-de-ad-00-00-00")",
         R"(null, { "precedence": 20, "allow": "dney", "smac": "00-de-ad-00-00-00")",
         "/mac_acl/0/mac_rules/2/allow", "treated as allow"},
        {"a name longer than its field", R"({ "code": "eng", "name": "Example Hotel Lobby" })",
         R"({ "code": "eng", "name": ")" + std::string(300, 'x') + R"(" })",
         "/passpoint_policy/0/venue_name_lang/0", "cut to"},
        {"a rule without an action", R"("precedence": 15, "allow": "allow", )",
         R"("precedence": 15, )", "/mac_acl/1/mac_rules/0", "no access control"},
        {"a VLAN past 12 bits", R"("vlans": [ { "vlan": 30,)", R"("vlans": [ { "vlan": 5000,)",
         "/wlan/1/vlans/0/vlan", "stored as pvid 904"},
        {"an ARP-guard address that does not parse", R"("ip": "10.20.0.2")",
         R"("ip": "10.20.0.300")", "/device/arp_guard_acl/1/ip", "stored as 0.0.0.0"},
        {"an application the signatures do not know", R"("canned_app": "Corp Wiki")",
         R"("canned_app": "Corp Wikki")", "/app_policy/0/rule_entry/2/canned_app",
         "kept with id 0"},
        {"a Passpoint mcc of two digits", R"({ "mcc": "262", "mnc": "01" })",
         R"({ "mcc": "26", "mnc": "01" })", "/passpoint_policy/0/plmnid/1",
         "is not 3 digits, dropped"},
        {"an EAP method the AP does not know", R"({ "index": 2, "method": "tls")",
         R"({ "index": 2, "method": "peap")", "/passpoint_policy/0/nai_realm/0/eap_method/2",
         "\"peap\""},
        {"a connection-capability status", R"("port": 443, "status": "open")",
         R"("port": 443, "status": "opened")", "/passpoint_policy/0/cc_variable/0",
         "neither \"open\" nor \"closed\", dropped"},
        {"an icon file that is not there", R"("file": "signup-eng.png")",
         R"("file": "missing.png")", "/passpoint_policy/0/osu_provider/0/icon/0", "icon dropped"},
        {"more filter rules than a service holds",
         R"({ "precedence": 25, "allow": "deny", "match_type": "arp" })",
         R"({ "precedence": 25, "allow": "deny", "match_type": "arp" }, )" +
             testsupport::joined(298,
                                 [](size_t i) {
                                     return R"({ "precedence": )" + std::to_string(1000 + i) +
                                            R"(, "allow": "deny", "match_type": "arp" })";
                                 }),
         "/wlan/0", "only the first 256 are kept"},
        {"a BSS outside the eight slots", R"({ "bss": 8, "meshpoint": "backhaul-mesh" })",
         R"({ "bss": 9, "meshpoint": "backhaul-mesh" })",
         "/profile/0/interface/6/meshpointbssmap/0/bss", "outside the eight slots"},
        {"a service without its SSID id", R"("cen_ssid_id": 3, )", "", "/wlan/2",
         "no integer \"cen_ssid_id\"; it is dropped"},
        {"a mesh ACS channel with a letter after its digits",
         R"("acs_channel_list_5": ["36,40,44,48"])", R"("acs_channel_list_5": ["36,4O,44"])",
         "/meshpoint/0", "\"4O\" is read as 4"},
        {"a mesh ACS channel that is no number", R"("acs_channel_list_5": ["36,40,44,48"])",
         R"("acs_channel_list_5": ["36,forty,44"])", "/meshpoint/0",
         "\"forty\" is not a decimal number; the conversion throws and the whole document is "
         "refused"},
    };
    for (const auto& c : cases) {
        std::string text = planted(c.from, c.to);
        jcp::lint::Findings findings = jcp::lint::lintText(text);
        const jcp::lint::Problem* found = nullptr;
        for (const jcp::lint::Problem& p : findings.problems()) {
            if (p.severity == jcp::lint::Severity::Error && p.pointer == c.pointer &&
                p.message.find(c.message) != std::string::npos)
                found = &p;
        }
        EXPECT_TRUE(found != nullptr) << c.what << ": expected an error at " << c.pointer
                                      << " saying " << c.message << ", got\n"
                                      << lines(findings);
        // A member the mistake itself writes is placed on the mistake's line.
        std::string member =
            "\"" + std::string(c.pointer).substr(std::string(c.pointer).rfind('/') + 1) + "\"";
        size_t at = text.find(c.to);
        if (found == nullptr || c.to.find(member) == std::string::npos || at == std::string::npos)
            continue;
        int line = 1 + static_cast<int>(std::count(text.begin(), text.begin() + at, '\n'));
        EXPECT_EQ(found->line, line) << c.what;
    }
}

TEST_F(LintLibrary, ADocumentOverTheElementBudgetIsRefusedAsAWhole) {
    setJsonCfgPlusElementBudget(50);
    jcp::lint::Findings findings = jcp::lint::lintText(example());
    ASSERT_FALSE(findings.problems().empty());
    const jcp::lint::Problem& last = findings.problems().back();
    EXPECT_EQ(last.severity, jcp::lint::Severity::Error);
    EXPECT_EQ(last.pointer, "");
    EXPECT_NE(last.message.find("element budget of 50 elements; the whole document is refused"),
              std::string::npos)
        << lines(findings);
}

// Where the AP's own files are not, what depends on them cannot be judged.
TEST_F(LintLibrary, WithoutTheApFilesIconsAndSignaturesAreNotJudged) {
    jcp::hs2::setIconDir(dir.file("absent"));
    cfgPlusSignatureMaps::m_inst.clear();
    cfgPlusSignatureMaps::m_inst.setPaths(dir.file("x"), dir.file("y"), dir.file("z"),
                                          dir.file("w"));
    jcp::lint::Findings findings = jcp::lint::lintText(example());
    EXPECT_EQ(lines(findings), "");
}

class Recorder final : public jcp::BuildEventSink {
  public:
    void onEvent(const jcp::BuildEvent& event) override { events.push_back(event); }
    std::vector<jcp::BuildEvent> events;
};

std::string printedParse(const std::string& text) {
    return testsupport::captureStdout([&] {
        freeJsonCfgPlus(parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()),
                                         jsonCfgPlusParserCallback, 0, 0, 0));
    });
}

TEST_F(LintLibrary, TheLibraryPrintsTheSameWithASinkInstalled) {
    std::string text = planted(R"("allow": "deny", "smac": "00-de-ad-be-ef-00")",
                               R"("allow": "dney", "smac": "00-de-ad-be-ef-00")");
    std::string without = printedParse(text);
    Recorder recorder;
    jcp::setBuildEventSink(&recorder);
    std::string with = printedParse(text);
    jcp::setBuildEventSink(nullptr);
    EXPECT_EQ(with, without);
    ASSERT_FALSE(recorder.events.empty());
    const jcp::BuildEvent& first = recorder.events.front();
    EXPECT_EQ(first.kind, jcp::EventKind::reinterpreted);
    EXPECT_EQ(first.keyPath, "mac_in_acl/mac_rules[0]/allow");
    EXPECT_EQ(first.place.where, jcp::EventPlace::Where::wlan);
    EXPECT_EQ(first.place.ssidId, 1);
}

}  // namespace
