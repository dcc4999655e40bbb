// SPDX-License-Identifier: MIT
// The document: parsing, validation, saving, the top-level object table, and the build
// driver's failures; whole documents, odd ones included, are golden files (golden_test).
#include <gtest/gtest.h>
#include <json-c/json.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <functional>
#include <set>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

using testsupport::build;
using testsupport::Built;
using testsupport::captureStderr;
using testsupport::captureStdout;
using testsupport::readFile;
using testsupport::TempDir;
using testsupport::writeFile;
using Keys = std::list<std::string>;

// Compact JSON text of a value, or NULL.
std::string text(json_object* o) {
    return o ? json_object_to_json_string_ext(o, JSON_C_TO_STRING_PLAIN) : "NULL";
}

TEST(DocumentParse, TokenizerErrorsGoToStandardError) {
    struct Row {
        const char* text;
        unsigned int len;
        const char* result;  // the tree parsed, or the error line
    } rows[] = {{"{\"a\":1", 6, "Error: continue\n"},
                {"{\"a\":1}", 5, "Error: continue\n"},
                {"{\"a\":}", 6, "Error: unexpected character\n"},
                {"", 0, "Error: continue\n"},
                {nullptr, 0, "Error: continue\n"},
                {"[1,2]", 5, "[1,2]"},
                {"{\"a\":1} {", 7, "{\"a\":1}"}};
    jsonCfgPlus doc;
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << "text " << (row.text ? row.text : "(null)") << " length " << row.len);
        json_object* root = nullptr;
        std::string out;
        std::string err = captureStderr(
            [&] { out = captureStdout([&] { root = doc.parse(row.text, row.len); }); });
        EXPECT_EQ(out, "");
        EXPECT_EQ(root ? text(root) + err : err, row.result);
        json_object_put(root);
    }

    TempDir dir;
    writeFile(dir.file("doc.json"), R"({"a":[1,2]})");
    json_object* root = doc.parse(dir.file("doc.json"));
    EXPECT_EQ(text(root), R"({"a":[1,2]})");
    json_object_put(root);
    std::string out;
    std::string err = captureStderr(
        [&] { out = captureStdout([&] { root = doc.parse(dir.file("missing.json")); }); });
    EXPECT_EQ(root, nullptr);
    EXPECT_EQ(out + err, "");
}

TEST(DocumentValidate, PrintsItsFindings) {
    TempDir dir;
    writeFile(dir.file("good.json"), R"({"a":1,"b":[true]})");
    writeFile(dir.file("bad.json"), R"({"a":)");
    struct Row {
        std::string path;
        int result;
        std::string findings;
    } rows[] = {
        {dir.file("good.json"), 0, "Validated!\n{\n  \"a\": 1,\n  \"b\": [\n    true\n  ]\n}\n"},
        {dir.file("bad.json"), -1, "error in JSON file\n"},
        {dir.file("none.json"), -1, "error in file:" + dir.file("none.json") + "\n"}};
    jsonCfgPlus doc;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        int result = 0;
        std::string out = captureStdout([&] { result = doc.validate(row.path.c_str()); });
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(out, "\nValidating file: " + row.path + "\n\n" + row.findings);
    }
}

const char kDoc[] = R"({"request-id":12,"w":["a"]})";
const std::string kSaved = "{\n  \"request-id\": 12,\n  \"w\": [\n    \"a\"\n  ]\n}";

// Saves through fn and returns the file name it reported, checking its lines and the file.
std::string save(const std::function<int()>& fn) {
    int result = -2;
    std::string out = captureStdout([&] { result = fn(); });
    EXPECT_EQ(result, 0);
    std::string prefix = "save JSON-Q+ configuration to file: ";
    size_t end = out.find(", size:");
    if (out.rfind(prefix, 0) != 0 || end == std::string::npos) return "(nothing saved) " + out;
    std::string name = out.substr(prefix.size(), end - prefix.size());
    EXPECT_EQ(out, prefix + name + ", size:" + std::to_string(kSaved.size()) +
                       "\nJSON-Q+ Configuration is saved to file: " + name + "\n");
    EXPECT_EQ(readFile(name), kSaved + "\n") << name;
    json_object* back = json_tokener_parse(readFile(name).c_str());
    json_object* doc = json_tokener_parse(kDoc);
    EXPECT_TRUE(json_object_equal(back, doc));
    json_object_put(back);
    json_object_put(doc);
    return name;
}

