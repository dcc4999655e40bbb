// SPDX-License-Identifier: MIT
// The debug settings file, the apply-configuration payload and their exported entries.
#include <tinyxml2.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>

#include "api/debug_cfg.h"
#include "test_support.h"

using testsupport::captureStdout;
using testsupport::writeFile;

namespace {

std::string settings(const std::string& debug, const std::string& cfg) {
    return "<config><debug>" + debug + "</debug><cfg>" + cfg + "</cfg></config>";
}

class DebugCfgTest : public ::testing::Test {
  protected:
    // Loads content (or, when null, a file that does not exist); returns the output.
    std::string load(const char* content) {
        std::string path = m_dir.file("cap.conf.xml");
        std::remove(path.c_str());
        if (content != nullptr) writeFile(path, content);
        m_cfg.setPath(path);
        std::exception_ptr thrown;
        std::string out = captureStdout([&] {
            try {
                m_cfg.loadConfigurations();
            } catch (...) {
                thrown = std::current_exception();  // rethrown once stdout is restored
            }
        });
        if (thrown) std::rethrow_exception(thrown);
        return out;
    }
    std::string loading() const {
        return "Loading XML Config file: " + m_dir.file("cap.conf.xml") + "\n";
    }
    const jsonCfgPlusDebug& sw() { return *m_cfg.switches(); }

    testsupport::TempDir m_dir;
    jsonCfgPlusDebugCfg m_cfg;
};

TEST_F(DebugCfgTest, ReadsSwitchesAndKeepsWhatIsAbsent) {
    EXPECT_EQ(sw().cap + sw().tproxy + sw().cfcgi + sw().saveCfg, 0);
    EXPECT_EQ(load(settings("<cap>3</cap><tproxy> 7</tproxy><cfcgi>300</cfcgi>",
                            "<saveCfg>true</saveCfg><applyCfg>/a</applyCfg>")
                       .c_str()),
              loading());
    EXPECT_EQ(sw().cap, 3);
    EXPECT_EQ(sw().tproxy, 7);
    EXPECT_EQ(sw().cfcgi, 300 % 256);
    EXPECT_EQ(sw().saveCfg, 1);
    EXPECT_EQ(m_cfg.applyCfgPath(), "/a");

    load(settings("<tproxy>1</tproxy>", "<saveCfg>TRUE</saveCfg>").c_str());
    EXPECT_EQ(sw().cap, 3);
    EXPECT_EQ(sw().tproxy, 1);
    EXPECT_EQ(sw().saveCfg, 0);
    EXPECT_EQ(m_cfg.applyCfgPath(), "/a");
}

TEST_F(DebugCfgTest, UnreadableFileChangesNothing) {
    load(settings("<cap>9</cap>", "<saveCfg>true</saveCfg>").c_str());
    const std::pair<const char*, std::string> cases[] = {
        {nullptr, "xml load file error, rc=" + std::to_string(tinyxml2::XML_ERROR_FILE_NOT_FOUND)},
        {"", "xml load file error, rc=" + std::to_string(tinyxml2::XML_ERROR_EMPTY_DOCUMENT)},
        {"<config><debug><cap>1</cap></config>",
         "xml load file error, rc=" + std::to_string(tinyxml2::XML_ERROR_MISMATCHED_ELEMENT)},
        {"<settings><debug><cap>1</cap></debug></settings>", "xml parse error."},
    };
    for (const auto& [content, message] : cases) {
        SCOPED_TRACE(content != nullptr ? content : "(no file)");
        EXPECT_EQ(load(content), loading() + message + "\n");
        EXPECT_EQ(sw().cap, 9);
        EXPECT_EQ(sw().saveCfg, 1);
    }
}

TEST_F(DebugCfgTest, NonNumericSwitchThrowsAfterTheOnesBeforeIt) {
    EXPECT_THROW(load(settings("<cap>4</cap><tproxy>on</tproxy><cfcgi>5</cfcgi>", "").c_str()),
                 std::invalid_argument);
    EXPECT_EQ(sw().cap, 4);
    EXPECT_EQ(sw().cfcgi, 0);
    EXPECT_THROW(load(settings("<cap>99999999999</cap>", "").c_str()), std::out_of_range);
}

// The exported entries work on the process-wide instance, pointed at a temporary file.
TEST(DebugCfgEntries, ReloadSetAndPrint) {
    testsupport::TempDir dir;
    std::string apply = dir.file("apply.json");
    writeFile(apply, "{\"device\":{}}");
    writeFile(dir.file("cap.xml"), settings("<cap>2</cap>", "<applyCfg>/missing</applyCfg>"));
    jsonCfgPlusDebugCfg::m_inst.setPath(dir.file("cap.xml"));

    jsonCfgPlusDebug* first = nullptr;
    captureStdout([&] { first = getJsonCfgPlusDebugCfg(); });
    EXPECT_EQ(first->cap, 2);
    EXPECT_EQ(getJsonCfgPlusDebugApplyCfg(), nullptr);
    setJsonCfgPlusDebugApplyCfg(apply.c_str());
    EXPECT_STREQ(getJsonCfgPlusDebugApplyCfg(), "{\"device\":{}}");
    writeFile(apply, "{}");  // read again on every call
    EXPECT_STREQ(getJsonCfgPlusDebugApplyCfg(), "{}");
    EXPECT_EQ(captureStdout(printJsonCfgPlusDebugCfg),
              "debug settings file: " + dir.file("cap.xml") +
                  "\n  cap=2\n  tproxy=0\n  cfcgi=0\n  saveCfg=false\n  applyCfg=" + apply + "\n");
    setJsonCfgPlusDebugApplyCfg(nullptr);
    EXPECT_EQ(getJsonCfgPlusDebugApplyCfg(), nullptr);
    captureStdout([&] { EXPECT_EQ(getJsonCfgPlusDebugCfg(), first); });
    jsonCfgPlusDebugCfg::m_inst.setPath("/home/config/cap.conf.xml");
}

}  // namespace
