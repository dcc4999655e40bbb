// SPDX-License-Identifier: MIT
// Exports the schema table: each kind of object is one entry of "$defs", each top-level
// member one property of the document.
#include "schema_json.h"

#include <algorithm>
#include <string>
#include <vector>

#include "lint/schema_table_priv.h"

namespace jcp::schema {

namespace {

const char* typeName(Type type) {
    switch (type) {
        case Type::Integer:
            return "integer";
        case Type::Boolean:
            return "boolean";
        case Type::String:
            return "string";
        case Type::Object:
            return "object";
        case Type::Array:
            return "array";
    }
    return "";
}

void add(json_object* object, const char* key, json_object* value) {
    json_object_object_add(object, key, value);
}

void addText(json_object* object, const char* key, const std::string& text) {
    add(object, key, json_object_new_string(text.c_str()));
}

// An object of the one member key.
json_object* only(const char* key, json_object* value) {
    json_object* out = json_object_new_object();
    add(out, key, value);
    return out;
}

json_object* onlyText(const char* key, const std::string& text) {
    return only(key, json_object_new_string(text.c_str()));
}

// A value that matches either schema.
json_object* eitherOf(json_object* first, json_object* second) {
    json_object* forms = json_object_new_array();
    json_object_array_add(forms, first);
    json_object_array_add(forms, second);
    return only("anyOf", forms);
}

json_object* reference(const Kind& kind) {
    return onlyText("$ref", std::string("#/$defs/") + kind.name);
}

// What the member's descriptions tell a person typing it.
std::string description(const Member& member) {
    std::string text;
    auto append = [&text](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
    if (member.reference != nullptr)
        append(std::string("names a \"") + member.reference + "\" object");
    if (member.format != Format::None) append(formatText(member.format));
    if (member.values != nullptr && member.otherwise != nullptr)
        append(std::string("another text: ") + member.otherwise);
    if (member.range.present()) {
        bool channels = member.format == Format::Channel || member.format == Format::ChannelList;
        std::string limits =
            std::to_string(member.range.min) + " to " + std::to_string(member.range.max);
        if (channels) {
            append("the band's channels are " + limits);
        } else if (member.range.outside != nullptr) {
            append(std::string(member.takes(Type::Integer) && member.type != Type::Integer
                                   ? "as a number "
                                   : "") +
                   limits + ", else " + member.range.outside);
        } else {
            append(limits + " (the standard's range)");
        }
    }
    return text;
}

// One value of the member of one JSON type.
json_object* typedSchema(const Member& member, Type type) {
    if (type == Type::Object && member.kind != nullptr) return reference(*member.kind);
    json_object* out = json_object_new_object();
    addText(out, "type", typeName(type));
    if (type == Type::Integer && member.range.present() && member.range.outside != nullptr) {
        add(out, "minimum", json_object_new_int64(member.range.min));
        add(out, "maximum", json_object_new_int64(member.range.max));
    }
    if (type == Type::String) {
        // A country code the AP keeps as written: only described.
        const char* pattern =
            member.format == Format::Country ? nullptr : formatPattern(member.format);
        if (pattern != nullptr) addText(out, "pattern", pattern);
        if (member.format == Format::Ssid) add(out, "maxLength", json_object_new_int(32));
        if (member.values != nullptr) {
            json_object* values = json_object_new_array();
            for (const std::string& v : *member.values)
                json_object_array_add(values, json_object_new_string(v.c_str()));
            add(out, "enum", values);
        }
    }
    return out;
}

// One value of the member (or one item of an array member): any of the types it takes.
json_object* valueSchema(const Member& member, Type type, bool item) {
    std::vector<Type> types = typesOf(member, type);
    if (item) types.erase(std::remove(types.begin(), types.end(), Type::Array), types.end());
    if (types.size() == 1) return typedSchema(member, type);
    json_object* forms = json_object_new_array();
    for (Type t : types) {
        if (t == Type::Array) {
            json_object* array = json_object_new_object();
            addText(array, "type", "array");
            add(array, "items", valueSchema(member, member.items, true));
            json_object_array_add(forms, array);
        } else {
            json_object_array_add(forms, typedSchema(member, t));
        }
    }
    json_object* out = json_object_new_object();
    add(out, "anyOf", forms);
    return out;
}

json_object* memberSchema(const Member& member) {
    json_object* out = nullptr;
    if (member.type == Type::Array && member.also == 0) {
        out = json_object_new_object();
        addText(out, "type", "array");
        if (member.items != Type::Array) add(out, "items", valueSchema(member, member.items, true));
    } else {
        out = valueSchema(member, member.type, false);
    }
    std::string text = description(member);
    if (!text.empty()) {
        // A $ref object gains a sibling description, which 2020-12 allows.
        addText(out, "description", text);
    }
    return out;
}

json_object* kindSchema(const Kind& kind) {
    json_object* out = json_object_new_object();
    addText(out, "type", "object");
    json_object* properties = json_object_new_object();
    for (const Member& member : kind.members) add(properties, member.name, memberSchema(member));
    add(out, "properties", properties);
    if (!kind.conditions.empty()) {
        json_object* all = json_object_new_array();
        for (const Condition& c : kind.conditions) {
            json_object* required = json_object_new_array();
            json_object_array_add(required, json_object_new_string(c.when));
            json_object* when = only("properties", only(c.when, onlyText("const", c.is)));
            add(when, "required", required);
            // Only a text is narrowed; a number stays the code it is.
            json_object* values = json_object_new_array();
            for (const std::string& v : *c.values)
                json_object_array_add(values, json_object_new_string(v.c_str()));
            json_object* narrowed =
                eitherOf(only("not", onlyText("type", "string")), only("enum", values));
            json_object* rule = only("if", when);
            add(rule, "then", only("properties", only(c.then, narrowed)));
            json_object_array_add(all, rule);
        }
        add(out, "allOf", all);
    }
    return out;
}

// A table of named objects: an array of them, or an object whose members are they.
json_object* tableSchema(const TopLevel& top) {
    json_object* asArray = onlyText("type", "array");
    add(asArray, "items", reference(*top.kind));
    if (top.singleObject) return eitherOf(asArray, reference(*top.kind));
    // As lint does, only the object members of a table in object form are its items.
    json_object* item = only("if", onlyText("type", "object"));
    add(item, "then", reference(*top.kind));
    json_object* asObject = onlyText("type", "object");
    add(asObject, "additionalProperties", item);
    return eitherOf(asArray, asObject);
}

}  // namespace

tool::JsonPtr jsonSchema() {
    tool::JsonPtr out(json_object_new_object());
    addText(out.get(), "$schema", "https://json-schema.org/draft/2020-12/schema");
    addText(out.get(), "title", "jsoncfgplus configuration document");
    addText(out.get(), "description",
            "The members the AP's build and converters read. Members not listed are passed "
            "through or ignored; \"jsoncfgplus lint\" reports near misses of listed ones.");
    addText(out.get(), "type", "object");
    json_object* properties = json_object_new_object();
    for (const TopLevel& top : topLevel()) {
        if (top.kind == nullptr) {
            json_object* single = json_object_new_object();
            addText(single, "type", typeName(top.type));
            add(properties, top.name, single);
        } else {
            add(properties, top.name, tableSchema(top));
        }
    }
    add(out.get(), "properties", properties);
    json_object* defs = json_object_new_object();
    for (const Kind* kind : kinds()) add(defs, kind->name, kindSchema(*kind));
    add(out.get(), "$defs", defs);
    return out;
}

}  // namespace jcp::schema
