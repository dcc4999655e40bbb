// SPDX-License-Identifier: MIT
// lint: the document against the schema table. A value of the wrong JSON type is skipped
// silently by the build and the converters, so each one is an error; so is a value the AP
// reads differently from what it says. Values the AP keeps as written but that lie outside
// the standard's range are warnings, and so are unknown members, since the AP ignores them.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <unordered_set>

#include "lint/lint_context_priv.h"
#include "lint/schema_table_priv.h"

namespace jcp::lint {

namespace {

using schema::Format;
using schema::Kind;
using schema::Member;
using schema::Type;

bool hasType(json_object* value, Type type) {
    switch (type) {
        case Type::Integer:
            return isType(value, json_type_int);
        case Type::Boolean:
            return isType(value, json_type_boolean);
        case Type::String:
            return isType(value, json_type_string);
        case Type::Object:
            return isType(value, json_type_object);
        case Type::Array:
            return isType(value, json_type_array);
    }
    return false;
}

void reportType(json_object* value, const std::string& at, const std::vector<Type>& expected,
                Findings& out) {
    std::string types;
    for (size_t i = 0; i < expected.size(); ++i)
        types += std::string(i == 0 ? "" : " or ") + schema::typeText(expected[i]);
    out.error(at,
              "is " + describeType(value) + ", but is read as " + types + "; the value is ignored");
}

// Edits between two names, a swap of two neighbouring letters counting as one: the typing
// slip that most often turns a value into another ("dney").
size_t editDistance(const std::string& a, const std::string& b) {
    // Three rows: the swap looks two rows back.
    std::vector<size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

// A near miss: at most two edits, and fewer for short names, where two edits reach too far.
bool nearMiss(const std::string& typed, const std::string& known) {
    size_t limit = known.size() >= 8 ? 2 : 1;
    size_t lengths =
        typed.size() > known.size() ? typed.size() - known.size() : known.size() - typed.size();
    return lengths <= limit && editDistance(typed, known) <= limit;
}

std::string enumeration(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& v : values) text += (text.empty() ? "" : ", ") + quoted(v);
    return text;
}

const char* formatConsequence(Format format) {
    switch (format) {
        case Format::Channel:
        case Format::ChannelList:
            return "the AP reads only the digits before the first other character, and a "
                   "number without digits makes the whole push fail";
        case Format::Ssid:
            return "an SSID holds at most 32 octets";
        case Format::Mcc:
        case Format::Mnc:
            return "the Passpoint converter drops this network";
        case Format::Language:
            return "the Passpoint converter drops the name or icon it belongs to";
        case Format::Digits:
            return "the connection capability is dropped";
        default:
            return "the AP does not read it as written";
    }
}

// The numbers of a channel text (the format holds) against the band's channels.
void checkChannels(const std::string& text, const std::string& at, const schema::Range& band,
                   Findings& out) {
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(',', start);
        if (end == std::string::npos) end = text.size();
        long channel = std::strtol(text.c_str() + start, nullptr, 10);
        if (channel < band.min || channel > band.max) {
            out.warning(at, "channel " + std::to_string(channel) + " is outside " +
                                std::to_string(band.min) + " to " + std::to_string(band.max) +
                                ", the channels of its band");
            return;
        }
        start = end + 1;
    }
}

void checkString(json_object* value, const std::string& at, const Member& member, Findings& out) {
    std::string text(json_object_get_string(value),
                     static_cast<size_t>(json_object_get_string_len(value)));
    std::string because;
    if (!schema::hasFormat(text, member.format, because)) {
        std::string message = because + "; " + formatConsequence(member.format);
        if (member.format == Format::Country) {
            out.warning(at, because);
        } else {
            out.error(at, message);
        }
    }
    if (because.empty() && member.range.present()) checkChannels(text, at, member.range, out);
    if (member.values == nullptr) return;
    const std::vector<std::string>& values = *member.values;
    if (std::find(values.begin(), values.end(), text) != values.end()) return;
    std::string message =
        "is " + quoted(text) + ", not one of " + enumeration(values) + "; " + member.otherwise;
    for (const std::string& v : values) {
        if (nearMiss(text, v)) {
            message += " (did you mean " + quoted(v) + "?)";
            break;
        }
    }
    out.error(at, message);
}

void checkInteger(json_object* value, const std::string& at, const schema::Range& range,
                  Findings& out) {
    int64_t number = json_object_get_int64(value);
    if (number < INT32_MIN || number > INT32_MAX) {
        out.warning(at, "does not fit in 32 bits; the AP reads " +
                            std::to_string(json_object_get_int(value)));
        return;
    }
    if (!range.present() || (number >= range.min && number <= range.max)) return;
    std::string message = "is " + std::to_string(number) + ", outside " +
                          std::to_string(range.min) + " to " + std::to_string(range.max);
    if (range.outside != nullptr) {
        out.error(at, message + "; " + range.outside);
    } else {
        out.warning(at, message + ", the standard's range");
    }
}

void checkObject(json_object* object, const std::string& at, const Kind& kind, Findings& out);

// One value of the member (or one item of an array member), type the one expected first.
void checkScalar(json_object* value, const std::string& at, Type type, const Member& member,
                 Findings& out) {
    std::vector<Type> types = schema::typesOf(member, type);
    // An array member's items are never arrays themselves.
    if (type != member.type)
        types.erase(std::remove(types.begin(), types.end(), Type::Array), types.end());
    auto found =
        std::find_if(types.begin(), types.end(), [value](Type t) { return hasType(value, t); });
    if (found == types.end()) {
        reportType(value, at, types, out);
    } else if (*found == Type::Integer) {
        checkInteger(value, at, member.range, out);
    } else if (*found == Type::String) {
        checkString(value, at, member, out);
    } else if (*found == Type::Object && member.kind != nullptr) {
        checkObject(value, at, *member.kind, out);
    }
}

void checkMember(json_object* value, const std::string& at, const Member& member, Findings& out) {
    if (member.type != Type::Array || !hasType(value, Type::Array)) {
        checkScalar(value, at, member.type, member, out);
        return;
    }
    if (member.items == Type::Array) return;  // items of any shape
    size_t count = json_object_array_length(value);
    for (size_t i = 0; i < count; ++i)
        checkScalar(json_object_array_get_idx(value, i), pointerTo(at, i), member.items, member,
                    out);
}

const Member* findMember(const Kind& kind, const std::string& name) {
    for (const Member& m : kind.members) {
        if (name == m.name) return &m;
    }
    return nullptr;
}

// known: the members or top-level entries of the table, each with a name.
template <typename Known>
void checkUnknown(json_object* object, const std::string& at, const std::string& key,
                  const std::vector<Known>& known, bool complete, Findings& out) {
    for (const Known& entry : known) {
        const char* candidate = entry.name;
        if (json_object_object_get_ex(object, candidate, nullptr)) continue;
        if (!nearMiss(key, candidate)) continue;
        out.warning(pointerTo(at, key), "unknown member; did you mean " + quoted(candidate) +
                                            "? the AP ignores it, and what it holds is lost");
        return;
    }
    if (complete) out.warning(pointerTo(at, key), "unknown member; the AP ignores it");
}

// A text that another member narrows: reported only when it passed its own member's check.
void checkCondition(json_object* object, const std::string& at, const schema::Condition& c,
                    const Member& then, Findings& out) {
    json_object* when = nullptr;
    json_object* value = nullptr;
    if (!json_object_object_get_ex(object, c.when, &when) || !isType(when, json_type_string) ||
        std::string(json_object_get_string(when)) != c.is ||
        !json_object_object_get_ex(object, c.then, &value) || !isType(value, json_type_string))
        return;
    std::string text = json_object_get_string(value);
    const std::vector<std::string>& all = *then.values;
    if (std::find(all.begin(), all.end(), text) == all.end()) return;
    if (std::find(c.values->begin(), c.values->end(), text) != c.values->end()) return;
    out.error(pointerTo(at, c.then), "is " + quoted(text) + ", not one of " +
                                         enumeration(*c.values) + " for " + quoted(c.when) + " " +
                                         quoted(c.is) + "; " + then.otherwise);
}

void checkObject(json_object* object, const std::string& at, const Kind& kind, Findings& out) {
    json_object_object_foreach(object, key, value) {
        const Member* member = findMember(kind, key);
        if (member != nullptr) {
            checkMember(value, pointerTo(at, key), *member, out);
        } else {
            checkUnknown(object, at, key, kind.members, kind.complete, out);
        }
    }
    for (const schema::Condition& c : kind.conditions)
        checkCondition(object, at, c, *findMember(kind, c.then), out);
}

}  // namespace

