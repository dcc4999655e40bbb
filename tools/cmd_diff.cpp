// SPDX-License-Identifier: MIT
// The diff command: what would change on the AP between two documents, entry by entry in the
// global list, per radio, per WLAN slot and meshpoint, and inside records; rules, list items and
// WLAN slots matched as a person would, or field by field at their positions with --verbose.
#include <json-c/json.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "args.h"
#include "commands.h"
#include "diff_change.h"
#include "diff_rules.h"
#include "item_pairing.h"
#include "json_equal.h"
#include "json_out.h"
#include "library_lines.h"
#include "saved_documents.h"

namespace tool {

namespace {

// The exit status when a document cannot be read or built, as diff(1) reports trouble.
constexpr int kNotBuilt = 2;

class Differ {
  public:
    // verbose: positions as they are, field by field; otherwise rules and list items by
    // identity and WLANs followed to their new slot.
    explicit Differ(bool verbose) : m_verbose(verbose) {}

    std::vector<Change> changes;

    void compareSections(json_object* before, json_object* after) {
        compareEntryLists("global", "", member(before, "global"), member(after, "global"));
        compareKeyedLists("radios", "", before, after);
        compareKeyedLists("vns", "vns", before, after);
        compareKeyedLists("meshpoints", "meshpoint", before, after);
    }

  private:
    using Lists = std::vector<std::pair<std::string, json_object*>>;

    bool m_verbose;

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

    static std::string indexed(const std::string& path, size_t index) {
        return path + "[" + std::to_string(index) + "]";
    }

    void add(const char* change, const std::string& where, const std::string& path,
             json_object* before, json_object* after, std::string detail = "") {
        changes.push_back(Change{change, where, path, before, after, std::move(detail), ""});
    }

    // The entry named "name" of a WLAN or meshpoint slot: who occupies it; null when empty.
    static json_object* occupant(json_object* list) {
        json_object* entries = member(list, "entries");
        for (size_t i = 0; i < length(entries); ++i) {
            json_object* entry = json_object_array_get_idx(entries, i);
            if (nameOf(entry) == "name") return member(entry, "value");
        }
        return nullptr;
    }

    static bool sameOccupant(json_object* a, json_object* b) {
        return a != nullptr && b != nullptr && sameJson(occupant(a), occupant(b));
    }

