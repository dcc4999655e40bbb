// Whole-document behaviour as golden text under tests/data/golden: the dump of the example
// document through every converter, the element lists a build leaves (global order, radio
// merge, WLAN slots), and the rendering of every entry kind.
// Regenerate after an intended change with: JCP_UPDATE_GOLDEN=1 ctest --test-dir build -R golden
// and read the diff before committing it.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "api/jsoncfgplus.h"
#include "document/json_cfg_plus.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

using testsupport::captureStdout;
using testsupport::dataPath;
using testsupport::readFile;

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
    std::string diff;
    if (FILE* pipe = popen(("diff -u " + path + " " + dir.file("actual")).c_str(), "r")) {
        char buffer[4096];
        size_t got = 0;
        while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) diff.append(buffer, got);
        pclose(pipe);
    }
    ADD_FAILURE() << name << " differs from its golden file (JCP_UPDATE_GOLDEN=1 rewrites it):\n"
                  << diff;
}

// The icon paths in the example are relative to the project directory.
class InProjectDirectory : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_NE(getcwd(previous_, sizeof previous_), nullptr);
        ASSERT_EQ(chdir(JCP_EXAMPLES_DIR "/.."), 0);
    }
    void TearDown() override {
        EXPECT_EQ(chdir(previous_), 0);
        cfgPlusSignatureMaps::m_inst.clear();
    }

  private:
    char previous_[4096] = {};
};

TEST_F(InProjectDirectory, ExampleDocumentThroughEveryConverter) {
    const std::string dir = JCP_EXAMPLES_DIR "/signatures";
    cfgPlusSignatureMaps::m_inst.setPaths(dir + "/appid.xml", dir + "/displaynames.xml",
                                          dir + "/mergedAppid.xml",
                                          dir + "/mergedDisplaynames.xml");
    const std::string text = readFile(JCP_EXAMPLES_DIR "/ap-config.json");
    std::string built;
    apiCfgPlusResult* result = testsupport::parseText(text, jsonCfgPlusParserCallback, &built);
    ASSERT_NE(result, nullptr) << built;
    expectGolden("ap-config.dump.txt", captureStdout([&] {
                     printJsonCfgPlus(result);
                     freeJsonCfgPlus(result);
                 }));
}

// Before any converter: the global order, radios merged by id with the device's values
// winning, WLANs and meshpoints in their slots, ports and IoT interfaces as pseudo-radios.
TEST(Golden, ElementListsOfABuild) {
    const std::string text = readFile(dataPath("golden/build.json"));
    jsonCfgPlus doc;
    std::string out = captureStdout([&] {
        ASSERT_EQ(doc.buildConfig(text.data(), static_cast<unsigned int>(text.size())), 0);
        doc.printConfig();
    });
    expectGolden("build.txt", out);
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

}  // namespace
