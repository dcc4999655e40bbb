// SPDX-License-Identifier: MIT
// The indexed and batched paths of the build give what the one-at-a-time operations give:
// the name index against addCfgElement, the radio and service merges against repeated
// single merges, and the meshpoint-device index against getJsonObject.
#include <gtest/gtest.h>

#include "document/json_by_name_priv.h"
#include "document/json_cfg_plus.h"
#include "document/merge_priv.h"
#include "model/cfg_element_index.h"
#include "test_support.h"

namespace {

std::string render(const std::list<cfgElement>& list) {
    std::string out;
    for (const cfgElement& e : list) out += e.toString(0) + "|" + e.key + "\n";
    return out;
}

std::string render(const std::vector<vns_entry>& services) {
    std::string out;
    for (const vns_entry& s : services) {
        out += "service " + std::to_string(s.index) + "/" + std::to_string(s.radioId) + "/" +
               std::to_string(s.ssidId) + "\n" + render(s.elements);
    }
    return out;
}

std::string render(const std::vector<radio_entry>& radios) {
    std::string out;
    for (const radio_entry& r : radios) {
        out += "radio " + std::to_string(r.id) + " " + r.name + "\n" + render(r.elements) +
               "wlans\n" + render(r.wlans) + "meshpoints\n" + render(r.meshpoints);
    }
    return out;
}

std::list<cfgElement> ints(std::initializer_list<std::pair<const char*, int>> items) {
    std::list<cfgElement> out;
    for (const auto& [name, value] : items) out.emplace_back(name, value, name);
    return out;
}

// One step on a list: an add (with its replace flag) or an append without a name check.
struct Step {
    const char* name;
    int value;
    bool replace;
    bool append;
};

TEST(ElementIndex, ChangesTheListAsTheUnindexedOperationsDo) {
    std::list<cfgElement> nine;
    for (int i = 0; i < 9; ++i) nine.emplace_back("n" + std::to_string(i % 7), i, "");
    std::vector<Step> growing;
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h", "i"})
        growing.push_back({name, int(growing.size()) + 1, true, false});
    growing.insert(growing.end(), {{"a", 10, false, true},
                                   {"j", 11, true, false},
                                   {"a", 12, true, false},
                                   {"b", 13, false, false}});
    struct Row {
        const char* what;
        std::list<cfgElement> start;
        std::vector<Step> steps;
    };
    const Row rows[] = {
        {"new names append", {}, {{"a", 1, true, false}, {"b", 2, true, false}}},
        {"replace true overwrites in place",
         ints({{"a", 1}, {"b", 2}}),
         {{"a", 9, true, false}, {"c", 3, true, false}}},
        {"replace false keeps the first value", ints({{"a", 1}}), {{"a", 9, false, false}}},
        {"the first of two equal names is the one replaced",
         ints({{"a", 1}, {"b", 2}, {"a", 3}}),
         {{"a", 9, true, false}}},
        {"an appended duplicate is never the one found",
         ints({{"a", 1}}),
         {{"a", 5, false, true}, {"a", 9, true, false}}},
        {"a hashed list keeps first positions",
         nine,
         {{"n1", 90, true, false},
          {"x", 1, true, false},
          {"n3", 91, false, false},
          {"x", 2, false, true},
          {"x", 3, true, false}}},
        {"a list that grows past the scan length", {}, growing},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::list<cfgElement> expected = row.start;
        std::list<cfgElement> indexed = row.start;
        cfgElementIndex index(indexed);
        for (const Step& step : row.steps) {
            cfgElement element(step.name, step.value, step.name);
            if (step.append) {
                expected.push_back(element);
                index.append(std::move(element));
            } else {
                jsonCfgPlus::addCfgElement(expected, element, step.replace);
                index.add(std::move(element), step.replace);
            }
        }
        EXPECT_EQ(render(indexed), render(expected));
    }
}

TEST(ElementIndex, FollowsItsListWhenTheListObjectMoves) {
    std::vector<std::list<cfgElement>> lists(1);
    lists[0] = ints(
        {{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}, {"e", 5}, {"f", 6}, {"g", 7}, {"h", 8}, {"i", 9}});
    cfgElementIndex index(lists[0]);
    lists.resize(100);  // the list object moves; its elements do not
    index.rebind(lists[0]);
    index.add(cfgElement("e", 50, "e"), true);
    index.add(cfgElement("z", 26, "z"), true);
    EXPECT_EQ(index.find("e")->intValue, 50);
    EXPECT_EQ(lists[0].size(), 10u);
    EXPECT_EQ(lists[0].back().name, "z");
}

vns_entry service(int radioId, int ssidId, int index, std::list<cfgElement> elements) {
    vns_entry s;
    s.radioId = radioId;
    s.ssidId = ssidId;
    s.index = index;
    s.elements = std::move(elements);
    return s;
}

radio_entry radio(int id, std::list<cfgElement> elements, std::vector<vns_entry> wlans = {},
                  std::vector<vns_entry> meshpoints = {}) {
    radio_entry r;
    r.id = id;
    r.name = "r" + std::to_string(id);
    r.elements = std::move(elements);
    r.wlans = std::move(wlans);
    r.meshpoints = std::move(meshpoints);
    return r;
}

TEST(RadioMerge, AllAtOnceEqualsOneAfterAnother) {
    struct Row {
        const char* what;
        std::vector<radio_entry> present;
        std::vector<radio_entry> built;
    };
    std::vector<radio_entry> descending;
    for (int id = 40; id > 0; --id) descending.push_back(radio(id, ints({{"id", id}})));
    const Row rows[] = {
        {"descending ids into nothing", {}, descending},
        {"one id built three times, WLANs merged by SSID, later meshpoints dropped",
         {},
         {radio(2, ints({{"a", 1}, {"b", 2}}), {service(2, 7, 0, ints({{"x", 1}}))},
                {service(2, 9, 1, ints({{"m", 1}}))}),
          radio(1, ints({{"a", 5}})),
          radio(2, ints({{"b", 20}, {"c", 3}}),
                {service(2, 7, 4, ints({{"x", 10}, {"y", 2}})), service(2, 8, 1, ints({}))},
                {service(2, 10, 2, ints({{"m", 2}}))}),
          radio(2, ints({{"a", 100}}), {service(2, 7, 6, ints({{"y", 20}}))})}},
        {"ids already present merge into the present radios",
         {radio(1, ints({{"a", 1}}), {service(1, 3, 0, ints({{"s", 1}}))}), radio(5, ints({}))},
         {radio(3, ints({{"a", 3}})),
          radio(1, ints({{"a", 10}, {"b", 2}}), {service(1, 3, 2, ints({{"s", 2}}))}),
          radio(6, ints({})), radio(0, ints({}))}},
        {"present radios out of order",
         {radio(5, ints({})), radio(2, ints({}))},
         {radio(3, ints({{"a", 3}})), radio(2, ints({{"b", 1}})), radio(9, ints({}))}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<radio_entry> expected = row.present;
        for (radio_entry built : row.built) jsonCfgPlus::mergeRadioCfgElements(expected, built);
        std::vector<radio_entry> merged = row.present;
        jcp::mergeRadios(merged, std::vector<radio_entry>(row.built));
        EXPECT_EQ(render(merged), render(expected));
    }
}

TEST(ServiceMerge, RepeatedMergesWhileTheVectorGrowsEqualSingleMerges) {
    std::vector<vns_entry> incoming;
    for (int i = 0; i < 300; ++i) {
        std::list<cfgElement> elements;
        for (int k = 0; k < 12; ++k)
            elements.emplace_back("e" + std::to_string((i + k) % 15), i, "");
        incoming.push_back(service(1 + i % 2, i % 5 == 0 ? 1 : i, i % 8, std::move(elements)));
    }
    std::vector<vns_entry> expected;
    for (vns_entry s : incoming) jsonCfgPlus::mergeVnsCfgElement(expected, s);
    std::vector<vns_entry> merged;
    jcp::vnsMerger merger(merged);
    for (vns_entry s : incoming) merger.merge(std::move(s));
    EXPECT_EQ(render(merged), render(expected));
}

TEST(JsonByName, FindsWhatTheArrayScanFinds) {
    json_object* array = json_tokener_parse(
        R"([{"name": "a", "v": 1}, 7, {"name": 3}, {"name": "b"}, {"name": "a", "v": 2},
            {"other": "c"}, {"name": "a\u0000x"}])");
    ASSERT_NE(array, nullptr);
    json_object* object = json_tokener_parse(R"({"name": "a"})");
    for (json_object* list : {array, object, static_cast<json_object*>(nullptr)}) {
        jcp::jsonByName index(list, "name");
        for (const std::string& name :
             std::vector<std::string>{"a", "b", "c", "", "3", std::string("a\0x", 3)}) {
            SCOPED_TRACE(name);
            EXPECT_EQ(index.find(name), jsonCfgObj::getJsonObject("name", name, list));
        }
    }
    json_object_put(array);
    json_object_put(object);
}

}  // namespace
