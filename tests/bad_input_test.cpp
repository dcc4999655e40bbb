// Whatever a manager sends ends in a result or a clean failure: every malformed document under
// tests/data/bad, and generated extremes of size and depth.
#include <gtest/gtest.h>

#include <filesystem>

#include "api/jsoncfgplus.h"
#include "test_support.h"

namespace {

struct Outcome {
    bool built = false;
    std::string out;
    std::string err;
};

Outcome parse(const std::string& text) {
    Outcome o;
    o.err = testsupport::captureStderr([&] {
        apiCfgPlusResult* r = testsupport::parseText(text, nullptr, &o.out);
        o.built = r != nullptr;
        // Rendering reads every entry back, so a damaged record would show here too.
        testsupport::captureStdout([&] {
            printJsonCfgPlus(r);
            freeJsonCfgPlus(r);
        });
    });
    return o;
}

TEST(BadInput, EveryStoredShapeEndsCleanly) {
    const std::map<std::string, bool> expectedBuilt = {
        {"array_document.json", false},  {"duplicate_names.json", true},
        {"empty.json", false},           {"members_of_wrong_types.json", true},
        {"null_document.json", false},   {"numbers_out_of_range.json", true},
        {"odd_strings.json", true},      {"references_of_wrong_types.json", true},
        {"scalar_document.json", false}, {"scalar_objects.json", true},
        {"string_document.json", false}, {"trailing_garbage.json", true},
        {"truncated.json", false}};
    size_t seen = 0;
    for (const auto& file : std::filesystem::directory_iterator(testsupport::dataPath("bad"))) {
        std::string name = file.path().filename().string();
        SCOPED_TRACE(name);
        auto expected = expectedBuilt.find(name);
        ASSERT_NE(expected, expectedBuilt.end()) << "add the new file to this table";
        Outcome o = parse(testsupport::readFile(file.path().string()));
        EXPECT_EQ(o.built, expected->second) << o.out << o.err;
        ++seen;
    }
    EXPECT_EQ(seen, expectedBuilt.size());
}

TEST(BadInput, NestingBeyondTheTokenerLimitIsRejected) {
    std::string deep = "{\"device\": {\"a\": ";
    for (int i = 0; i < 200; ++i) deep += "[";
    for (int i = 0; i < 200; ++i) deep += "]";
    deep += "}}";
    Outcome o = parse(deep);
    EXPECT_FALSE(o.built);
    EXPECT_EQ(o.err, "Error: nesting too deep\n");
}

TEST(BadInput, HugeArraysAreWalkedWhole) {
    std::string ints = "{\"device\": {\"ints\": [";
    std::string objects = "{\"device\": {\"objs\": [";
    for (int i = 0; i < 100000; ++i) {
        ints += (i ? "," : "") + std::to_string(i);
        if (i < 20000) objects += (i ? ",{\"k\":" : "{\"k\":") + std::to_string(i) + "}";
    }
    ints += "]}}";
    objects += "]}}";
    apiCfgPlusResult* r = testsupport::parseText(ints);
    ASSERT_NE(r, nullptr);
    ASSERT_EQ(r->global.count, 1);
    EXPECT_EQ(r->global.entries[0].size, 100000 * 4);
    EXPECT_EQ(static_cast<int32_t*>(r->global.entries[0].value)[99999], 99999);
    testsupport::captureStdout([&] { freeJsonCfgPlus(r); });

    r = testsupport::parseText(objects);
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(testsupport::nestedCount(r->global.entries[0]), 20000u);
    testsupport::captureStdout([&] { freeJsonCfgPlus(r); });
}

}  // namespace