std::string slotName(int slot, bool backup) {
    return "/tmp/json_q" + std::to_string(slot) + (backup ? "_bk" : "") + ".json";
}

TEST(DocumentSave, SuccessiveSavesAlternateBetweenTwoSlots) {
    jsonCfgPlus doc;
    json_object* root = json_tokener_parse(kDoc);
    auto tree = [&] { return doc.saveJsonCfgPlus(root); };
    auto fromText = [&] { return doc.saveJsonCfgPlus(kDoc, sizeof kDoc - 1); };
    std::string first = save(tree);
    ASSERT_TRUE(first == slotName(1, false) || first == slotName(2, false)) << first;
    int slot = first == slotName(1, false) ? 1 : 2;
    EXPECT_EQ(save(tree), slotName(3 - slot, false));
    EXPECT_EQ(save(fromText), slotName(slot, false));

    // Nothing to save: no output, no file, and the rotation does not move.
    int result = -2;
    std::string err = captureStderr(
        [&] { EXPECT_EQ(captureStdout([&] { result = doc.saveJsonCfgPlus("{", 1); }), ""); });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(err, "Error: continue\n");
    EXPECT_EQ(captureStdout([&] { result = doc.saveJsonCfgPlus(nullptr); }), "");
    EXPECT_EQ(result, 0);

    doc.m_save_backup = 1;
    EXPECT_EQ(save(fromText), slotName(3 - slot, true));
    EXPECT_EQ(save(tree), slotName(slot, true));
    json_object_put(root);
}

// Saves root into a temporary directory and reports what happened.
class DocumentSaveFile : public ::testing::Test {
  protected:
    void SetUp() override { previous = jsonCfgPlus::setSaveDirectory(dir.path()); }
    void TearDown() override { jsonCfgPlus::setSaveDirectory(previous); }

    struct Saved {
        int result = -2;
        std::string name, out;
    };
    Saved save(json_object* root) {
        Saved saved;
        saved.out = captureStdout([&] { saved.result = doc.saveJsonCfgPlus(root); });
        std::string prefix = "save JSON-Q+ configuration to file: ";
        size_t end = saved.out.find(", size:");
        if (saved.out.rfind(prefix, 0) == 0 && end != std::string::npos)
            saved.name = saved.out.substr(prefix.size(), end - prefix.size());
        return saved;
    }
    std::set<std::string> files() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
            names.insert(entry.path().filename().string());
        return names;
    }

    TempDir dir;
    std::string previous;
    jsonCfgPlus doc;
};

TEST_F(DocumentSaveFile, SlotsArePrivateFilesThatReplaceALinkInsteadOfFollowingIt) {
    writeFile(dir.file("target"), "not yours");
    for (const char* slot : {"json_q1.json", "json_q2.json"})
        ASSERT_EQ(symlink(dir.file("target").c_str(), dir.file(slot).c_str()), 0);
    json_object* root = json_tokener_parse(kDoc);
    for (int i = 0; i < 2; ++i) {
        Saved saved = save(root);
        ASSERT_EQ(saved.result, 0) << saved.out;
        struct stat status;
        ASSERT_EQ(lstat(saved.name.c_str(), &status), 0) << saved.name;
        EXPECT_TRUE(S_ISREG(status.st_mode)) << saved.name;
        EXPECT_EQ(status.st_mode & 07777, 0600u) << saved.name;
        EXPECT_EQ(readFile(saved.name), kSaved + "\n");
    }
    json_object_put(root);
    EXPECT_EQ(readFile(dir.file("target")), "not yours");
    EXPECT_EQ(files(), (std::set<std::string>{"json_q1.json", "json_q2.json", "target"}));
}

