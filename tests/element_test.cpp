// SPDX-License-Identifier: MIT
// Elements: conversion into caller entries and their release, both renderings, and the walk's
// filters and replacement; the walk of every JSON shape is golden (walk.txt).
#include <gtest/gtest.h>
#include <json-c/json.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "document/json_cfg_plus.h"
#include "model/cfg_element.h"
#include "test_support.h"

namespace {

using namespace std::string_literals;
using Strings = std::list<std::string>;
using Bytes = std::vector<uint8_t>;
using Keys = std::list<std::string>;

int g_customFrees = 0;
// Stands in for a converter's release: frees the value block only, never the name.
void releaseValueOnly(apiCfgPlusEntry* entry) {
    ++g_customFrees;
    delete[] static_cast<uint8_t*>(entry->value);
    entry->value = nullptr;
}
void noRelease(apiCfgPlusEntry*) {}
char* printX(apiCfgPlusEntry*, unsigned int indent) {
    return strdup(indent == 3 ? "X" : "?");
}
char* printY(apiCfgPlusEntry*, unsigned int) {
    return strdup("Y");
}

// An entry converted from an element and released by the standard path.
struct Entry {
    apiCfgPlusEntry e{};
    explicit Entry(const cfgElement& element) { element.toApiCfgPlusEntry(e); }
    ~Entry() { cfgElement::freeApiCfgPlusEntry(e); }
    apiCfgPlusEntry& operator[](size_t i) { return static_cast<apiCfgPlusEntry*>(e.value)[i]; }
};

cfgObjArray items(std::initializer_list<cfgElement> elements) {
    return cfgObjArray(elements);
}
cfgElement object(const std::string& name, std::initializer_list<cfgElement> elements) {
    return cfgElement(name, cfgElementList(elements));
}

// The bytes of a run of values as they lie in memory.
template <typename T>
std::string raw(std::initializer_list<T> values) {
    return std::string(reinterpret_cast<const char*>(values.begin()), values.size() * sizeof(T));
}

TEST(ApiEntry, ValueLayoutByKind) {
    cfgElement odd("odd", 1);
    odd.kind = static_cast<cfgElementKind>(11);
    struct Row {
        cfgElement element;
        int32_t size;
        bool block;
        std::string bytes;  // the start of the value block (a string's NUL included)
    } rows[] = {{cfgElement::makeNull("null", "k"), 0, false, ""},
                {cfgElement::makeEmptyArray("ea", "k"), 0, false, ""},
                {odd, 0, false, ""},
                {cfgElement("f", false), 4, true, raw<int32_t>({0})},
                {cfgElement("s0", ""), 0, true, "\0"s},
                {cfgElement("y", Bytes{0x0A, 0xFF, 0x00}), 3, true, "\x0A\xFF\x00"s},
                {cfgElement("y0", Bytes{}), 0, true, ""},  // a zero-length block still exists
                {cfgElement("il0", std::list<int>{}), 0, true, ""},
                {cfgElement("sl0", Strings{}), 0, true, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element.name);
        apiCfgPlusEntry entry{};
        entry.radio = 77;
        entry.vns = 88;
        row.element.toApiCfgPlusEntry(entry);
        EXPECT_EQ(entry.radio + entry.vns, 77 + 88);
        EXPECT_EQ(entry.type, row.element.kind);
        EXPECT_EQ(std::string(entry.name), row.element.name);
        EXPECT_EQ(entry.size, row.size);
        EXPECT_EQ(entry.freeFn, nullptr);
        EXPECT_EQ(entry.printFn, nullptr);
        EXPECT_EQ(entry.value != nullptr, row.block);
        if (entry.value != nullptr) {
            EXPECT_EQ(std::string(static_cast<char*>(entry.value), row.bytes.size()), row.bytes);
        }
        cfgElement::freeApiCfgPlusEntry(entry);
    }
}

// An object array keeps its functions; each item is an object entry, an empty one included.
TEST(ApiEntry, NestedKindsHoldOneEntryPerItem) {
    Entry a(cfgElement("a", items({object("", {cfgElement("a/x", 1)}), object("", {})}), "a",
                       noRelease, printY));
    EXPECT_EQ(a.e.type, CFG_OBJ_ARRAY);
    EXPECT_EQ(a.e.freeFn, noRelease);
    EXPECT_EQ(a.e.printFn, printY);
    a.e.freeFn = nullptr;  // released by the standard path
    ASSERT_EQ(a.e.size, int32_t(2 * sizeof(apiCfgPlusEntry)));
    EXPECT_EQ(a[0].type, CFG_OBJECT);
    EXPECT_STREQ(a[0].name, "");
    EXPECT_EQ(a[0].size, int32_t(sizeof(apiCfgPlusEntry)));
    EXPECT_STREQ(static_cast<apiCfgPlusEntry*>(a[0].value)->name, "a/x");
    EXPECT_EQ(a[1].size, 0);
    EXPECT_NE(a[1].value, nullptr);
}

TEST(ApiEntryRelease, CustomFreeFnTakesOverTheWholeRelease) {
    g_customFrees = 0;
    apiCfgPlusEntry top{};
    cfgElement("rec", Bytes{1, 2}, "", releaseValueOnly).toApiCfgPlusEntry(top);
    cfgElement::freeApiCfgPlusEntry(top);
    EXPECT_EQ(g_customFrees, 1);
    EXPECT_STREQ(top.name, "rec");  // still allocated: the custom release owns it
    std::free(top.name);

    // Nested inside a standard entry, the inner release is honoured as well.
    apiCfgPlusEntry outer{};
    object("o", {cfgElement("i", 1), cfgElement("rec", Bytes{3}, "", releaseValueOnly)})
        .toApiCfgPlusEntry(outer);
    char* innerName = static_cast<apiCfgPlusEntry*>(outer.value)[1].name;
    cfgElement::freeApiCfgPlusEntry(outer);
    EXPECT_EQ(g_customFrees, 2);
    EXPECT_STREQ(innerName, "rec");
    std::free(innerName);
}

// Both renderers must give the same text for the same tree.
void expectRendering(const cfgElement& element, unsigned int indent, const std::string& expected) {
    EXPECT_EQ(element.toString(indent), expected);
    Entry entry(element);
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(entry.e, indent), expected);
}

