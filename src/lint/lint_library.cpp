// SPDX-License-Identifier: MIT
// lint: what the library itself drops, clamps, masks, defaults, reinterprets or refuses. The
// document is built and converted exactly as the AP does, with the library's lines kept off
// standard output; every event the build reports through its seam is mapped from its key path
// back to the JSON Pointer of the member the author wrote. No rule is repeated here.
#include <sys/stat.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "base/entry_guard_priv.h"
#include "convert/hotspot_icons.h"
#include "convert/pipeline_priv.h"
#include "document/json_cfg_plus.h"
#include "lint/lint_context_priv.h"
#include "signature/signature_maps.h"

namespace jcp::lint {

namespace {

class EventCollector final : public jcp::BuildEventSink {
  public:
    EventCollector() { jcp::setBuildEventSink(this); }
    ~EventCollector() override { jcp::setBuildEventSink(nullptr); }
    EventCollector(const EventCollector&) = delete;
    EventCollector& operator=(const EventCollector&) = delete;

    void onEvent(const jcp::BuildEvent& event) override { m_events.push_back(event); }
    const std::vector<jcp::BuildEvent>& events() const { return m_events; }

  private:
    std::vector<jcp::BuildEvent> m_events;
};

// A member that names an object of a table: the build walks the named object under the
// member's own name, so a key path goes on inside it.
const std::pair<const char*, const char*> kReferences[] = {
    {"qos_policy", "wlan_qos"},
    {"mac_in_acl", "mac_acl"},
    {"mac_out_acl", "mac_acl"},
    {"ip_in_acl", "ip_acl"},
    {"ip_out_acl", "ip_acl"},
    {"ipv6_in_acl", "ipv6_acl"},
    {"ipv6_out_acl", "ipv6_acl"},
    {"captive_portal", "captive_portal"},
    {"app_policy", "app_policy"},
    {"passpoint_policy", "passpoint_policy"},
    {"dns_whitelist", "dns_whitelist"},
    {"aaa_policy", "aaa_policy"},
    {"wlan", "wlan"},
    {"meshpoint", "meshpoint"},
};

const char* referencedTable(const std::string& member) {
    for (const auto& ref : kReferences) {
        if (member == ref.first) return ref.second;
    }
    return nullptr;
}

struct Located {
    json_object* object;
    std::string pointer;
};

// One step of a key path: a member name and, after "[i]", an item of the array it holds.
struct Step {
    std::string name;
    long index = -1;
};

// An item inside an item is named after it with a space ("osu_provider[0] icon[1]").
std::vector<Step> stepsOf(const std::string& keyPath) {
    std::vector<Step> steps;
    size_t at = 0;
    while (at < keyPath.size()) {
        size_t slash = keyPath.find_first_of("/ ", at);
        if (slash == std::string::npos) slash = keyPath.size();
        std::string part = keyPath.substr(at, slash - at);
        Step step;
        size_t bracket = part.find('[');
        if (bracket != std::string::npos && part.back() == ']') {
            step.index = std::strtol(part.c_str() + bracket + 1, nullptr, 10);
            part.resize(bracket);
        }
        step.name = part;
        if (!step.name.empty()) steps.push_back(step);
        at = slash + 1;
    }
    return steps;
}

std::string joined(const std::vector<Step>& steps, size_t from) {
    std::string out;
    for (size_t i = from; i < steps.size(); ++i) {
        if (!out.empty()) out += "/";
        out += steps[i].name;
        if (steps[i].index >= 0) out += "[" + std::to_string(steps[i].index) + "]";
    }
    return out;
}

class EventMapper {
  public:
    // An error a check before this one put at a pointer is not told twice.
    EventMapper(const Context& ctx, const Findings& earlier) : m_ctx(ctx) {
        for (const Problem& p : earlier.problems()) {
            if (p.severity == Severity::Error) m_earlier.insert(p.pointer);
        }
    }

    // What the AP reads besides the document, icon files and the classifier's signature
    // files, may be absent where lint runs.
    struct Absent {
        bool icons;
        bool signatures;
    };

