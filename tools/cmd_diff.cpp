// The diff command: what would change on the AP between two documents, entry by entry in the
// global list, per radio, per WLAN slot and meshpoint, and field by field inside records.
#include <json-c/json.h>

#include <cstdio>
#include <exception>
#include <string>
#include <unordered_map>
#include <vector>

#include "args.h"
#include "commands.h"
#include "json_equal.h"
#include "json_out.h"
#include "library_lines.h"

namespace tool {

namespace {

// The exit status when a document cannot be built, as diff(1) reports trouble.
constexpr int kNotBuilt = 2;

struct Change {
    const char* change;   // "added", "removed" or "changed"
    std::string where;    // "global", "radio[R]", "radio[R]/vns[V]", "radio[R]/meshpoint[V]"
    std::string path;     // entry name, then ".field", "[index]" steps
    json_object* before;  // borrowed; unused for "added"
    json_object* after;   // borrowed; unused for "removed"
};

class Differ {
  public:
    std::vector<Change> changes;

    void compareSections(json_object* before, json_object* after) {
        compareEntryLists("global", "", member(before, "global"), member(after, "global"));
        compareKeyedLists("radios", "", before, after);
        compareKeyedLists("vns", "vns", before, after);
        compareKeyedLists("meshpoints", "meshpoint", before, after);
    }

  private:
    static json_object* member(json_object* obj, const char* key) {
        json_object* value = nullptr;
        json_object_object_get_ex(obj, key, &value);
        return value;
    }

    static int intMember(json_object* obj, const char* key) {
        return json_object_get_int(member(obj, key));
    }

    static std::string nameOf(json_object* entry) {
        const char* name = json_object_get_string(member(entry, "name"));
        return name != nullptr ? name : "";
    }

    static size_t length(json_object* array) {
        return json_object_is_type(array, json_type_array) ? json_object_array_length(array) : 0;
    }

    void add(const char* change, const std::string& where, const std::string& path,
             json_object* before, json_object* after) {
        changes.push_back(Change{change, where, path, before, after});
    }

    // Radio, VNS or meshpoint lists, matched by their radio (and VNS) numbers.
    void compareKeyedLists(const char* section, const char* label, json_object* before,
                           json_object* after) {
        auto whereOf = [label](json_object* list) {
            std::string where = "radio[" + std::to_string(intMember(list, "radio")) + "]";
            if (*label != '\0')
                where +=
                    std::string("/") + label + "[" + std::to_string(intMember(list, "vns")) + "]";
            return where;
        };
        json_object* oldLists = member(before, section);
        json_object* newLists = member(after, section);
        std::unordered_map<std::string, json_object*> newByWhere;
        std::vector<std::string> newOrder;
        for (size_t i = 0; i < length(newLists); ++i) {
            json_object* list = json_object_array_get_idx(newLists, i);
            if (newByWhere.emplace(whereOf(list), list).second) newOrder.push_back(whereOf(list));
        }
        std::unordered_map<std::string, bool> seen;
        for (size_t i = 0; i < length(oldLists); ++i) {
            json_object* list = json_object_array_get_idx(oldLists, i);
            std::string where = whereOf(list);
            if (!seen.emplace(where, true).second) continue;
            auto found = newByWhere.find(where);
            compareEntryLists(
                where, "", member(list, "entries"),
                found == newByWhere.end() ? nullptr : member(found->second, "entries"));
        }
        for (const std::string& where : newOrder) {
            if (seen.count(where) == 0)
                compareEntryLists(where, "", nullptr, member(newByWhere[where], "entries"));
        }
    }

    // Entries matched by name; a name that repeats is matched by its occurrence.
    // Nested entries repeat their parent's name as a prefix; the path shows it once.
    static std::vector<std::pair<std::string, json_object*>> keyed(json_object* entries,
                                                                   const std::string& path,
                                                                   const std::string& parent) {
        std::vector<std::pair<std::string, json_object*>> out;
        std::unordered_map<std::string, int> occurrences;
        for (size_t i = 0; i < length(entries); ++i) {
            json_object* entry = json_object_array_get_idx(entries, i);
            std::string name = nameOf(entry);
            if (!parent.empty() && name.size() > parent.size() + 1 &&
                name.compare(0, parent.size() + 1, parent + "/") == 0)
                name.erase(0, parent.size() + 1);
            int seen = occurrences[name]++;
            std::string key;
            if (name.empty()) {
                key = path + "[" + std::to_string(seen) + "]";
            } else {
                key = (path.empty() ? "" : path + ".") + name;
                if (seen > 0) key += "#" + std::to_string(seen + 1);
            }
            out.emplace_back(std::move(key), entry);
        }
        return out;
    }

    void compareEntryLists(const std::string& where, const std::string& path, json_object* before,
                           json_object* after, const std::string& parent = "") {
        auto oldEntries = keyed(before, path, parent);
        auto newEntries = keyed(after, path, parent);
        std::unordered_map<std::string, json_object*> newByKey(newEntries.begin(),
                                                               newEntries.end());
        std::unordered_map<std::string, bool> oldKeys;
        for (const auto& [key, entry] : oldEntries) {
            oldKeys.emplace(key, true);
            auto found = newByKey.find(key);
            if (found == newByKey.end()) {
                add("removed", where, key, member(entry, "value"), nullptr);
            } else {
                compareEntry(where, key, entry, found->second, parent);
            }
        }
        for (const auto& [key, entry] : newEntries) {
            if (oldKeys.count(key) == 0) add("added", where, key, nullptr, member(entry, "value"));
        }
    }

