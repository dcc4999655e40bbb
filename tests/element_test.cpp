// cfgElement: conversion into caller entries and their release, rendering. The everyday kinds
// and layouts of whole documents are c_caller_test's; this suite keeps the corners.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "model/cfg_element.h"
#include "test_support.h"

namespace {

using namespace std::string_literals;
using Strings = std::list<std::string>;
using Bytes = std::vector<uint8_t>;

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

cfgElement object(const std::string& name, std::initializer_list<cfgElement> elements) {
    return cfgElement(name, cfgElementList(elements));
}

// The bytes of a run of values as they lie in memory.
template <typename T>
std::string raw(std::initializer_list<T> values) {
    return std::string(reinterpret_cast<const char*>(values.begin()), values.size() * sizeof(T));
}

TEST(ApiEntry, ValueLayoutOfTheCorners) {
    cfgElement odd("odd", 1);
    odd.kind = static_cast<cfgElementKind>(11);
    struct Row {
        cfgElement element;
        int32_t size;
        bool block;
        std::string bytes;  // the start of the value block (a string's NUL included)
    } rows[] = {{cfgElement::makeEmptyArray("ea", "k"), 0, false, ""},
                {odd, 0, false, ""},
                {cfgElement("f", false), 4, true, raw<int32_t>({0})},
                {cfgElement("s0", ""), 0, true, "\0"s},  // empty values still get a block
                {cfgElement("y", Bytes{0x0A, 0xFF, 0x00}), 3, true, "\x0A\xFF\x00"s},
                {cfgElement("y0", Bytes{}), 0, true, ""},
                {cfgElement("il0", std::list<int>{}), 0, true, ""},
                {cfgElement("sl0", Strings{}), 0, true, ""},
                {object("o0", {}), 0, true, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element.name);
        apiCfgPlusEntry entry{77, 88, 0, nullptr, nullptr, 0, nullptr, nullptr};
        row.element.toApiCfgPlusEntry(entry);
        EXPECT_EQ(entry.radio + entry.vns, 77 + 88);  // left as they are
        EXPECT_EQ(entry.type, row.element.kind);
        EXPECT_EQ(std::string(entry.name), row.element.name);
        EXPECT_EQ(entry.size, row.size);
        EXPECT_EQ(entry.value != nullptr, row.block);
        if (entry.value != nullptr) {
            EXPECT_EQ(std::string(static_cast<char*>(entry.value), row.bytes.size()), row.bytes);
        }
        cfgElement::freeApiCfgPlusEntry(entry);
    }

    // Functions travel with the entry; a nested object holds one entry per element.
    Entry o(cfgElement("o", cfgElementList{cfgElement("s", "v"), cfgElement("i", 3)}, "o",
                       noRelease, printY));
    EXPECT_EQ(o.e.freeFn, noRelease);
    EXPECT_EQ(o.e.printFn, printY);
    o.e.freeFn = nullptr;  // released by the standard path
    EXPECT_EQ(o.e.size, int32_t(2 * sizeof(apiCfgPlusEntry)));
    EXPECT_EQ(o[0].name + ","s + o[1].name, "s,i");
    EXPECT_EQ(*static_cast<int32_t*>(o[1].value), 3);

    // A null array is left alone.
    cfgElement::setApiCfgPlusList(cfgElementList{cfgElement("x", 1)}, nullptr, 0, 0);
    cfgElement::freeApiCfgPlusEntries(nullptr);
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

// Both renderers give the same text for the kinds whole documents seldom show.
TEST(Render, ElementAndEntryAgree) {
    struct Row {
        cfgElement element;
        unsigned int indent;
        const char* expected;
    } rows[] = {{cfgElement("on", true), 2, "    \"on\": true"},
                {cfgElement("s", "say \"hi\""), 0, "\"s\": \"say \"hi\"\""},  // no escaping
                {cfgElement("y", Bytes{0x0A, 0xFF, 0x00}), 0, "\"y\": 0x0AFF00"},
                {cfgElement("y", Bytes{}), 0, "\"y\": <NULL>"},
                {cfgElement("sl", Strings{}), 0, "\"sl\": [ ]"},
                {cfgElement("il", std::list<int>{}), 0, "\"il\": [ ]"},
                {object("o", {}), 1, "  \"o\": { }"},
                {cfgElement("a", cfgObjArray{}), 1, "  \"a\": [ ]"}};
    for (const Row& row : rows) {
        EXPECT_EQ(row.element.toString(row.indent), row.expected);
        Entry entry(row.element);
        EXPECT_EQ(cfgElement::printApiCfgPlusEntry(entry.e, row.indent), row.expected);
    }
}

TEST(Render, EntryOnlyCases) {
    int32_t seven = 7;
    apiCfgPlusEntry raw{-1, -1, CFG_BOOL, nullptr, &seven, 4, nullptr, nullptr};
    EXPECT_EQ(cfgElement::printApiCfgPlusEntry(raw, 0), "\"\": true");  // null name, non-zero
    raw.type = CFG_INT_LIST;
    raw.size = 3;  // too short for one item: nothing is read
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

}  // namespace
