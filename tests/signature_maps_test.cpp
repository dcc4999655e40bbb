// SPDX-License-Identifier: MIT
// Signature maps: loading the XML tables, choosing factory or live-update files, lookups.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utime.h>

#include <stdexcept>

#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

std::string groups(const std::string& items, const char* root = "Cockatrice") {
    return std::string("<") + root + ">" + items + "</" + root + ">";
}
std::string displays(const std::string& items) {
    return "<DisplayNames>" + items + "</DisplayNames>";
}

cfgPlusExtendedSig signature(const std::string& name, const std::string& match, int dispId) {
    cfgPlusExtendedSig s;
    s.name = name;
    s.matchStr = match;
    s.dispId = dispId;
    s.groupId = dispId + 1;
    return s;
}

class SignatureMaps : public ::testing::Test {
  protected:
    void SetUp() override {
        maps.clear();
        maps.setPaths(dir.file("appid.xml"), dir.file("displaynames.xml"),
                      dir.file("mergedAppid.xml"), dir.file("mergedDisplaynames.xml"));
        testsupport::writeFile(dir.file("appid.xml"),
                               groups(R"(<AppGroupID name="Streaming" value="17"/>)"));
        testsupport::writeFile(dir.file("displaynames.xml"),
                               displays(R"(<DisplayName name="YouTube" id="2210"/>)"));
    }
    void TearDown() override { maps.clear(); }
    std::string quietly(const std::function<void()>& fn) { return testsupport::captureStdout(fn); }
    void writeLive(int groupId) {
        testsupport::writeFile(
            dir.file("mergedAppid.xml"),
            groups("<AppGroupID name=\"Streaming\" value=\"" + std::to_string(groupId) + "\"/>"));
        testsupport::writeFile(dir.file("mergedDisplaynames.xml"), displays(""));
    }

    cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
    testsupport::TempDir dir;
};

TEST_F(SignatureMaps, LoadKeepsTablesOnBadFilesAndThrowsOnBadIds) {
    quietly([&] { maps.load(dir.file("appid.xml"), dir.file("displaynames.xml")); });
    struct Row {
        const char* name;
        std::string groupFile, displayFile, message;
        int group, display;
    } rows[] = {
        {"missing group file", "", displays(""),
         "load xml file: " + dir.file("g.xml") + " with error, rc=3", 17, 2210},
        {"wrong root", groups("", "Other"), displays(""), "invalid xml file: " + dir.file("g.xml"),
         17, 2210},
        {"malformed display file", groups(R"(<AppGroupID name="Streaming" value="5"/>
                                             <AppGroupID name="Streaming" value="6"/>)"),
         "<DisplayNames><", "load xml file: " + dir.file("d.xml") + " with error, rc=", 6, 2210},
        {"both good", groups("<Other/>"), displays(R"(<DisplayName name="YouTube" id="9"/>)"), "",
         0, 9},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::remove(dir.file("g.xml").c_str());
        if (!row.groupFile.empty()) testsupport::writeFile(dir.file("g.xml"), row.groupFile);
        testsupport::writeFile(dir.file("d.xml"), row.displayFile);
        std::string out = quietly([&] { maps.load(dir.file("g.xml"), dir.file("d.xml")); });
        if (row.message.empty()) {
            EXPECT_EQ(out, "");
        }
        EXPECT_EQ(out.find(row.message), 0u) << out;
        EXPECT_EQ(maps.findGroupId("Streaming"), row.group);
        EXPECT_EQ(maps.findDisplayId("YouTube"), row.display);
    }
    testsupport::writeFile(dir.file("g.xml"), groups(R"(<AppGroupID name="x" value="abc"/>)"));
    EXPECT_THROW(maps.load(dir.file("g.xml"), dir.file("d.xml")), std::invalid_argument);
}