    void report(const jcp::BuildEvent& event, Absent absent, Findings& out) {
        std::vector<Step> steps = stepsOf(event.keyPath);
        // Nothing named at no place: the whole document.
        std::vector<Located> bases =
            steps.empty() && event.place.where == jcp::EventPlace::Where::global
                ? std::vector<Located>{{m_ctx.root(), ""}}
                : basesOf(event.place);
        Located best{nullptr, ""};
        size_t bestDone = 0;
        bool found = false;
        for (const Located& base : bases) {
            Located at = base;
            size_t done = follow(at, steps);
            if (!found || done > bestDone) {
                best = at;
                bestDone = done;
                found = true;
            }
            if (done == steps.size()) break;
        }
        std::string message = event.message;
        // A member the author left out is named by the message, or named here.
        if (bestDone < steps.size()) {
            std::string rest = joined(steps, bestDone);
            if (message.find(steps.back().name) == std::string::npos)
                message = quoted(rest) + ": " + message;
        }
        // Every icon and every application would be reported on a machine that is not an AP;
        // the AP's own files decide, so without them there is no verdict.
        if ((absent.icons && event.message.compare(0, 10, "icon file ") == 0) ||
            (absent.signatures && event.message.compare(0, 17, "no signature for ") == 0))
            return;
        if (!m_seen.insert({best.pointer, message}).second || m_earlier.count(best.pointer) != 0)
            return;
        if (!inUse(best.pointer)) {
            out.warning(best.pointer, message + " (unused, so the AP never reads it)");
        } else {
            out.error(best.pointer, message);
        }
    }

  private:
    // An object of a top-level table that nothing names is not built.
    bool inUse(const std::string& pointer) const {
        size_t second = pointer.find('/', 1);
        if (second == std::string::npos) return true;
        size_t third = pointer.find('/', second + 1);
        std::string item = pointer.substr(0, third);
        std::string table = pointer.substr(1, second - 1);
        if (table == "device" || table == "profile") return true;
        const jsonCfgObj* t = m_ctx.table(table);
        if (t == nullptr) return true;
        json_object* object = nullptr;
        json_object* items = t->json();
        std::string key = item.substr(second + 1);
        if (isType(items, json_type_array)) {
            object = json_object_array_get_idx(items, std::strtoul(key.c_str(), nullptr, 10));
        } else if (isType(items, json_type_object)) {
            json_object_object_get_ex(items, key.c_str(), &object);
        }
        return object == nullptr || m_ctx.isReferenced(object);
    }

    // Where the key path of an event at place may start, the likeliest first. The candidates
    // come from indexes made once, so placing every event costs no walk over every interface.
    std::vector<Located> basesOf(const jcp::EventPlace& place) const {
        using Where = jcp::EventPlace::Where;
        std::vector<Located> bases;
        if (place.where == Where::global) {
            // The device is walked last, so its value is the one the AP keeps.
            if (m_ctx.device() != nullptr) bases.push_back({m_ctx.device(), m_ctx.devicePointer()});
            if (json_object* profile = m_ctx.builtProfile())
                bases.push_back({profile, m_ctx.pointerOf(profile)});
            bases.push_back({m_ctx.root(), ""});
            return bases;
        }
        const RadioIndex& radios = radioIndex();
        if (place.where == Where::radio) {
            auto found = radios.byItem.find(place.source);
            if (found != radios.byItem.end()) bases.push_back(found->second);
            return bases;
        }
        auto found = radios.services.find({place.radioId, place.slot, place.ssidId});
        if (found == radios.services.end()) return bases;
        // Per radio item, the map of the place's kind first: a meshpoint turned WLAN is
        // reported as a WLAN, so both maps are searched.
        bool mesh = place.where == Where::meshpoint;
        const std::vector<ServiceInMap>& all = found->second;
        for (size_t group = 0; group < all.size();) {
            size_t end = group;
            while (end < all.size() && all[end].radio == all[group].radio) ++end;
            for (bool preferred : {true, false}) {
                for (size_t i = group; i < end; ++i) {
                    if ((all[i].meshMap == mesh) != preferred) continue;
                    bases.push_back(all[i].service);
                    bases.push_back(all[i].mapItem);
                }
            }
            group = end;
        }
        return bases;
    }