    // Radio, VNS or meshpoint lists, matched by their radio (and VNS) numbers; a WLAN or
    // meshpoint that left its slot for another is one "moved" line and its own changes.
    void compareKeyedLists(const char* section, const char* label, json_object* before,
                           json_object* after) {
        auto whereOf = [label](json_object* list) {
            std::string where = "radio[" + std::to_string(intMember(list, "radio")) + "]";
            if (*label != '\0')
                where +=
                    std::string("/") + label + "[" + std::to_string(intMember(list, "vns")) + "]";
            return where;
        };
        // First of each place, in order.
        auto byPlace = [&whereOf](json_object* lists, Lists& ordered,
                                  std::unordered_map<std::string, json_object*>& found) {
            for (size_t i = 0; i < length(lists); ++i) {
                json_object* list = json_object_array_get_idx(lists, i);
                if (found.emplace(whereOf(list), list).second)
                    ordered.emplace_back(whereOf(list), list);
            }
        };
        Lists oldLists;
        Lists newLists;
        std::unordered_map<std::string, json_object*> oldByWhere;
        std::unordered_map<std::string, json_object*> newByWhere;
        byPlace(member(before, section), oldLists, oldByWhere);
        byPlace(member(after, section), newLists, newByWhere);
        auto at = [](const std::unordered_map<std::string, json_object*>& lists,
                     const std::string& where) {
            auto found = lists.find(where);
            return found == lists.end() ? nullptr : found->second;
        };

        std::unordered_map<std::string, std::string> movedTo;  // old place -> new place
        std::unordered_map<std::string, bool> movedInto;
        if (!m_verbose && *label != '\0') {
            // Where each occupant is now, so each slot looks only at its occupant's places.
            std::unordered_map<std::string, std::vector<std::string>> placesOf;
            for (const auto& [place, candidate] : newLists) {
                if (occupant(candidate) != nullptr)
                    placesOf[compactJson(occupant(candidate))].push_back(place);
            }
            for (const auto& [where, list] : oldLists) {
                if (occupant(list) == nullptr || sameOccupant(list, at(newByWhere, where)))
                    continue;
                for (const std::string& place : placesOf[compactJson(occupant(list))]) {
                    if (place == where || movedInto.count(place) != 0 ||
                        sameOccupant(at(newByWhere, place), at(oldByWhere, place)))
                        continue;
                    movedTo[where] = place;
                    movedInto[place] = true;
                    break;
                }
            }
        }
        // A slot left empty by a move, or filled by one, needs no lines of its own.
        auto entriesUnlessEmpty = [](json_object* list) {
            return occupant(list) == nullptr ? nullptr : member(list, "entries");
        };
        for (const auto& [where, list] : oldLists) {
            auto moved = movedTo.find(where);
            if (moved != movedTo.end()) {
                json_object* target = at(newByWhere, moved->second);
                changes.push_back(Change{"moved", where, "name", occupant(list), occupant(target),
                                         compactJson(occupant(target)), moved->second});
                size_t first = changes.size();
                compareEntryLists(moved->second, "", member(list, "entries"),
                                  member(target, "entries"));
                // The radio number follows the slot; the move line says so already.
                changes.erase(
                    std::remove_if(changes.begin() + static_cast<long>(first), changes.end(),
                                   [](const Change& c) { return c.path == "cen_radio_id"; }),
                    changes.end());
                continue;
            }
            json_object* counterpart = at(newByWhere, where);
            if (counterpart != nullptr && movedInto.count(where) != 0) {
                compareEntryLists(where, "", entriesUnlessEmpty(list), nullptr);
            } else {
                compareEntryLists(
                    where, "", member(list, "entries"),
                    counterpart == nullptr ? nullptr : member(counterpart, "entries"));
            }
        }
        for (const auto& [where, list] : newLists) {
            if (oldByWhere.count(where) == 0) {
                compareEntryLists(where, "", nullptr, member(list, "entries"));
            } else if (movedTo.count(where) != 0 && movedInto.count(where) == 0) {
                compareEntryLists(where, "", nullptr, entriesUnlessEmpty(list));
            }
        }
    }

    // Entries matched by name; a name that repeats is matched by its occurrence.
    // Nested entries repeat their parent's name as a prefix; the path shows it once.
    static std::string shortName(const std::string& name, const std::string& parent) {
        if (!parent.empty() && name.size() > parent.size() + 1 &&
            name.compare(0, parent.size() + 1, parent + "/") == 0)
            return name.substr(parent.size() + 1);
        return name;
    }