TEST_F(DocumentSaveFile, AFailedSaveLeavesThePreviousSlotAndNoTemporaryFile) {
    // A document larger than the file-size limit below: the write fails part way, as on a
    // full /tmp.
    std::string big = "{\"k\":\"" + std::string(20000, 'x') + "\"}";
    json_object* root = json_tokener_parse(big.c_str());
    struct Row {
        const char* name;
        std::string directory;
        rlim_t sizeLimit;
    } rows[] = {
        {"directory missing", dir.file("missing"), RLIM_INFINITY},
        {"write fails", dir.path(), 4096},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const char* slot : {"json_q1.json", "json_q2.json"}) writeFile(dir.file(slot), "old");
        jsonCfgPlus::setSaveDirectory(row.directory);
        struct rlimit usual;
        ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
        struct rlimit limited = {std::min(row.sizeLimit, usual.rlim_cur), usual.rlim_max};
        void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
        Saved saved = save(root);
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, handler);

        EXPECT_EQ(saved.result, -1);
        EXPECT_EQ(saved.name.rfind(row.directory + "/json_q", 0), 0u) << saved.out;
        EXPECT_EQ(saved.out,
                  "save JSON-Q+ configuration to file: " + saved.name + ", size:" +
                      std::to_string(std::strlen(json_object_to_json_string_ext(root, 3))) +
                      "\nUnable to open file: " + saved.name + "\n");
        for (const char* slot : {"json_q1.json", "json_q2.json"})
            EXPECT_EQ(readFile(dir.file(slot)), "old") << slot;
        EXPECT_EQ(files(), (std::set<std::string>{"json_q1.json", "json_q2.json"}));
    }
    json_object_put(root);
}

const char kTable[] = R"({
  "device": {"name": "ap1", "profile_name": "p2", "num_ref": 5, "rate": 5.0, "n": 7,
             "on": true, "nested": {"deep": {"v": 3}}},
  "profile": [{"name": "p1", "v": 1}, {"name": "p2"}, {"name": "p1", "v": 3}, {"v": 4},
              {"name": 5}, "scalar"],
  "list": [{"a": 1}, {"b": 2}],
  "request-id": 42,
  "nothing": null
})";

class ObjectTable : public ::testing::Test {
  protected:
    void SetUp() override {
        json_object* root = json_tokener_parse(kTable);
        ASSERT_NE(root, nullptr);
        EXPECT_EQ(captureStdout([&] { all.build(root); }), "build top level look-up table...\n");
    }
    jsonCfgObj& obj(const char* name) { return *all.findCfgObject(name); }
    json_object* top(const char* name) { return obj(name).json(); }
    jsonCfgAll all;
};

TEST_F(ObjectTable, LookupsAndRelationships) {
    EXPECT_EQ(all.findCfgObject("absent"), nullptr);
    ASSERT_NE(all.findCfgObject("nothing"), nullptr);
    EXPECT_EQ(obj("nothing").type(), 0);
    EXPECT_EQ(obj("nothing").toString(), "nothing: null");
    json_object* device = top("device");
    std::string deviceText = text(device);
    struct Row {
        json_object* got;
        const char* expected;
    } rows[] = {{obj("profile").findJsonElement("p1"), R"({"name":"p1","v":1})"},
                {obj("profile").findJsonElement("5"), "NULL"},
                {obj("profile").findJsonElement(4u), R"({"name":5})"},
                {obj("profile").findJsonElement(5u), R"("scalar")"},
                {obj("profile").findJsonElement(6u), "NULL"},
                {jsonCfgObj("profile", top("profile"), "").findJsonElement("p1"), "NULL"},
                {obj("list").findJsonElement("a"), "NULL"},
                {obj("list").findJsonElement(0u), R"({"a":1})"},
                {obj("device").findJsonElement("name"), R"("ap1")"},
                {obj("device").findJsonElement(0u), deviceText.c_str()},
                {obj("request-id").findJsonElement("anything"), "42"},
                {obj("request-id").findJsonElement(0u), "NULL"},
                {obj("nothing").findJsonElement("nothing"), "NULL"},
                {all.resolveRelationship(device, "profile_name", "profile"), R"({"name":"p2"})"},
                {all.resolveRelationship(device, "num_ref", "profile"), "NULL"},
                {all.resolveRelationship(device, "profile_name", "absent"), "NULL"},
                {all.resolveRelationship(nullptr, "profile_name", "profile"), "NULL"},
                {all.resolveRelationship("device", "profile_name", "profile"), R"({"name":"p2"})"},
                {all.resolveRelationship("absent", "profile_name", "profile"), "NULL"},
                {all.resolveRelationship("p1", "profile"), R"({"name":"p1","v":1})"},
                {all.resolveRelationship("any", "request-id"), "42"},
                {jsonCfgObj::getJsonObject("name", nullptr), "NULL"},
                {jsonCfgObj::getJsonObject("name", top("profile")), "NULL"},
                {jsonCfgObj::getJsonObject("name", "p1", top("profile")), R"({"name":"p1","v":1})"},
                {jsonCfgObj::getJsonObject("name", "ap1", device), "NULL"}};
    for (size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(text(rows[i].got), rows[i].expected) << "row " << i;
}

TEST_F(ObjectTable, TypedGettersWantTheExactTypeAndLeaveTheOutputAlone) {
    jsonCfgObj& device = obj("device");
    int i = -1;
    bool b = false;
    std::string s = "previous text";
    EXPECT_FALSE(device.findJsonIntValue("rate", i));  // 5.0 is a double
    EXPECT_FALSE(device.findJsonIntValue("name", i));
    EXPECT_FALSE(device.findJsonBoolValue("n", b));
    EXPECT_FALSE(device.findJsonStrValue("n", s));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{"device", "absent", "v"}, all.root(), i));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{"device", "rate"}, all.root(), i));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{}, nullptr, i));
    EXPECT_FALSE(jsonCfgObj::getJsonStrValue("num_ref", top("device"), s));
    EXPECT_EQ(i, -1);
    EXPECT_FALSE(b);
    EXPECT_EQ(s, "previous text");

    EXPECT_TRUE(device.findJsonStrValue("name", s));
    EXPECT_EQ(s, "ap1");
    EXPECT_TRUE(device.findJsonBoolValue("on", b));
    EXPECT_TRUE(b);
    EXPECT_TRUE(obj("request-id").findJsonIntValue("x", i));
    EXPECT_EQ(i, 42);
    EXPECT_TRUE(jsonCfgObj::getJsonIntValue(Keys{"device", "nested", "deep", "v"}, all.root(), i));
    EXPECT_EQ(i, 3);
    EXPECT_TRUE(jsonCfgObj::getJsonIntValue(Keys{}, device.findJsonElement("n"), i));
    EXPECT_EQ(i, 7);
}

