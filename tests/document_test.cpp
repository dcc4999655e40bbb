// The document: parsing, shape tests, reset, validation, saving, and the top-level object table.
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <functional>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

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

// What a parse of exactly len bytes gives: the tree, then anything written on either stream.
std::string parsed(const char* json, unsigned int len) {
    json_object* root = nullptr;
    std::string err;
    std::string out =
        captureStdout([&] { err = captureStderr([&] { root = jsonCfgPlus().parse(json, len); }); });
    std::string tree = root ? text(root) : "";
    json_object_put(root);
    return tree + out + err;
}

TEST(DocumentParse, ExactLengthAndErrorsOnStandardError) {
    EXPECT_EQ(parsed("{\"a\":1}", 5), "Error: continue\n");
    EXPECT_EQ(parsed("{\"a\":}", 6), "Error: unexpected character\n");
    EXPECT_EQ(parsed(nullptr, 0), "Error: continue\n");
    EXPECT_EQ(parsed("[1,2]", 5), "[1,2]");

    TempDir dir;
    writeFile(dir.file("doc.json"), R"({"a":[1,2]})");
    json_object* root = jsonCfgPlus().parse(dir.file("doc.json"));
    EXPECT_EQ(text(root), R"({"a":[1,2]})");
    json_object_put(root);
    std::string err = captureStderr([&] { root = jsonCfgPlus().parse(dir.file("missing.json")); });
    EXPECT_EQ(root, nullptr);
    EXPECT_EQ(err, "");
}

// Each shape test's verdict on one value and what it left in its list ("pre" or 0 before it):
// the list tests append what they read, even when a later item makes them fail.
std::string shapes(const char* json) {
    json_object* o = json ? json_tokener_parse(json) : nullptr;
    std::list<std::string> strings{"pre"};
    std::list<int> ints{0};
    std::string out = "s" + std::to_string(jsonCfgPlus::isStrList(o, strings));
    for (const std::string& s : strings) out += " " + s;
    out += " i" + std::to_string(jsonCfgPlus::isIntList(o, ints));
    for (int i : ints) out += " " + std::to_string(i);
    out += " e" + std::to_string(jsonCfgPlus::isEmptyObj(o));
    json_object_put(o);
    return out;
}

TEST(DocumentShape, ListAndEmptyObjectTests) {
    const std::pair<const char*, const char*> rows[] = {
        {"[]", "s0 pre i0 0 e0"},           {"[\"a\",1]", "s0 pre a i0 0 e0"},
        {"[null,\"a\"]", "s0 pre i0 0 e0"}, {"[\"a\",\"b\"]", "s1 pre a b i0 0 e0"},
        {"[1,2.5]", "s0 pre i0 0 1 e0"},    {"[1,-2]", "s0 pre i1 0 1 -2 e0"},
        {"{}", "s0 pre i0 0 e1"},           {"{\"a\":null}", "s0 pre i0 0 e0"},
        {nullptr, "s0 pre i0 0 e0"}};
    for (const auto& [json, expected] : rows) EXPECT_EQ(shapes(json), expected) << json;
}

TEST(DocumentReset, ClearsListsKeyAndPortOnly) {
    jsonCfgPlus doc;
    doc.m_redis_depth = 2;  // the build never fetches
    const std::string text = R"({"ip": "10.0.0.1", "port": 6379, "key": "cfg", "request-id": 7,
        "cen_time": 9, "device": {"interface": [{"name": "radio1", "type": "radio"}]}})";
    captureStdout([&] { ASSERT_EQ(doc.buildConfig(text.data(), unsigned(text.size())), 0); });
    ASSERT_EQ(doc.m_global.size() * 10 + doc.m_radios.size(), 61u);
    doc.reset();
    EXPECT_EQ(doc.m_global.size() + doc.m_radios.size(), 0u);
    EXPECT_EQ(doc.m_redis_ip + "|" + doc.m_redis_key + "|" + std::to_string(doc.m_redis_port) +
                  "|" + std::to_string(doc.m_request_id) + "|" + std::to_string(doc.m_cen_time) +
                  "|" + std::to_string(doc.m_redis_depth),
              "10.0.0.1||0|7|9|2");
}

TEST(DocumentValidate, PrintsItsFindings) {
    TempDir dir;
    writeFile(dir.file("good.json"), R"({"a":1,"b":[true]})");
    writeFile(dir.file("bad.json"), R"({"a":)");
    auto validate = [&](const std::string& name) {
        int result = 0;
        std::string out = captureStdout([&] { result = jsonCfgPlus().validate(name.c_str()); });
        return std::to_string(result) + out;
    };
    const std::string good = dir.file("good.json"), none = dir.file("none.json");
    EXPECT_EQ(validate(good), "0\nValidating file: " + good +
                                  "\n\nValidated!\n{\n  \"a\": 1,\n  \"b\": [\n    true\n  ]\n}\n");
    EXPECT_EQ(validate(dir.file("bad.json")),
              "-1\nValidating file: " + dir.file("bad.json") + "\n\nerror in JSON file\n");
    EXPECT_EQ(validate(none), "-1\nValidating file: " + none + "\n\nerror in file:" + none + "\n");
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
    EXPECT_EQ(std::to_string(result) + err, "0Error: continue\n");
    EXPECT_EQ(captureStdout([&] { result = doc.saveJsonCfgPlus(nullptr); }), "");
    EXPECT_EQ(result, 0);

    doc.m_save_backup = 1;
    EXPECT_EQ(save(fromText), slotName(3 - slot, true));
    EXPECT_EQ(save(tree), slotName(slot, true));
    json_object_put(root);
}