    void compareEntry(const std::string& where, const std::string& path, json_object* before,
                      json_object* after, const std::string& parent) {
        json_object* oldValue = member(before, "value");
        json_object* newValue = member(after, "value");
        int kind = intMember(before, "kind");
        if (sameJson(before, after)) return;
        if (kind != intMember(after, "kind")) {
            add("changed", where, path, oldValue, newValue);
        } else if (kind == CFG_OBJECT || kind == CFG_OBJ_ARRAY) {
            std::string name = nameOf(before);
            compareEntryLists(where, path, oldValue, newValue, name.empty() ? parent : name);
        } else {
            compareValues(where, path, oldValue, newValue);
        }
    }

    // Records field by field, lists item by item, anything else as a whole.
    void compareValues(const std::string& where, const std::string& path, json_object* before,
                       json_object* after) {
        if (sameJson(before, after)) return;
        if (json_object_is_type(before, json_type_object) &&
            json_object_is_type(after, json_type_object)) {
            json_object_object_foreach(before, key, oldField) {
                json_object* newField = nullptr;
                std::string at = path + "." + key;
                if (json_object_object_get_ex(after, key, &newField)) {
                    compareValues(where, at, oldField, newField);
                } else {
                    add("removed", where, at, oldField, nullptr);
                }
            }
            json_object_object_foreach(after, newKey, newField) {
                if (!json_object_object_get_ex(before, newKey, nullptr))
                    add("added", where, path + "." + newKey, nullptr, newField);
            }
        } else if (json_object_is_type(before, json_type_array) &&
                   json_object_is_type(after, json_type_array)) {
            size_t oldCount = length(before);
            size_t newCount = length(after);
            for (size_t i = 0; i < std::max(oldCount, newCount); ++i) {
                std::string at = path + "[" + std::to_string(i) + "]";
                if (i >= newCount) {
                    add("removed", where, at, json_object_array_get_idx(before, i), nullptr);
                } else if (i >= oldCount) {
                    add("added", where, at, nullptr, json_object_array_get_idx(after, i));
                } else {
                    compareValues(where, at, json_object_array_get_idx(before, i),
                                  json_object_array_get_idx(after, i));
                }
            }
        } else {
            add("changed", where, path, before, after);
        }
    }
};

const char* compact(json_object* value) {
    return json_object_to_json_string_ext(value,
                                          JSON_C_TO_STRING_PLAIN | JSON_C_TO_STRING_NOSLASHESCAPE);
}

void printText(const std::vector<Change>& changes) {
    for (const Change& c : changes) {
        std::string line = std::string(c.change) + " " + c.where + ": " + c.path + ": ";
        if (c.before != nullptr || c.after == nullptr) line += compact(c.before);
        if (c.before != nullptr && c.after != nullptr) line += " -> ";
        if (c.after != nullptr || c.before == nullptr) line += compact(c.after);
        std::printf("%s\n", line.c_str());
    }
}

void printJson(const std::vector<Change>& changes) {
    JsonPtr report(json_object_new_object());
    json_object* list = json_object_new_array();
    for (const Change& c : changes) {
        json_object* item = json_object_new_object();
        json_object_object_add(item, "change", json_object_new_string(c.change));
        json_object_object_add(item, "where", json_object_new_string(c.where.c_str()));
        json_object_object_add(item, "path", json_object_new_string(c.path.c_str()));
        // The values belong to the two built trees; the report takes its own references.
        if (std::string(c.change) != "added")
            json_object_object_add(item, "old", json_object_get(c.before));
        if (std::string(c.change) != "removed")
            json_object_object_add(item, "new", json_object_get(c.after));
        json_object_array_add(list, item);
    }
    json_object_object_add(report.get(), "changes", list);
    printJsonDocument(report.get());
}

}  // namespace

int runDiff(int argc, char** argv) {
    Args args(argc, argv, {"json"}, {});
    const std::vector<std::string>& files = args.positionals(2);
    JsonPtr built[2];
    for (int i = 0; i < 2; ++i) {
        std::string text = readInput(files[i]);
        std::string libraryOutput;
        try {
            built[i] = buildToJson(text, libraryOutput);
        } catch (const std::exception& e) {
            // A build that throws did not build either: diff(1)'s trouble, not a difference.
            std::fprintf(stderr, "jsoncfgplus diff: %s was not built: %s\n", files[i].c_str(),
                         e.what());
            return kNotBuilt;
        }
        if (built[i] == nullptr) {
            std::string reason = failureReason(libraryOutput);
            std::fprintf(stderr, "jsoncfgplus diff: %s was not built: %s\n", files[i].c_str(),
                         reason.empty() ? "the library printed no reason" : reason.c_str());
            return kNotBuilt;
        }
    }
    Differ differ;
    differ.compareSections(built[0].get(), built[1].get());
    if (args.has("json")) {
        printJson(differ.changes);
    } else {
        printText(differ.changes);
    }
    return differ.changes.empty() ? 0 : 1;
}

}  // namespace tool