    // A service named in a BSS map of a built interface item, where it and its map item stand.
    struct ServiceInMap {
        size_t radio;  // the interface item's place in build order
        bool meshMap;
        Located service;
        Located mapItem;
    };
    using ServiceKey = std::tuple<int, int64_t, int>;  // radio id, slot, SSID id
    struct ServiceKeyHash {
        size_t operator()(const ServiceKey& key) const {
            return std::hash<int64_t>()(std::get<1>(key)) * 31 +
                   std::hash<int>()(std::get<0>(key)) * 17 + std::hash<int>()(std::get<2>(key));
        }
    };

    // The built interface items, and the services of their BSS maps by radio id, slot and SSID
    // id, in build order.
    struct RadioIndex {
        std::unordered_map<const void*, Located> byItem;
        std::unordered_map<ServiceKey, std::vector<ServiceInMap>, ServiceKeyHash> services;
    };

    const RadioIndex& radioIndex() const {
        if (m_radios) return *m_radios;
        m_radios.emplace();
        size_t order = 0;
        for (const Context::InterfaceList& list : m_ctx.interfaceLists()) {
            if (!list.built || !isType(list.list, json_type_array)) continue;
            size_t count = json_object_array_length(list.list);
            for (size_t i = 0; i < count; ++i, ++order) {
                json_object* item = json_object_array_get_idx(list.list, i);
                Located radio{item, pointerTo(list.pointer, i)};
                m_radios->byItem.emplace(item, radio);
                std::string name;
                jsonCfgObj::getJsonStrValue("name", item, name);
                std::optional<jsonCfgPlus::RadioId> id = radioIdOf(interfaceRole(item), name);
                if (id && id->outcome == jsonCfgPlus::RadioId::Outcome::kId)
                    indexServices(radio, order, id->id);
            }
        }
        return *m_radios;
    }

    void indexServices(const Located& radio, size_t order, int radioId) const {
        for (bool mesh : {false, true}) {
            const char* map = mesh ? "meshpointbssmap" : "wlanbssmap";
            const char* refKey = mesh ? "meshpoint" : "wlan";
            json_object* items = jsonCfgObj::getJsonObject(map, radio.object);
            if (!isType(items, json_type_array)) continue;
            size_t count = json_object_array_length(items);
            for (size_t i = 0; i < count; ++i) {
                json_object* item = json_object_array_get_idx(items, i);
                int bss = 0;
                int ssid = 0;
                std::string name;
                if (!jsonCfgObj::getJsonIntValue("bss", item, bss) ||
                    !jsonCfgObj::getJsonStrValue(refKey, item, name))
                    continue;
                json_object* service = m_ctx.resolve(refKey, name);
                if (service == nullptr ||
                    !jsonCfgObj::getJsonIntValue("cen_ssid_id", service, ssid))
                    continue;
                // In 64 bits: a document's bss may be INT_MIN.
                m_radios->services[{radioId, static_cast<int64_t>(bss) - 1, ssid}].push_back(
                    {order,
                     mesh,
                     {service, m_ctx.pointerOf(service)},
                     {item, pointerTo(pointerTo(radio.pointer, map), i)}});
            }
        }
    }

