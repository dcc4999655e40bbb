// The tree walk, addCfgElement and inList. How each kind renders is element_test's.
#include <gtest/gtest.h>
#include <json-c/json.h>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

using Keys = std::list<std::string>;

void noRelease(apiCfgPlusEntry*) {}

// "kind name[key]=value;" per element, the key only where it differs from the name; the items
// of kinds 9 and 10 in braces.
std::string describe(const cfgElementList& list) {
    std::string out;
    for (const cfgElement& e : list) {
        out += std::to_string(e.kind) + " " + e.name + (e.key == e.name ? "" : "[" + e.key + "]");
        if (e.kind == CFG_OBJECT || e.kind == CFG_OBJ_ARRAY)
            out += "{" + describe(e.kind == CFG_OBJECT ? e.elements : e.objArray) + "}";
        else
            out += "=" + e.toString(0).substr(e.name.size() + 4);
        out += ";";
    }
    return out;
}

cfgElementList walkText(const std::string& json, const std::string& path = "",
                        const Keys& include = {}, const Keys& exclude = {},
                        cfgElementList out = {}) {
    json_object* root = json_tokener_parse(json.c_str());
    EXPECT_NE(root, nullptr) << json;
    jsonCfgPlus::walk(root, path, include, exclude, out);
    json_object_put(root);
    return out;
}

TEST(Walk, EveryJsonShapeGivesItsKind) {
    const std::pair<const char*, const char*> rows[] = {
        {"{\"x\":{},\"n\":null,\"a\":[]}", "9 x{};0 n[]=null;6 a=[ ];"},
        {"{\"a\":[\"p\",\"q\"],\"b\":[1,-2]}", "7 a=[\"p\",\"q\"];8 b=[1,-2];"},
        {"{\"a\":{\"b\":{\"c\":1}},\"d\":true,\"e\":\"s\",\"f\":-2.25,\"g\":5.0}",
         "3 a/b/c=1;1 d=true;4 e=\"s\";2 f=-2.250000;2 g=5.000000;"},
        {"{\"big\":3000000000,\"small\":-3000000000}", "3 big=2147483647;3 small=-2147483648;"},
        {"{\"a\":[1.5]}", "10 a{9 {2 a=1.500000;};};"},
        {"{\"a\":[{\"b\":1},{\"b\":2}]}", "10 a{9 {3 a/b=1;};9 {3 a/b=2;};};"},
        // Mixed arrays: a failed string-list test leaves nothing behind.
        {"{\"a\":[\"p\",1]}", "10 a{9 {4 a=\"p\";};9 {3 a=1;};};"},
        {"{\"a\":[null,{\"b\":1},null]}", "10 a{9 {3 a/b=1;};};"},
        {"{\"a\":[[1,2],[\"x\"]]}", "10 a{9 {8 a=[1,2];};9 {7 a=[\"x\"];};};"},
        {"{\"a\":[{},{\"b\":{},\"c\":null}]}", "10 a{9 {};9 {9 a/b{};0 a/c[]=null;};};"},
        {"{\"z\":1,\"y\":{\"x\":2},\"w\":3}", "3 z=1;3 y/x=2;3 w=3;"}};
    for (const auto& [json, expected] : rows) EXPECT_EQ(describe(walkText(json)), expected) << json;
}

TEST(Walk, StartingPathAndNonObjectNodes) {
    EXPECT_EQ(describe(walkText(R"({"a":{"b":1}})", "pre")), "3 pre/a/b=1;");
    EXPECT_EQ(describe(walkText("5", "n")), "3 n=5;");
    EXPECT_EQ(describe(walkText(R"([{"k":"v"}])", "w")), "10 w{9 {4 w/k=\"v\";};};");
    EXPECT_EQ(describe(walkText("{}", "e")), "");

    cfgElementList untouched{cfgElement("x", 1)};
    jsonCfgPlus::walk(nullptr, "x", {}, {}, untouched);
    EXPECT_EQ(describe(untouched), "3 x[]=1;");
}

