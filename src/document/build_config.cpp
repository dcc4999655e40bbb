// SPDX-License-Identifier: MIT
// The build driver: one received document into the global, radio, WLAN and meshpoint lists,
// then the conversion pipeline.
#include "base/build_events_priv.h"
#include "base/diag.h"
#include "document/element_budget.h"
#include "document/json_cfg_plus.h"
#include "document/read_file.h"
#include "document/redis_source.h"

namespace {

const std::string kRule(64, '=');

// Prints the line that says whether a reference resolved; true when it did.
bool announce(const json_object* found, const char* missingLine, const char* resolvedLine) {
    jcp::diag(found != nullptr ? resolvedLine : missingLine);
    return found != nullptr;
}

const std::list<std::string> kTopLevelScalars = {
    "config-version", "personality", "request-id", "cen_time", "ip", "port", "key"};

}  // namespace

int jsonCfgPlus::buildConfig(const char* path) {
    std::string text;
    if (path == nullptr || !jcp::readWholeFile(path, text)) return -1;
    return buildConfig(text.data(), static_cast<unsigned int>(text.size()));
}

int jsonCfgPlus::buildConfig(const char* text, unsigned int len) {
    jcp::diag(kRule);
    jcp::diag("JSON-Q+: buildConfig()...");
    jcp::diag(kRule);

    json_object* root = parse(text, len);
    if (root == nullptr) return -1;
    return buildParsed(root, len);
}

int jsonCfgPlus::buildParsed(json_object* root, size_t textLength) {
    if (m_save != 0) saveJsonCfgPlus(root);
    m_all.build(root);
    reset();

    int result = -1;
    jcp::ElementBudgetScope budget(jcp::elementBudgetFor(textLength));
    try {
        result = buildFromTable(root);
    } catch (const jcp::ElementBudgetExceeded&) {
        jcp::diag("[ERR] document needs more than the element budget of ", budget.budget(),
                  " elements, build stopped.");
        jcp::reportEvent(jcp::EventKind::refused, "",
                         "the document needs more than the element budget of " +
                             std::to_string(budget.budget()) +
                             " elements; the whole document is refused");
    }
    if (result != 0) reset();
    return result;
}

int jsonCfgPlus::buildFromTable(json_object* root) {
    const std::list<std::string> none;
    // Every addition to the global list below goes through this one index.
    cfgElementIndex global(m_global);
    walk(root, "", kTopLevelScalars, none, global);

    std::string configVersion;
    if (jsonCfgObj::getJsonStrValue("config-version", root, configVersion))
        jcp::diag(" config-version: hex=0x", configVersion);
    int requestId = 0;
    if (jsonCfgObj::getJsonIntValue("request-id", root, requestId))
        m_request_id = static_cast<uint32_t>(requestId);
    // Printed whether or not the document carries one: 0 says it did not.
    jcp::diag(" request-id=", static_cast<uint32_t>(requestId));
    int cenTime = 0;
    if (jsonCfgObj::getJsonIntValue("cen_time", root, cenTime)) m_cen_time = cenTime;
    jsonCfgObj::getJsonStrValue("ip", root, m_redis_ip);
    jsonCfgObj::getJsonIntValue("port", root, m_redis_port);
    jsonCfgObj::getJsonStrValue("key", root, m_redis_key);

    if (jsonCfgObj* assocAcl = m_all.findCfgObject("assoc_acl")) {
        if (json_object* first = assocAcl->findJsonElement(0u)) {
            walk(first, "assoc_acl", none, none, global);
        } else {
            global.append(cfgElement("assoc_acl/rule", cfgObjArray(), ""));
        }
    }
    if (json_object* extApps = jsonCfgObj::getJsonObject("cen_ext_app_cfg_tbl", root))
        walk(extApps, "cen_ext_app_cfg_tbl", none, none, global);
    if (jsonCfgObj* radioQos = m_all.findCfgObject("radio_qos")) {
        if (json_object* first = radioQos->findJsonElement(0u))
            walk(first, "radio_qos", none, m_radio_qos_vns_names, global);
    }

    jsonCfgObj* deviceObj = m_all.findCfgObject("device");
    if (deviceObj == nullptr) {
        jcp::diag("[ERR] not found mandatory device.");
        return -1;
    }
    json_object* device = deviceObj->findJsonElement(0u);
    if (m_all.findCfgObject("profile") != nullptr) buildProfileConfig(device, global);

    // Walked last, so a device value replaces the profile's value where it stands.
    walk(device, "", none, {"rf_domain_name", "profile_name"}, global);
    if (json_object* interfaces = jsonCfgObj::getJsonObject("interface", device))
        buildInterfaceConfig(interfaces, nullptr, nullptr, global);

    // A pointer document is replaced by the one it names; the nested build runs the pipeline.
    if (jcp::hasRedisSource(*this)) return jcp::buildFromRedis(*this);
    return m_callback != nullptr ? m_callback(this) : 0;
}

void jsonCfgPlus::buildProfileConfig(json_object* device, cfgElementIndex& global) {
    const std::list<std::string> none;
    json_object* profile = m_all.resolveRelationship(device, "profile_name", "profile");
    json_object* rfDomain = m_all.resolveRelationship(device, "rf_domain_name", "rf_domain");

    if (announce(profile, "[INFO] device: profile not resolved", "device: profile resolved."))
        walk(profile, "", none, {"interface", "name", "type", "management_policy"}, global);

    json_object* management =
        m_all.resolveRelationship(profile, "management_policy", "management_policy");
    if (announce(management, "[INFO] management policy not resolved.",
                 "resolved management policy from profile."))
        walk(management, "management_policy", none, none, global);

    if (announce(rfDomain, "[INFO] device: rf_domain not resolved", "device: resolved rf_domain. "))
        buildRfDomainConfig(rfDomain, global);

    if (json_object* interfaces = jsonCfgObj::getJsonObject("interface", profile)) {
        buildInterfaceConfig(interfaces, jsonCfgObj::getJsonObject("meshpoint_device", profile),
                             jsonCfgObj::getJsonObject("meshpoint_device", device), global);
    }
}

void jsonCfgPlus::buildRfDomainConfig(json_object* rfDomain, cfgElementIndex& global) {
    const std::list<std::string> none;
    walk(rfDomain, "rf_domain", none, {"smart_rf_policy"}, global);

    json_object* sensor =
        m_all.resolveRelationship(rfDomain, "sensor_policy_name", "sensor_policy");
    if (announce(sensor, "[INFO] sensor_policy from rf_domain not resolved.",
                 "resolved sensor_policy from rf_domain."))
        walk(sensor, "rf_domain/sensor_policy", none, none, global);

    json_object* smartRf =
        m_all.resolveRelationship(rfDomain, "smart_rf_policy", "smart_rf_policy");
    if (announce(smartRf, "[INFO] smart_rf_policy from rf_domain not resolved.",
                 "resolved smart_rf_policy from rf_domain.")) {
        walk(smartRf, "rf_domain/smart_rf_policy", none, none, global);
        global.append(cfgElement("smart_rf_cfg",
                                 json_object_to_json_string_ext(
                                     smartRf, JSON_C_TO_STRING_SPACED | JSON_C_TO_STRING_PRETTY),
                                 ""));
    }
}
