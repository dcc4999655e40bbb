// SPDX-License-Identifier: MIT
// What the lint checks share: the document's top-level tables indexed as the build indexes
// them, where each object sits, which objects something refers to, and the build's reading
// of interface items.
#ifndef JSONCFGPLUS_LINT_LINT_CONTEXT_PRIV_H
#define JSONCFGPLUS_LINT_LINT_CONTEXT_PRIV_H

#include <json-c/json.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "document/json_cfg_all.h"
#include "document/json_cfg_plus.h"
#include "lint/lint_priv.h"

namespace jcp::lint {

// "\"name\"": how messages quote keys and names.
std::string quoted(const std::string& text);
// "a string", "an integer", ... for messages about a value's JSON type.
std::string describeType(json_object* value);
bool isType(json_object* value, json_type type);

class Context {
  public:
    explicit Context(json_object* root);

    json_object* root() const { return m_root; }
    // The top-level member, indexed with "name" as the build indexes it; null when absent.
    const jsonCfgObj* table(const std::string& name) const;
    // What a reference to name in table resolves to, exactly as the build resolves it.
    json_object* resolve(const std::string& table, const std::string& name) const;
    // The device object the build uses (element 0 of "device"), its pointer; null when none.
    json_object* device() const { return m_device; }
    const std::string& devicePointer() const { return m_devicePointer; }
    // The profile the device names; null when it names none or there is no "profile" table.
    json_object* builtProfile() const { return m_builtProfile; }

    // The pointer of an item of a top-level table (set by the reference check), or "".
    std::string pointerOf(json_object* object) const;
    void setPointer(json_object* object, const std::string& pointer);
    void markReferenced(json_object* object) { m_referenced.insert(object); }
    bool isReferenced(json_object* object) const { return m_referenced.count(object) != 0; }

    // Every interface list the build may read, with its pointer: the device's, then each
    // profile's (the built profile's first).
    struct InterfaceList {
        json_object* list;
        std::string pointer;
        bool built;  // the build reads it: the built profile's or the device's
    };
    const std::vector<InterfaceList>& interfaceLists() const { return m_interfaceLists; }

  private:
    json_object* m_root;
    std::unordered_map<std::string, std::unique_ptr<jsonCfgObj>> m_tables;
    json_object* m_device = nullptr;
    std::string m_devicePointer;
    json_object* m_builtProfile = nullptr;
    std::unordered_map<json_object*, std::string> m_pointers;
    std::unordered_set<json_object*> m_referenced;
    std::vector<InterfaceList> m_interfaceLists;
};

// How the build treats one interface item.
enum class InterfaceRole {
    Skipped,
    Virtual,
    EthernetPort,
    Radio,
    Bluetooth,
    Uwb,
    Wired,
    Bridge,
    Ignored
};
InterfaceRole interfaceRole(json_object* item);
// The library's reading of a radio, Bluetooth or port item's name: its radio id or why the
// build skips it. Empty for items of any other role.
std::optional<jsonCfgPlus::RadioId> radioIdOf(InterfaceRole role, const std::string& name);

// Calls fn(item, pointer) for every object item of a top-level table, array or object form.
template <typename Fn>
void forEachItem(const Context& ctx, const std::string& table, Fn fn) {
    const jsonCfgObj* t = ctx.table(table);
    if (t == nullptr) return;
    json_object* items = t->json();
    std::string at = pointerTo("", table);
    if (isType(items, json_type_array)) {
        size_t count = json_object_array_length(items);
        for (size_t i = 0; i < count; ++i) {
            json_object* item = json_object_array_get_idx(items, i);
            if (isType(item, json_type_object)) fn(item, pointerTo(at, i));
        }
    } else if (isType(items, json_type_object)) {
        json_object_object_foreach(items, key, item) {
            if (isType(item, json_type_object)) fn(item, pointerTo(at, key));
        }
    }
}

// The check stages, each reporting into out.
void checkTables(Context& ctx, Findings& out);
void checkReferences(Context& ctx, Findings& out);
void checkUnused(const Context& ctx, Findings& out);
void checkInterfaces(const Context& ctx, Findings& out);
void checkServices(const Context& ctx, Findings& out);
void checkTypes(const Context& ctx, Findings& out);
void checkFilterRules(const Context& ctx, Findings& out);
void checkLibrary(const Context& ctx, const std::string& text, Findings& out);

}  // namespace jcp::lint

#endif