TEST_F(SignatureMaps, ReloadPrefersNewerLiveUpdateFiles) {
    std::string out = quietly([&] { maps.reload(); });
    EXPECT_EQ(out, "") << "no live-update file and flag clear: nothing happens";
    EXPECT_FALSE(maps.liveUpdate());

    // A live-update file whose modification time is older than its status-change time.
    writeLive(40);
    struct utimbuf past = {1000, 1000};
    ASSERT_EQ(utime(dir.file("mergedAppid.xml").c_str(), &past), 0);
    struct stat status;
    ASSERT_EQ(stat(dir.file("mergedAppid.xml").c_str(), &status), 0);
    out = quietly([&] { maps.reload(); });
    EXPECT_EQ(out, "live update files exist, change-time=" + std::to_string(status.st_ctime) +
                       ", previous-change-time=0\nload live-update signature.\n");
    EXPECT_EQ(maps.findGroupId("Streaming"), 40);
    EXPECT_TRUE(maps.liveUpdate());
    EXPECT_EQ(maps.changeTime(), 1000) << "the modification time is remembered";
    // Deliberately compared with the change time, so such a file loads on every reload.
    out = quietly([&] { maps.reload(); });
    EXPECT_NE(out.find("previous-change-time=1000\nload live-update signature.\n"),
              std::string::npos);

    // A fresh file: change time equal to the remembered modification time is up to date.
    writeLive(41);
    quietly([&] { maps.reload(); });
    EXPECT_EQ(maps.findGroupId("Streaming"), 41);
    out = quietly([&] { maps.reload(); });
    EXPECT_NE(out.find("live-update signature up-to date, no need to reload.\n"),
              std::string::npos);

    std::remove(dir.file("mergedAppid.xml").c_str());
    quietly([&] { maps.reload(); });
    EXPECT_FALSE(maps.liveUpdate());
    EXPECT_EQ(maps.findGroupId("Streaming"), 17);
}

TEST_F(SignatureMaps, FactoryTablesAnswerUnderALiveUpdateThatDoesNotLoad) {
    struct Row {
        const char* name;
        const char* liveGroups;    // null: no file
        const char* liveDisplays;  // null: no file
        int group, display;
    } rows[] = {
        {"live groups without live display names",
         R"(<Cockatrice><AppGroupID name="Streaming" value="40"/></Cockatrice>)", nullptr, 40,
         2210},
        {"unparsable live groups", "<Cockatrice><", R"(<DisplayNames/>)", 17, 2210},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        maps.clear();
        std::remove(dir.file("mergedDisplaynames.xml").c_str());
        testsupport::writeFile(dir.file("mergedAppid.xml"), row.liveGroups);
        if (row.liveDisplays != nullptr)
            testsupport::writeFile(dir.file("mergedDisplaynames.xml"), row.liveDisplays);
        // The first thing after start is the reload a converter makes before its lookups.
        quietly([&] { maps.reload(); });
        EXPECT_EQ(maps.findGroupId("Streaming"), row.group);
        EXPECT_EQ(maps.findDisplayId("YouTube"), row.display);
    }
}

TEST_F(SignatureMaps, ExtendedSignaturesAndDnsEntries) {
    quietly([&] { maps.findGroupId(""); });
    maps.reloadExtended({signature("YouTube", "yt.example", 7000),
                         signature("low", "a.example", 5499), signature("first", "b.example", 5500),
                         signature("high", "c.example", 5564), signature("last", "d.example", 5563),
                         signature("dup", "e.example", 1), signature("dup", "e.example", 5501)});
    EXPECT_EQ(maps.extendedCount(), 6u);
    EXPECT_EQ(maps.findDisplayId("YouTube"), 7000) << "extended wins over the display map";
    struct Row {
        const char* text;
        int dispId;
    } rows[] = {{"a.example", 0},    {"b.example", 5500}, {"c.example", 0},
                {"d.example", 5563}, {"e.example", 5501}, {"first", 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        cfgPlusExtendedSig found = maps.findDnsEntry(row.text);
        EXPECT_EQ(found.dispId, row.dispId);
        EXPECT_EQ(found.groupId, row.dispId == 0 ? 0 : row.dispId + 1);
    }
    maps.reloadExtended({});
    EXPECT_EQ(maps.findDisplayId("YouTube"), 2210);
}

}  // namespace
