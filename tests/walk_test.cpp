// The tree walk, addCfgElement and inList.
#include <gtest/gtest.h>
#include <json-c/json.h>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

using Keys = std::list<std::string>;

void noRelease(apiCfgPlusEntry*) {}

// One line per element: kind, [path string], then its rendering.
std::string describe(const cfgElementList& list) {
    std::string out;
    for (const cfgElement& e : list)
        out += std::to_string(e.kind) + " [" + e.key + "] " + e.toString(0) + "\n";
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
    struct Row {
        const char* json;
        const char* expected;
    } rows[] = {
        {R"({"x":{}})", "9 [x] \"x\": { }\n"},
        {R"({"x":null})", "0 [] \"x\": null\n"},
        {R"({"a":[]})", "6 [a] \"a\": [ ]\n"},
        {R"({"a":["p","q"]})", "7 [a] \"a\": [\"p\",\"q\"]\n"},
        {R"({"a":[1,-2]})", "8 [a] \"a\": [1,-2]\n"},
        {R"({"a":{"b":{"c":1}},"d":true,"e":"s","f":-2.25,"g":5.0})",
         "3 [a/b/c] \"a/b/c\": 1\n1 [d] \"d\": true\n4 [e] \"e\": \"s\"\n"
         "2 [f] \"f\": -2.250000\n2 [g] \"g\": 5.000000\n"},
        {R"({"big":3000000000,"small":-3000000000})",
         "3 [big] \"big\": 2147483647\n3 [small] \"small\": -2147483648\n"},
        {R"({"a":[1.5]})", "10 [a] \"a\": [\n  \"\": {\n    \"a\": 1.500000\n  }\n]\n"},
        {R"({"a":[{"b":1},{"b":2}]})",
         "10 [a] \"a\": [\n  \"\": {\n    \"a/b\": 1\n  },\n  \"\": {\n    \"a/b\": 2\n  }\n]\n"},
        // Mixed arrays: a failed string-list test leaves nothing behind.
        {R"({"a":["p",1]})",
         "10 [a] \"a\": [\n  \"\": {\n    \"a\": \"p\"\n  },\n  \"\": {\n    \"a\": 1\n  }\n]\n"},
        {R"({"a":[null,{"b":1},null]})", "10 [a] \"a\": [\n  \"\": {\n    \"a/b\": 1\n  }\n]\n"},
        {R"({"a":[[1,2],["x"]]})",
         "10 [a] \"a\": [\n  \"\": {\n    \"a\": [1,2]\n  },\n  \"\": {\n    \"a\": [\"x\"]\n  "
         "}\n]\n"},
        {R"({"a":[{}]})", "10 [a] \"a\": [\n  \"\": { }\n]\n"},
        {R"({"a":[{"b":{},"c":null}]})",
         "10 [a] \"a\": [\n  \"\": {\n    \"a/b\": { },\n    \"a/c\": null\n  }\n]\n"},
        {R"({"z":1,"y":{"x":2},"w":3})", "3 [z] \"z\": 1\n3 [y/x] \"y/x\": 2\n3 [w] \"w\": 3\n"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        EXPECT_EQ(describe(walkText(row.json)), row.expected);
    }
}

TEST(Walk, ObjectArrayItemsAreUnnamedAndTheirElementsCarryTheArrayPath) {
    cfgElementList out = walkText(R"({"wlan":[{"ssid":"a","qos":{"wmm":true}},{"ssid":"b"}]})");
    ASSERT_EQ(out.size(), 1u);
    std::string items;
    for (const cfgElement& item : out.front().objArray) {
        items += std::to_string(item.kind) + "[" + item.name + "|" + item.key + "]";
        for (const cfgElement& e : item.elements) items += " " + e.name + "|" + e.key;
        items += (item.freeFn || item.printFn) ? " functions;" : ";";
    }
    EXPECT_EQ(items,
              "9[|] wlan/ssid|wlan/ssid wlan/qos/wmm|wlan/qos/wmm;9[|] wlan/ssid|wlan/ssid;");
}

TEST(Walk, StartingPathAndNonObjectNodes) {
    EXPECT_EQ(describe(walkText(R"({"a":{"b":1}})", "pre")), "3 [pre/a/b] \"pre/a/b\": 1\n");
    EXPECT_EQ(describe(walkText("5", "n")), "3 [n] \"n\": 5\n");
    EXPECT_EQ(describe(walkText(R"([{"k":"v"}])", "w")),
              "10 [w] \"w\": [\n  \"\": {\n    \"w/k\": \"v\"\n  }\n]\n");
    EXPECT_EQ(describe(walkText("{}", "e")), "");

    cfgElementList untouched{cfgElement("x", 1)};
    jsonCfgPlus::walk(nullptr, "x", {}, {}, untouched);
    EXPECT_EQ(describe(untouched), "3 [] \"x\": 1\n");
}

TEST(Walk, IncludeAndExcludeFilterOnlyTheTopLevel) {
    struct Row {
        const char* json;
        Keys include, exclude;
        const char* names;
    } rows[] = {{R"({"a":1,"b":2})", {"b"}, {}, "b;"},
                {R"({"a":1,"b":2})", {}, {"b"}, "a;"},
                {R"({"a":1,"b":2})", {"a"}, {"a"}, "a;"},
                {R"({"a":{"c":1},"c":2})", {}, {"c"}, "a/c;"},
                {R"({"a":{"x":1,"y":2},"b":3})", {"a"}, {}, "a/x;a/y;"},
                {R"({"a":{"x":1}})", {"a/x"}, {}, ""},
                {R"({"a":[{"c":1}]})", {}, {"c"}, "a;"},
                {R"({"a":1,"":2})", {""}, {}, ";"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        std::string names;
        for (const cfgElement& e : walkText(row.json, "", row.include, row.exclude))
            names += e.name + ";";
        EXPECT_EQ(names, row.names);
    }
    cfgElementList nested = walkText(R"({"a":[{"c":1}]})", "", {}, {"c"});
    EXPECT_EQ(nested.front().objArray.front().elements.front().name, "a/c");
}

TEST(Walk, RepeatedNameReplacesInPlace) {
    EXPECT_EQ(describe(walkText(R"({"a/b":1,"z":0,"a":{"b":"two"}})")),
              "4 [a/b] \"a/b\": \"two\"\n3 [z] \"z\": 0\n");
    // Into a list that already holds the name: kind, path string and functions all change.
    cfgElementList existing{cfgElement("y", 9, "old", noRelease), cfgElement("q", 1)};
    cfgElementList out = walkText(R"({"x":1,"y":null})", "", {}, {}, existing);
    EXPECT_EQ(describe(out), "0 [] \"y\": null\n3 [] \"q\": 1\n3 [x] \"x\": 1\n");
    EXPECT_EQ(out.front().freeFn, nullptr);
    // Within one object-array item, but never across items.
    EXPECT_EQ(describe(walkText(R"({"a":[{"x/y":1,"x":{"y":2}},{"x/y":3}]})")),
              "10 [a] \"a\": [\n  \"\": {\n    \"a/x/y\": 2\n  },\n  \"\": {\n    \"a/x/y\": "
              "3\n  }\n]\n");
}

TEST(Walk, LargeFlatObject) {
    const int n = 50000;
    std::string json = "{\"a/b\":0";
    for (int i = 0; i < n; ++i) json += ",\"k" + std::to_string(i) + "\":" + std::to_string(i);
    json += ",\"a\":{\"b\":-1}}";
    cfgElementList out = walkText(json);
    ASSERT_EQ(out.size(), size_t(n) + 1);
    EXPECT_EQ(out.front().name, "a/b");
    EXPECT_EQ(out.front().intValue, -1);
    int wrong = 0, i = -1;
    for (const cfgElement& e : out) {
        if (i >= 0 && (e.name != "k" + std::to_string(i) || e.intValue != i || e.kind != CFG_INT))
            ++wrong;
        ++i;
    }
    EXPECT_EQ(wrong, 0);
}

TEST(AddCfgElement, ReplacesTheFirstMatchInPlaceOrAppends) {
    auto names = [](const cfgElementList& list) {
        std::string s;
        for (const cfgElement& e : list) s += e.name + "=" + e.toString(0) + ";";
        return s;
    };
    cfgElementList list{cfgElement("a", 1), cfgElement("b", 2), cfgElement("a", 3)};
    jsonCfgPlus::addCfgElement(list, cfgElement("a", 9), false);
    EXPECT_EQ(names(list), "a=\"a\": 1;b=\"b\": 2;a=\"a\": 3;");

    cfgElement replacement("a", std::list<std::string>{"s"}, "k");
    replacement.printFn = [](apiCfgPlusEntry*, unsigned int) -> char* { return nullptr; };
    jsonCfgPlus::addCfgElement(list, replacement, true);
    EXPECT_EQ(names(list), "a=\"a\": [\"s\"];b=\"b\": 2;a=\"a\": 3;");
    EXPECT_EQ(list.front().key, "k");
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
    struct Row {
        std::string key;
        Keys list;
        bool found;
    } rows[] = {
        {"", {""}, true},
        {"", {"a"}, false},
        {"a", {}, false},
        {"b", {"a", "b"}, true},
        {"ab", {"a", "abc"}, false},
        {"a", {"A", "a "}, false},
        {std::string("a\0b", 3), {"a"}, false},
        {std::string("a\0b", 3), {std::string("a\0b", 3)}, true},
    };
    for (const Row& row : rows) EXPECT_EQ(jsonCfgPlus::inList(row.key, row.list), row.found);
}

}  // namespace
