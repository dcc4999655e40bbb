// SPDX-License-Identifier: MIT
// lint: the top-level tables, every reference by name between objects, and the objects that
// nothing refers to. Which members name which table, and which tables hold named objects, is
// the schema table's to say.
#include <cstring>
#include <stdexcept>

#include "lint/lint_context_priv.h"
#include "lint/schema_table_priv.h"

namespace jcp::lint {

namespace {

// A member of one object that names an object of another table.
struct Reference {
    const char* member;
    const char* table;
};

// The schema's kind of the objects of a top-level table.
const schema::Kind& kindOf(const char* tableName) {
    for (const schema::TopLevel& top : schema::topLevel()) {
        if (std::strcmp(top.name, tableName) == 0 && top.kind != nullptr) return *top.kind;
    }
    throw std::logic_error(std::string("no schema kind for ") + tableName);
}

// The member of kind that names an object of another table; the first, when it has several.
Reference firstReference(const schema::Kind& kind) {
    for (const schema::Member& m : kind.members) {
        if (m.reference != nullptr) return {m.name, m.reference};
    }
    throw std::logic_error(std::string("no reference in ") + kind.name);
}

// The kind of the objects a member of kind holds.
const schema::Kind& memberKind(const schema::Kind& kind, const char* member) {
    for (const schema::Member& m : kind.members) {
        if (std::strcmp(m.name, member) == 0 && m.kind != nullptr) return *m.kind;
    }
    throw std::logic_error(std::string("no member ") + member + " in " + kind.name);
}

// Follows one reference member if from has it; the target, or null when it does not resolve.
json_object* follow(Context& ctx, json_object* from, const std::string& fromPointer,
                    const Reference& ref, Findings& out, bool required = false) {
    json_object* value = nullptr;
    std::string at = pointerTo(fromPointer, ref.member);
    if (!isType(from, json_type_object) || !json_object_object_get_ex(from, ref.member, &value)) {
        if (required)
            out.error(fromPointer, "has no " + quoted(ref.member) + "; the build skips it");
        return nullptr;
    }
    if (!isType(value, json_type_string)) {
        out.error(at, quoted(ref.member) + " must name a " + quoted(ref.table) +
                          " object, but is " + describeType(value) + "; the build ignores it");
        return nullptr;
    }
    std::string name = json_object_get_string(value);
    json_object* target = ctx.resolve(ref.table, name);
    if (target == nullptr) {
        out.error(at, quoted(name) + " names no " + quoted(ref.table) + " object");
        return nullptr;
    }
    ctx.markReferenced(target);
    if (!isType(target, json_type_object)) {
        out.error(at, quoted(name) + " resolves to " + describeType(target) + " in " +
                          quoted(ref.table) + ", not to an object");
        return nullptr;
    }
    return target;
}

// Follows every member of the object that the schema says names an object of another table.
void followAll(Context& ctx, json_object* from, const std::string& fromPointer,
               const schema::Kind& kind, Findings& out) {
    for (const schema::Member& m : kind.members) {
        if (m.reference != nullptr) follow(ctx, from, fromPointer, {m.name, m.reference}, out);
    }
}

void checkNamedTable(Context& ctx, const char* tableName, Findings& out) {
    const jsonCfgObj* t = ctx.table(tableName);
    if (t == nullptr) return;
    json_object* items = t->json();
    std::string at = pointerTo("", tableName);
    if (isType(items, json_type_object)) {
        // Object form: each member is an object found by its key.
        json_object_object_foreach(items, key, item) {
            if (!isType(item, json_type_object))
                out.error(pointerTo(at, key), "is " + describeType(item) + ", not an object");
        }
        return;
    }
    if (!isType(items, json_type_array)) {
        out.error(at, quoted(tableName) + " is " + describeType(items) +
                          "; it must be an array of named objects");
        return;
    }
    std::unordered_map<std::string, std::string> firstByName;
    size_t count = json_object_array_length(items);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(items, i);
        std::string itemAt = pointerTo(at, i);
        json_object* name = nullptr;
        if (!isType(item, json_type_object)) {
            out.error(itemAt,
                      "is " + describeType(item) + ", not an object; the build never reads it");
        } else if (!json_object_object_get_ex(item, "name", &name)) {
            out.error(itemAt, "has no \"name\"; nothing can refer to it");
        } else if (!isType(name, json_type_string)) {
            out.error(pointerTo(itemAt, "name"),
                      "is " + describeType(name) + ", not a string; nothing can refer to it");
        } else {
            auto inserted = firstByName.emplace(json_object_get_string(name), itemAt);
            if (!inserted.second) {
                out.error(pointerTo(itemAt, "name"),
                          "duplicate name " + quoted(json_object_get_string(name)) + " in " +
                              quoted(tableName) + " (first at " + inserted.first->second +
                              "); this one is never used");
            }
        }
    }
}

// Only element 0 of these is read.
void checkFirstOnly(const Context& ctx, const char* tableName, Findings& out) {
    const jsonCfgObj* t = ctx.table(tableName);
    if (t == nullptr || !isType(t->json(), json_type_array)) return;
    size_t count = json_object_array_length(t->json());
    for (size_t i = 1; i < count; ++i) {
        out.warning(pointerTo(pointerTo("", tableName), i),
                    "only the first " + quoted(tableName) + " is used; this one is ignored");
    }
}

void checkBssMap(Context& ctx, json_object* owner, const std::string& ownerPointer,
                 const char* mapKey, Findings& out) {
    const Reference ref = firstReference(memberKind(schema::interfaceKind(), mapKey));
    json_object* map = jsonCfgObj::getJsonObject(mapKey, owner);
    if (!isType(map, json_type_array)) return;
    std::string mapAt = pointerTo(ownerPointer, mapKey);
    size_t count = json_object_array_length(map);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(map, i);
        std::string itemAt = pointerTo(mapAt, i);
        if (!isType(item, json_type_object)) {
            out.error(itemAt, "is " + describeType(item) + ", not an object; the build skips it");
            continue;
        }
        // A "bss" of the wrong type is reported with the other typed values.
        if (!json_object_object_get_ex(item, "bss", nullptr))
            out.error(itemAt, "has no \"bss\"; the build skips it");
        follow(ctx, item, itemAt, ref, out, true);
    }
}