    // Follows the steps from at as far as the document goes; how many were followed.
    size_t follow(Located& at, const std::vector<Step>& steps) const {
        size_t done = 0;
        for (const Step& step : steps) {
            json_object* value = nullptr;
            if (!isType(at.object, json_type_object) ||
                !json_object_object_get_ex(at.object, step.name.c_str(), &value)) {
                // A BSS map item stands for the service it names.
                if (!followReference(at, "wlan") && !followReference(at, "meshpoint")) break;
                if (!json_object_object_get_ex(at.object, step.name.c_str(), &value)) break;
            }
            std::string pointer = pointerTo(at.pointer, step.name);
            if (isType(value, json_type_string) && referencedTable(step.name) != nullptr &&
                (done + 1 < steps.size() || step.index >= 0)) {
                json_object* target =
                    m_ctx.resolve(referencedTable(step.name), json_object_get_string(value));
                if (target == nullptr) break;
                value = target;
                pointer = m_ctx.pointerOf(target);
            }
            if (isType(value, json_type_array)) {
                // A list read as one object: the build takes its first item.
                long index = step.index >= 0 ? step.index : (done + 1 < steps.size() ? 0 : -1);
                if (index >= 0) {
                    size_t item = itemAt(value, static_cast<size_t>(index));
                    if (item >= json_object_array_length(value)) break;
                    value = json_object_array_get_idx(value, item);
                    pointer = pointerTo(pointer, item);
                }
            }
            at = {value, pointer};
            ++done;
        }
        return done;
    }

    // The walk leaves the nulls of an array out, so the build's item n is the n-th other one;
    // each array's items are listed once, however many events name them.
    size_t itemAt(json_object* array, size_t n) const {
        auto found = m_items.find(array);
        if (found == m_items.end()) {
            std::vector<size_t> items;
            size_t count = json_object_array_length(array);
            for (size_t i = 0; i < count; ++i) {
                if (json_object_array_get_idx(array, i) != nullptr) items.push_back(i);
            }
            found = m_items.emplace(array, std::move(items)).first;
        }
        return n < found->second.size() ? found->second[n] : json_object_array_length(array);
    }

    bool followReference(Located& at, const char* key) const {
        std::string name;
        if (!jsonCfgObj::getJsonStrValue(key, at.object, name)) return false;
        json_object* target = m_ctx.resolve(key, name);
        if (target == nullptr) return false;
        at = {target, m_ctx.pointerOf(target)};
        return true;
    }

    const Context& m_ctx;
    std::set<std::pair<std::string, std::string>> m_seen;
    std::set<std::string> m_earlier;
    mutable std::unordered_map<json_object*, std::vector<size_t>> m_items;
    mutable std::optional<RadioIndex> m_radios;
};

// The pipeline exactly as the parse entry runs it, refusals of the decimal conversion included.
int convertAsParsed(jsonCfgPlus* document) {
    return jcp::guardEntry("jsonCfgPlusParserCallback", -1,
                           [document] { return jcp::runPipeline(*document); });
}

// A pointer document names a Redis server the build would fetch the real one from; lint
// reaches no server, so the library's verdicts are those of the document fetched.
bool namesRedisServer(json_object* root) {
    std::string ip;
    std::string key;
    int port = 0;
    return jsonCfgObj::getJsonStrValue("ip", root, ip) && !ip.empty() &&
           jsonCfgObj::getJsonIntValue("port", root, port) && port != 0 &&
           jsonCfgObj::getJsonStrValue("key", root, key) && !key.empty();
}

bool directoryExists(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

void checkLibrary(const Context& ctx, const std::string& text, Findings& out) {
    if (namesRedisServer(ctx.root())) return;
    EventCollector events;
    {
        jcp::DiagCapture quiet;
        jsonCfgPlus document;
        document.m_callback = &convertAsParsed;
        // A value the decimal conversion refuses fails the document, as it fails a parse; the
        // refusal has been reported as an event on the way.
        // Built from lint's own tree, so that an event's objects are those lint places.
        jcp::guardEntry("lint", -1, [&] {
            return document.buildParsed(json_object_get(ctx.root()), text.size());
        });
    }
    const cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
    EventMapper::Absent absent{!directoryExists(jcp::hs2::iconDir()),
                               maps.groupCount() == 0 && maps.displayCount() == 0};
    EventMapper mapper(ctx, out);
    for (const jcp::BuildEvent& event : events.events()) mapper.report(event, absent, out);
}

}  // namespace jcp::lint