    static std::vector<std::pair<std::string, json_object*>> keyed(json_object* entries,
                                                                   const std::string& path,
                                                                   const std::string& parent) {
        std::vector<std::pair<std::string, json_object*>> out;
        std::unordered_map<std::string, int> occurrences;
        for (size_t i = 0; i < length(entries); ++i) {
            json_object* entry = json_object_array_get_idx(entries, i);
            std::string name = shortName(nameOf(entry), parent);
            int seen = occurrences[name]++;
            std::string key;
            if (name.empty()) {
                key = indexed(path, static_cast<size_t>(seen));
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
        } else if (kind == CFG_OBJ_ARRAY && !m_verbose) {
            std::string name = nameOf(before);
            compareItems(where, path, oldValue, newValue, name.empty() ? parent : name);
        } else if (kind == CFG_OBJECT || kind == CFG_OBJ_ARRAY) {
            std::string name = nameOf(before);
            compareEntryLists(where, path, oldValue, newValue, name.empty() ? parent : name);
        } else {
            compareValues(where, path, oldValue, newValue);
        }
    }

    // An item's members by their short names, nested items alike: one line's worth of it.
    static json_object* summary(json_object* item, const std::string& parent) {
        json_object* value = member(item, "value");
        int kind = intMember(item, "kind");
        if (kind != CFG_OBJECT && kind != CFG_OBJ_ARRAY) return json_object_get(value);
        std::string name = nameOf(item);
        const std::string& inner = name.empty() ? parent : name;
        json_object* out = kind == CFG_OBJECT ? json_object_new_object() : json_object_new_array();
        for (size_t i = 0; i < length(value); ++i) {
            json_object* child = json_object_array_get_idx(value, i);
            if (kind == CFG_OBJECT) {
                json_object_object_add(out, shortName(nameOf(child), inner).c_str(),
                                       summary(child, inner));
            } else {
                json_object_array_add(out, summary(child, inner));
            }
        }
        return out;
    }

    static std::string summaryText(json_object* item, const std::string& parent) {
        json_object* shown = summary(item, parent);
        std::string text = compactJson(shown);
        json_object_put(shown);
        return text;
    }

    // An item's "precedence" member as text; empty when it has none.
    static std::string precedenceOf(json_object* item, const std::string& parent) {
        json_object* members = member(item, "value");
        for (size_t i = 0; i < length(members); ++i) {
            json_object* child = json_object_array_get_idx(members, i);
            if (shortName(nameOf(child), parent) == "precedence")
                return compactJson(member(child, "value"));
        }
        return "";
    }

    // The items of a list (ACL rules as the document wrote them, endpoints, ...) matched by
    // content: equal items pair first wherever they stand, then items of one precedence, then
    // the rest in order; one line for an item inserted or removed, one when only the order
    // changed, and field by field for a paired item that differs.
    void compareItems(const std::string& where, const std::string& path, json_object* before,
                      json_object* after, const std::string& parent) {
        ItemPairing pairing(before, after);
        auto oldItem = [&pairing](size_t i) { return pairing.oldItem(i); };
        auto newItem = [&pairing](size_t j) { return pairing.newItem(j); };
        const size_t oldCount = pairing.oldCount();
        const size_t newCount = pairing.newCount();
        pairing.pairBy([](json_object* item) { return std::string(compactJson(item)); });
        // The same item at another precedence: moved, as a person moves a rule.
        pairing.pairBy([&parent](json_object* item) {
            json_object* shown = summary(item, parent);
            json_object_object_del(shown, "precedence");
            std::string key = compactJson(shown);
            json_object_put(shown);
            return key;
        });
        // An item without a precedence never pairs by it: its key is unique to it.
        pairing.pairBy([&parent](json_object* item) {
            std::string precedence = precedenceOf(item, parent);
            return precedence.empty() ? "#" + std::to_string(reinterpret_cast<uintptr_t>(item))
                                      : precedence;
        });
        size_t nextOld = 0;
        for (size_t j = 0; j < newCount; ++j) {
            if (pairing.pairOf(j) != ItemPairing::kNone ||
                !precedenceOf(newItem(j), parent).empty())
                continue;
            while (nextOld < oldCount &&
                   (pairing.oldPaired(nextOld) || !precedenceOf(oldItem(nextOld), parent).empty()))
                ++nextOld;
            if (nextOld == oldCount) break;
            pairing.pair(j, nextOld);
        }

        for (size_t i = 0; i < oldCount; ++i) {
            if (!pairing.oldPaired(i))
                add("removed", where, indexed(path, i), oldItem(i), nullptr,
                    summaryText(oldItem(i), parent));
        }
        bool reordered = false;
        size_t lastOld = 0;
        bool anyKept = false;
        for (size_t j = 0; j < newCount; ++j) {
            if (pairing.pairOf(j) == ItemPairing::kNone) {
                add("inserted", where, indexed(path, j), nullptr, newItem(j),
                    summaryText(newItem(j), parent));
                continue;
            }
            json_object* old = oldItem(pairing.pairOf(j));
            std::string oldPrecedence = precedenceOf(old, parent);
            std::string newPrecedence = precedenceOf(newItem(j), parent);
            if (oldPrecedence != newPrecedence) {
                // Paired only when nothing else differs; its new place follows from it.
                add("moved", where, indexed(path, j), old, newItem(j),
                    summaryText(old, parent) + ": precedence: " + oldPrecedence + " -> " +
                        newPrecedence);
                continue;
            }
            if (anyKept && pairing.pairOf(j) < lastOld) reordered = true;
            anyKept = true;
            lastOld = pairing.pairOf(j);
            compareEntry(where, indexed(path, j), old, newItem(j), parent);
        }
        if (reordered) add("reordered", where, path, before, after, "items in another order");
    }

    // Records field by field (filter rules by identity), lists item by item, anything else as
    // a whole.
    void compareValues(const std::string& where, const std::string& path, json_object* before,
                       json_object* after) {
        if (sameJson(before, after)) return;
        if (!m_verbose && areRuleRecords(before, after)) {
            compareRuleRecords(where, path, before, after, changes);
        } else if (json_object_is_type(before, json_type_object) &&
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
                std::string at = indexed(path, i);
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

void printText(const std::vector<Change>& changes) {
    for (const Change& c : changes) {
        std::string line = std::string(c.change) + " " + c.where;
        if (!c.to.empty()) line += " -> " + c.to;
        line += ": " + c.path + ": ";
        if (!c.detail.empty()) {
            line += c.detail;
        } else {
            if (c.before != nullptr || c.after == nullptr) line += compactJson(c.before);
            if (c.before != nullptr && c.after != nullptr) line += " -> ";
            if (c.after != nullptr || c.before == nullptr) line += compactJson(c.after);
        }
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
        if (!c.to.empty()) json_object_object_add(item, "to", json_object_new_string(c.to.c_str()));
        json_object_object_add(item, "path", json_object_new_string(c.path.c_str()));
        if (!c.detail.empty())
            json_object_object_add(item, "detail", json_object_new_string(c.detail.c_str()));
        // The values belong to the two built trees; the report takes its own references.
        std::string change = c.change;
        if (change != "added" && change != "inserted")
            json_object_object_add(item, "old", json_object_get(c.before));
        if (change != "removed") json_object_object_add(item, "new", json_object_get(c.after));
        json_object_array_add(list, item);
    }
    json_object_object_add(report.get(), "changes", list);
    printJsonDocument(report.get());
}

}  // namespace

const char* compactJson(json_object* value) {
    return json_object_to_json_string_ext(value,
                                          JSON_C_TO_STRING_PLAIN | JSON_C_TO_STRING_NOSLASHESCAPE);
}

int runDiff(int argc, char** argv) {
    Args args(argc, argv, {"json", "verbose", "saved"}, {"icon-dir", "saved-dir"});
    if (args.hasOption("saved-dir") && !args.has("saved"))
        throw UsageError("--saved-dir goes with --saved");
    std::vector<std::string> files;
    if (args.has("saved")) {
        args.positionals(0);
        const std::string dir = args.option("saved-dir", "/tmp");
        files = savedDocumentsOldestFirst(dir);
        if (files.size() < 2) {
            std::string found = files.empty() ? "neither exists" : "only " + files[0] + " exists";
            std::fprintf(stderr,
                         "jsoncfgplus diff: --saved needs both %s/json_q1.json and "
                         "%s/json_q2.json; %s\n",
                         dir.c_str(), dir.c_str(), found.c_str());
            return kNotBuilt;
        }
    } else {
        files = args.positionals(2);
    }
    useIconDir(args);
    JsonPtr built[2];
    for (int i = 0; i < 2; ++i) {
        std::string text;
        try {
            text = readInput(files[i]);
        } catch (const std::runtime_error& e) {
            // A file that cannot be read is trouble as well, as for diff(1).
            std::fprintf(stderr, "jsoncfgplus diff: %s\n", e.what());
            return kNotBuilt;
        }
        std::vector<LibraryLine> libraryLines;
        try {
            built[i] = buildToJson(text, libraryLines);
        } catch (const std::exception& e) {
            // A build that throws did not build either: diff(1)'s trouble, not a difference.
            std::fprintf(stderr, "jsoncfgplus diff: %s was not built: %s\n", files[i].c_str(),
                         e.what());
            return kNotBuilt;
        }
        if (built[i] == nullptr) {
            std::string reason = failureReason(libraryLines);
            std::fprintf(stderr, "jsoncfgplus diff: %s was not built: %s\n", files[i].c_str(),
                         reason.empty() ? "the library printed no reason" : reason.c_str());
            return kNotBuilt;
        }
    }
    Differ differ(args.has("verbose"));
    differ.compareSections(built[0].get(), built[1].get());
    if (args.has("json")) {
        printJson(differ.changes);
    } else {
        printText(differ.changes);
    }
    return differ.changes.empty() ? 0 : 1;
}

}  // namespace tool