TEST(Walk, IncludeAndExcludeFilterOnlyTheTopLevelByKey) {
    auto names = [](const char* json, const Keys& include, const Keys& exclude) {
        std::string out;
        for (const cfgElement& e : walkText(json, "", include, exclude)) out += e.name + ";";
        return out;
    };
    EXPECT_EQ(names(R"({"a":1,"b":2})", {"b"}, {}), "b;");
    EXPECT_EQ(names(R"({"a":1,"b":2})", {}, {"b"}), "a;");
    EXPECT_EQ(names(R"({"a":1,"b":2})", {"a"}, {"a"}), "a;");  // include wins
    EXPECT_EQ(names(R"({"a":{"c":1},"c":2})", {}, {"c"}), "a/c;");
    EXPECT_EQ(names(R"({"a":{"x":1,"y":2},"b":3})", {"a"}, {}), "a/x;a/y;");
    EXPECT_EQ(names(R"({"a":{"x":1}})", {"a/x"}, {}), "");
}

TEST(Walk, RepeatedNameReplacesInPlace) {
    EXPECT_EQ(describe(walkText(R"({"a/b":1,"z":0,"a":{"b":"two"}})")), "4 a/b=\"two\";3 z=0;");
    // Into a list that already holds the name: kind, path string and functions all change.
    cfgElementList existing{cfgElement("y", 9, "old", noRelease), cfgElement("q", 1)};
    cfgElementList out = walkText(R"({"x":1,"y":null})", "", {}, {}, existing);
    EXPECT_EQ(describe(out), "0 y[]=null;3 q[]=1;3 x=1;");
    EXPECT_EQ(out.front().freeFn, nullptr);
    // Within one object-array item, but never across items.
    EXPECT_EQ(describe(walkText(R"({"a":[{"x/y":1,"x":{"y":2}},{"x/y":3}]})")),
              "10 a{9 {3 a/x/y=2;};9 {3 a/x/y=3;};};");
}

TEST(AddCfgElement, ReplacesTheFirstMatchInPlaceOrAppends) {
    cfgElementList list{cfgElement("a", 1), cfgElement("b", 2), cfgElement("a", 3)};
    jsonCfgPlus::addCfgElement(list, cfgElement("a", 9), false);
    EXPECT_EQ(describe(list), "3 a[]=1;3 b[]=2;3 a[]=3;");

    cfgElement replacement("a", std::list<std::string>{"s"}, "k");
    replacement.printFn = [](apiCfgPlusEntry*, unsigned int) -> char* { return nullptr; };
    jsonCfgPlus::addCfgElement(list, replacement, true);
    EXPECT_EQ(describe(list), "7 a[k]=[\"s\"];3 b[]=2;3 a[]=3;");
    EXPECT_EQ(list.front().printFn, replacement.printFn);

    cfgElement fresh("c", 4);
    jsonCfgPlus::addCfgElement(list, fresh, false);
    fresh.intValue = 5;
    jsonCfgPlus::addCfgElement(list, cfgElement(std::string("a\0", 2), 6), true);
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(list.back().name.size(), 2u);
    EXPECT_EQ(std::next(list.begin(), 3)->intValue, 4);
}

TEST(InList, ByteForByteEquality) {
    const std::string nul("a\0b", 3);
    EXPECT_TRUE(jsonCfgPlus::inList("", {""}) && jsonCfgPlus::inList("b", {"a", "b"}) &&
                jsonCfgPlus::inList(nul, {nul}));
    EXPECT_FALSE(jsonCfgPlus::inList("", {"a"}) || jsonCfgPlus::inList("a", {}) ||
                 jsonCfgPlus::inList("ab", {"a", "abc"}) || jsonCfgPlus::inList("a", {"A", "a "}) ||
                 jsonCfgPlus::inList(nul, {"a"}));
}

}  // namespace