void checkInterfaceReferences(Context& ctx, const Context::InterfaceList& list, Findings& out) {
    if (!isType(list.list, json_type_array)) return;
    size_t count = json_object_array_length(list.list);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(list.list, i);
        std::string at = pointerTo(list.pointer, i);
        InterfaceRole role = interfaceRole(item);
        if (role == InterfaceRole::Radio) {
            followAll(ctx, item, at, schema::interfaceKind(), out);
            checkBssMap(ctx, item, at, "meshpointbssmap", out);
        }
        if (role == InterfaceRole::Radio || role == InterfaceRole::Bluetooth ||
            role == InterfaceRole::Wired || role == InterfaceRole::Bridge)
            checkBssMap(ctx, item, at, "wlanbssmap", out);
    }
}

// A meshpoint device entry applies to the meshpoint of the same name.
void checkMeshpointDevices(const Context& ctx, json_object* owner, const std::string& ownerAt,
                           Findings& out) {
    json_object* devices = jsonCfgObj::getJsonObject("meshpoint_device", owner);
    if (!isType(devices, json_type_array)) return;
    size_t count = json_object_array_length(devices);
    for (size_t i = 0; i < count; ++i) {
        std::string name;
        if (!jsonCfgObj::getJsonStrValue("name", json_object_array_get_idx(devices, i), name))
            continue;
        if (ctx.resolve("meshpoint", name) == nullptr) {
            out.error(pointerTo(pointerTo(pointerTo(ownerAt, "meshpoint_device"), i), "name"),
                      quoted(name) + " names no \"meshpoint\" object; this entry is never used");
        }
    }
}

}  // namespace

void checkTables(Context& ctx, Findings& out) {
    const jsonCfgObj* devices = ctx.table("device");
    if (devices == nullptr) {
        out.error("", "no \"device\"; the AP refuses the document");
    } else if (!isType(ctx.device(), json_type_object)) {
        out.error(ctx.device() == nullptr ? "/device" : ctx.devicePointer(),
                  "the device must be an object; the build finds none");
    }
    checkFirstOnly(ctx, "device", out);
    checkFirstOnly(ctx, "assoc_acl", out);
    for (const schema::TopLevel& top : schema::topLevel()) {
        if (top.named) checkNamedTable(ctx, top.name, out);
    }
}

void checkReferences(Context& ctx, Findings& out) {
    json_object* device = ctx.device();
    if (isType(device, json_type_object)) {
        followAll(ctx, device, ctx.devicePointer(), kindOf("device"), out);
        json_object* rfDomain = jsonCfgObj::getJsonObject("rf_domain_name", device);
        if (rfDomain != nullptr && ctx.table("profile") == nullptr) {
            out.error(pointerTo(ctx.devicePointer(), "rf_domain_name"),
                      "the RF domain is read only when the document has a \"profile\"");
        }
        checkMeshpointDevices(ctx, device, ctx.devicePointer(), out);
    }
    forEachItem(ctx, "profile", [&](json_object* profile, const std::string& at) {
        followAll(ctx, profile, at, kindOf("profile"), out);
        checkMeshpointDevices(ctx, profile, at, out);
    });
    forEachItem(ctx, "rf_domain", [&](json_object* item, const std::string& at) {
        followAll(ctx, item, at, kindOf("rf_domain"), out);
    });
    forEachItem(ctx, "wlan", [&](json_object* item, const std::string& at) {
        followAll(ctx, item, at, kindOf("wlan"), out);
    });
    forEachItem(ctx, "captive_portal", [&](json_object* item, const std::string& at) {
        followAll(ctx, item, at, kindOf("captive_portal"), out);
    });
    for (const Context::InterfaceList& list : ctx.interfaceLists())
        checkInterfaceReferences(ctx, list, out);
}

void checkUnused(const Context& ctx, Findings& out) {
    for (const schema::TopLevel& top : schema::topLevel()) {
        if (!top.named) continue;
        const char* tableName = top.name;
        // The build reads the first radio QoS policy itself, for the global settings.
        json_object* firstRadioQos = nullptr;
        if (std::strcmp(tableName, "radio_qos") == 0 && ctx.table(tableName) != nullptr)
            firstRadioQos = ctx.table(tableName)->findJsonElement(0u);
        forEachItem(ctx, tableName, [&](json_object* item, const std::string& at) {
            if (ctx.isReferenced(item) || item == firstRadioQos) return;
            std::string name;
            if (isType(ctx.table(tableName)->json(), json_type_array)) {
                // Reported already: an item without a name, or a later duplicate.
                if (!jsonCfgObj::getJsonStrValue("name", item, name)) return;
                if (ctx.resolve(tableName, name) != item) return;
            }
            out.warning(at, "defined but nothing refers to it; it is never used");
        });
    }
}

}  // namespace jcp::lint