TEST(ObjectTableLifecycle, ResetReleasesTheRootAndEmptiesTheTable) {
    jsonCfgAll empty;
    empty.reset();
    EXPECT_EQ(empty.root(), nullptr);

    jsonCfgAll all;
    json_object* first = json_tokener_parse(R"({"a":{}})");
    json_object* second = json_tokener_parse(R"({"b":1})");
    json_object_get(first);
    json_object_get(second);
    captureStdout([&] { all.build(first); });
    captureStdout([&] { all.build(second); });
    EXPECT_EQ(json_object_put(first), 1);  // the rebuild released the table's reference
    EXPECT_EQ(all.findCfgObject("a"), nullptr);
    EXPECT_NE(all.findCfgObject("b"), nullptr);
    all.reset();
    EXPECT_EQ(all.root(), nullptr);
    EXPECT_EQ(all.findCfgObject("b"), nullptr);
    EXPECT_EQ(json_object_put(second), 1);
}

TEST(BuildDriver, MissingDeviceFailsEvenWithRedisSource) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"ip": "127.0.0.1", "port": 1, "key": "k", "personality": "x"})");
    EXPECT_EQ(b.result, -1);
    EXPECT_NE(b.output.find("[ERR] not found mandatory device.\n"), std::string::npos);
    EXPECT_TRUE(doc.m_global.empty());
}

int g_callbackCalls = 0;
int failingPipeline(jsonCfgPlus* doc) {
    ++g_callbackCalls;
    return doc->m_global.empty() ? 1 : 5;
}

TEST(BuildDriver, PipelineResultFailsTheBuildAndResetsTheLists) {
    jsonCfgPlus doc;
    doc.m_callback = failingPipeline;
    g_callbackCalls = 0;
    Built b = build(doc, R"({"key": "k", "ip": "h", "device": {"a": 1},
                             "profile": [{"name": "p", "interface": []}]})");
    EXPECT_EQ(b.result, 5);
    EXPECT_EQ(g_callbackCalls, 1);
    EXPECT_TRUE(doc.m_global.empty());
    EXPECT_EQ(doc.m_redis_key, "");
    EXPECT_EQ(doc.m_redis_ip, "h");
}

}  // namespace