// Texts as they are, bytes in hexadecimal and empty values; numbers are golden (walk.txt).
TEST(Render, OneLinePerScalarKind) {
    struct Row {
        cfgElement element;
        unsigned int indent;
        const char* expected;
    } rows[] = {{cfgElement("s", "say \"hi\""), 0, "\"s\": \"say \"hi\"\""},
                {cfgElement("y", Bytes{0x0A, 0xFF, 0x00}), 0, "\"y\": 0x0AFF00"},
                {cfgElement("y", Bytes{}), 0, "\"y\": <NULL>"},
                {cfgElement("sl", Strings{}), 0, "\"sl\": [ ]"},
                {cfgElement("il", std::list<int>{}), 0, "\"il\": [ ]"},
                {object("o", {}), 1, "  \"o\": { }"},
                {cfgElement("a", cfgObjArray{}), 1, "  \"a\": [ ]"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element.name);
        expectRendering(row.element, row.indent, row.expected);
    }
}

TEST(Render, EntryOnlyCases) {
    int32_t seven = 7;
    apiCfgPlusEntry raw{-1, -1, CFG_BOOL, nullptr, &seven, 4, nullptr, nullptr};
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(raw, 0), "\"\": true");  // null name, non-zero
    raw.type = CFG_INT_LIST;
    raw.size = 3;
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(raw, 0), "\"\": [ ]");
    raw.type = CFG_STR_LIST;
    raw.size = int32_t(sizeof(char*)) - 1;
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(raw, 0), "\"\": [ ]");

    // printFn output is the whole result (the sanitizer checks that it is freed).
    cfgElement custom("c", Bytes{0xAB}, "", nullptr, printX);
    Entry alone(custom);
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(alone.e, 3), "X");
    EXPECT_EQ(custom.toString(0), "\"c\": 0xAB");
    Entry parent(object("p", {cfgElement("i", 1), cfgElement("c", 2, "", nullptr, printY)}));
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(parent.e, 0), "\"p\": {\n  \"i\": 1,\nY\n}");
}

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
        SCOPED_TRACE(testing::Message() << "row " << (&row - rows) << ": " << row.json);
        std::string names;
        for (const cfgElement& e : walkText(row.json, "", row.include, row.exclude))
            names += e.name + ";";
        EXPECT_EQ(names, row.names);
    }
    cfgElementList nested = walkText(R"({"a":[{"c":1}]})", "", {}, {"c"});
    EXPECT_EQ(nested.front().objArray.front().elements.front().name, "a/c");
}

// A name already in the list is replaced where it stands: kind, path string and functions.
TEST(Walk, RepeatedNameReplacesInPlace) {
    cfgElementList existing{cfgElement("y", 9, "old", noRelease), cfgElement("q", 1)};
    cfgElementList out = walkText(R"({"x":1,"y":null})", "", {}, {}, existing);
    EXPECT_EQ(describe(out), "0 [] \"y\": null\n3 [] \"q\": 1\n3 [x] \"x\": 1\n");
    EXPECT_EQ(out.front().freeFn, nullptr);
}

}  // namespace