const char kTable[] = R"({
  "device": {"name": "ap1", "profile_name": "p2", "num_ref": 5, "rate": 5.0, "n": 7,
             "on": true, "nested": {"deep": {"v": 3}}},
  "profile": [{"name": "p1", "v": 1}, {"name": "p2"}, {"name": "p1", "v": 3}, {"v": 4},
              {"name": 5}, "scalar"],
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
    EXPECT_EQ(obj("nothing").type(), 0);
    EXPECT_EQ(obj("nothing").toString(), "nothing: null");
    json_object* device = top("device");
    std::string deviceText = text(device);
    const char* p1 = R"({"name":"p1","v":1})";
    struct Row {
        json_object* got;
        const char* expected;
    } rows[] = {{obj("profile").findJsonElement("p1"), p1},  // the first of a name wins
                {obj("profile").findJsonElement("5"), "NULL"},
                {obj("profile").findJsonElement(5u), R"("scalar")"},
                {obj("profile").findJsonElement(6u), "NULL"},
                {jsonCfgObj("profile", top("profile"), "").findJsonElement("p1"), "NULL"},
                {obj("device").findJsonElement("name"), R"("ap1")"},
                {obj("device").findJsonElement(0u), deviceText.c_str()},
                {obj("device").findJsonElement(1u), "NULL"},
                {obj("request-id").findJsonElement("anything"), "42"},
                {obj("request-id").findJsonElement(0u), "NULL"},
                {all.resolveRelationship(device, "profile_name", "profile"), R"({"name":"p2"})"},
                {all.resolveRelationship(device, "num_ref", "profile"), "NULL"},
                {all.resolveRelationship(device, "profile_name", "absent"), "NULL"},
                {all.resolveRelationship(nullptr, "profile_name", "profile"), "NULL"},
                {all.resolveRelationship("device", "profile_name", "profile"), R"({"name":"p2"})"},
                {all.resolveRelationship("absent", "profile_name", "profile"), "NULL"},
                {all.resolveRelationship("p1", "profile"), p1},
                {jsonCfgObj::getJsonObject("name", top("profile")), "NULL"},
                {jsonCfgObj::getJsonObject("name", "p1", top("profile")), p1},
                {jsonCfgObj::getJsonObject("name", "p", top("profile")), "NULL"},
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
    EXPECT_FALSE(device.findJsonBoolValue("n", b));
    EXPECT_FALSE(device.findJsonStrValue("n", s));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{"device", "absent", "v"}, all.root(), i));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{"device", "rate"}, all.root(), i));
    EXPECT_FALSE(jsonCfgObj::getJsonIntValue(Keys{}, nullptr, i));
    EXPECT_FALSE(jsonCfgObj::getJsonStrValue("num_ref", top("device"), s));
    EXPECT_EQ(std::to_string(i) + (b ? "true" : "false") + s, "-1falseprevious text");

    EXPECT_TRUE(device.findJsonStrValue("name", s) && device.findJsonBoolValue("on", b));
    EXPECT_EQ(s + (b ? "true" : "false"), "ap1true");
    EXPECT_TRUE(obj("request-id").findJsonIntValue("x", i));
    EXPECT_EQ(i, 42);
    EXPECT_TRUE(jsonCfgObj::getJsonIntValue(Keys{"device", "nested", "deep", "v"}, all.root(), i));
    EXPECT_EQ(i, 3);
    EXPECT_TRUE(jsonCfgObj::getJsonIntValue(Keys{}, device.findJsonElement("n"), i));
    EXPECT_EQ(i, 7);
}

TEST(ObjectTableLifecycle, RebuildAndResetReleaseTheRoot) {
    jsonCfgAll all;
    all.reset();
    EXPECT_EQ(all.root(), nullptr);
    json_object* first = json_object_get(json_tokener_parse(R"({"a":{}})"));
    json_object* second = json_object_get(json_tokener_parse(R"({"b":1})"));
    captureStdout([&] {
        all.build(first);
        all.build(second);
    });
    EXPECT_EQ(json_object_put(first), 1);  // the rebuild released the table's reference
    EXPECT_EQ(all.findCfgObject("a"), nullptr);
    EXPECT_NE(all.findCfgObject("b"), nullptr);
    all.reset();
    EXPECT_EQ(all.root(), nullptr);
    EXPECT_EQ(all.findCfgObject("b"), nullptr);
    EXPECT_EQ(json_object_put(second), 1);
}

}  // namespace
