// SPDX-License-Identifier: MIT
// lint's driver: the syntax check with line and column, the shared context, and the order in
// which the checks run.
#include "lint/lint_priv.h"

#include <algorithm>
#include <climits>

#include "base/control_escape_priv.h"
#include "document/parse_text_priv.h"
#include "lint/lint_context_priv.h"
#include "lint/strict_json_priv.h"

namespace jcp::lint {

void Findings::error(const std::string& pointer, const std::string& message) {
    add(Problem{Severity::Error, pointer, message});
}

void Findings::warning(const std::string& pointer, const std::string& message) {
    add(Problem{Severity::Warning, pointer, message});
}

std::string oneLine(const std::string& text) {
    return escapeControls(text, ControlEscape::jsonUnicode, false);
}

void Findings::add(Problem problem) {
    problem.message = oneLine(problem.message);
    if (problem.line == 0 && m_members != nullptr)
        m_members->locate(problem.pointer, problem.line, problem.column);
    m_problems.push_back(std::move(problem));
}

bool Findings::amend(const std::string& pointer, const std::string& text) {
    for (Problem& p : m_problems) {
        if (p.pointer != pointer) continue;
        p.message += text;
        return true;
    }
    return false;
}

size_t Findings::count(Severity severity) const {
    return static_cast<size_t>(
        std::count_if(m_problems.begin(), m_problems.end(),
                      [severity](const Problem& p) { return p.severity == severity; }));
}

std::string pointerTo(const std::string& base, const std::string& key) {
    std::string out = base + "/";
    for (char c : key) {
        if (c == '~') {
            out += "~0";
        } else if (c == '/') {
            out += "~1";
        } else {
            out += c;
        }
    }
    return out;
}

std::string pointerTo(const std::string& base, size_t index) {
    return base + "/" + std::to_string(index);
}

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

bool isType(json_object* value, json_type type) {
    return json_object_is_type(value, type) != 0;
}

std::string describeType(json_object* value) {
    switch (json_object_get_type(value)) {
        case json_type_null:
            return "null";
        case json_type_boolean:
            return "a boolean";
        case json_type_double:
            return "a decimal number";
        case json_type_int:
            return "an integer";
        case json_type_object:
            return "an object";
        case json_type_array:
            return "an array";
        case json_type_string:
            return "a string";
    }
    return "a value";
}

namespace {

void addSyntaxProblem(const std::string& text, size_t offset, Severity severity,
                      const std::string& what, Findings& out) {
    Problem problem{severity, "", what};
    problem.rule = "syntax";
    TextPositions(text).at(offset, problem.line, problem.column);
    out.add(std::move(problem));
}

// Parses as the build does (json-c's tokener with its default nesting limit), so what fails
// here is what the AP refuses; null after reporting the syntax problem.
json_object* parseText(const std::string& text, Findings& out) {
    jcp::ParsedText parsed = jcp::parseDocumentText(text.data(), text.size());
    const json_tokener_error error = parsed.error;
    const size_t end = parsed.end;
    if (error == json_tokener_continue) {
        addSyntaxProblem(text, text.size(), Severity::Error,
                         "the text ends before the document does", out);
        return nullptr;
    }
    if (error != json_tokener_success) {
        // The tokener stops on the offending character.
        bool byteOrderMark = end == 0 && text.compare(0, 3, "\xEF\xBB\xBF") == 0;
        addSyntaxProblem(text, end, Severity::Error,
                         byteOrderMark ? "a byte-order mark starts the text; json-c refuses it, "
                                         "so the AP refuses the document"
                                       : json_tokener_error_desc(error),
                         out);
        return nullptr;
    }
    size_t rest = text.find_first_not_of(" \t\r\n", end);
    if (rest != std::string::npos) {
        addSyntaxProblem(text, rest, Severity::Warning,
                         "text after the end of the document is ignored", out);
    }
    return parsed.root;
}

struct RootGuard {
    json_object* root;
    ~RootGuard() {
        if (root != nullptr) json_object_put(root);
    }
};

}  // namespace

Context::Context(json_object* root) : m_root(root) {
    if (!isType(root, json_type_object)) return;
    json_object_object_foreach(root, key, value) {
        if (m_tables.count(key) != 0) continue;
        m_tables.emplace(key, std::make_unique<jsonCfgObj>(key, value, "name"));
        std::string at = pointerTo("", key);
        if (isType(value, json_type_array)) {
            size_t count = json_object_array_length(value);
            for (size_t i = 0; i < count; ++i)
                setPointer(json_object_array_get_idx(value, i), pointerTo(at, i));
        } else if (isType(value, json_type_object) && std::string(key) != "device") {
            json_object_object_foreach(value, member, item) setPointer(item, pointerTo(at, member));
        }
    }
    if (const jsonCfgObj* devices = table("device")) {
        m_device = devices->findJsonElement(0u);
        m_devicePointer = isType(devices->json(), json_type_array) ? "/device/0" : "/device";
        setPointer(m_device, m_devicePointer);
    }
    std::string profileName;
    if (table("profile") != nullptr &&
        jsonCfgObj::getJsonStrValue("profile_name", m_device, profileName))
        m_builtProfile = resolve("profile", profileName);

    // In build order: the built profile's interfaces, then the device's, then the others.
    auto addList = [this](json_object* owner, bool built) {
        json_object* list = jsonCfgObj::getJsonObject("interface", owner);
        if (list != nullptr) m_interfaceLists.push_back({list, pointerOf(list), built});
    };
    addList(m_builtProfile, true);
    addList(m_device, true);
    if (const jsonCfgObj* profiles = table("profile")) {
        if (isType(profiles->json(), json_type_array)) {
            size_t count = json_object_array_length(profiles->json());
            for (size_t i = 0; i < count; ++i) {
                json_object* profile = json_object_array_get_idx(profiles->json(), i);
                if (profile != m_builtProfile) addList(profile, false);
            }
        }
    }
}

const jsonCfgObj* Context::table(const std::string& name) const {
    auto found = m_tables.find(name);
    return found == m_tables.end() ? nullptr : found->second.get();
}

json_object* Context::resolve(const std::string& tableName, const std::string& name) const {
    const jsonCfgObj* target = table(tableName);
    return target == nullptr ? nullptr : target->findJsonElement(name);
}

std::string Context::pointerOf(json_object* object) const {
    auto found = m_pointers.find(object);
    return found == m_pointers.end() ? std::string() : found->second;
}

void Context::setPointer(json_object* object, const std::string& pointer) {
    if (object == nullptr) return;
    m_pointers[object] = pointer;
    // Members of a table item are found by pointer too (interface lists, BSS maps).
    if (isType(object, json_type_object)) {
        json_object_object_foreach(object, key, value) {
            if (isType(value, json_type_array) || isType(value, json_type_object))
                m_pointers.emplace(value, pointerTo(pointer, key));
        }
    }
}

Findings lintText(const std::string& text) {
    Findings out;
    RootGuard guard{parseText(text, out)};
    if (out.count(Severity::Error) != 0) return out;
    out.locateIn(checkStrictJson(text, out));
    if (!isType(guard.root, json_type_object)) {
        out.error("", "the document is " + describeType(guard.root) +
                          ", not an object; the AP refuses it");
        return out;
    }
    Context ctx(guard.root);
    checkTables(ctx, out);
    checkReferences(ctx, out);
    checkUnused(ctx, out);
    checkInterfaces(ctx, out);
    checkServices(ctx, out);
    checkFilterRules(ctx, out);
    checkLibrary(ctx, text, out);
    checkTypes(ctx, out);  // last: it leaves out what the checks above said already
    return out;
}

}  // namespace jcp::lint