void checkTypes(const Context& ctx, Findings& out) {
    // The other checks say more about a name, an item or a rule than its type alone: a
    // pointer they reported on gets no second finding here, nor does anything inside an item
    // of a table they found fault with (a top-level item's own "never used" warning aside).
    std::unordered_set<std::string> reported;
    std::unordered_set<std::string> faulty;
    for (const Problem& p : out.problems()) {
        reported.insert(p.pointer);
        if (std::count(p.pointer.begin(), p.pointer.end(), '/') > 2) faulty.insert(p.pointer);
    }
    auto alreadySaid = [&](const std::string& pointer) {
        if (reported.count(pointer) != 0) return true;
        for (size_t slash = pointer.rfind('/'); slash != std::string::npos && slash != 0;
             slash = pointer.rfind('/', slash - 1)) {
            if (faulty.count(pointer.substr(0, slash)) != 0) return true;
        }
        return false;
    };
    // A near miss is worth saying whatever else was said: a value's suggestion joins the finding
    // at its member, and a misspelt member is named even inside an item found at fault.
    auto valueSuggestion = [](const std::string& message) {
        size_t at = message.find(" (did you mean ");
        return at == std::string::npos ? std::string() : message.substr(at);
    };
    // In an object nothing uses, what would be an error is only a warning.
    auto keep = [&](const Findings& found, bool inUse) {
        for (const Problem& p : found.problems()) {
            if (reported.count(p.pointer) != 0) {
                std::string nearMiss = valueSuggestion(p.message);
                if (!nearMiss.empty()) out.amend(p.pointer, nearMiss);
                continue;
            }
            bool namesMember = p.message.rfind("unknown member; did you mean ", 0) == 0;
            if (alreadySaid(p.pointer) && !namesMember) continue;
            if (inUse || p.severity == Severity::Warning) {
                out.add(p);
            } else {
                out.warning(p.pointer, p.message + " (unused, so the AP never reads it)");
            }
        }
    };

    json_object* root = ctx.root();
    json_object_object_foreach(root, key, value) {
        const schema::TopLevel* top = nullptr;
        for (const schema::TopLevel& t : schema::topLevel()) {
            if (std::string(key) == t.name) top = &t;
        }
        Findings found;
        if (top == nullptr) {
            checkUnknown(root, "", key, schema::topLevel(), false, found);
        } else if (top->kind == nullptr) {
            Member single{top->name, top->type};
            checkScalar(value, pointerTo("", key), top->type, single, found);
        } else if (top->singleObject) {
            if (isType(ctx.device(), json_type_object))
                checkObject(ctx.device(), ctx.devicePointer(), *top->kind, found);
        } else {
            // The build reads the first radio QoS policy itself, for the global settings.
            json_object* first = ctx.table(key)->findJsonElement(0u);
            bool readFirst = std::string(key) == "radio_qos";
            forEachItem(ctx, key, [&](json_object* item, const std::string& at) {
                Findings inItem;
                checkObject(item, at, *top->kind, inItem);
                keep(inItem, !top->named || ctx.isReferenced(item) || item == ctx.builtProfile() ||
                                 (readFirst && item == first));
            });
        }
        keep(found, true);
    }
}

}  // namespace jcp::lint
