// The build driver: one received document into the global, radio, WLAN and meshpoint lists,
// then the conversion pipeline.
#include "api/diag.h"
#include "document/json_cfg_plus.h"
#include "document/read_file.h"

namespace {

const std::string kRule(64, '=');

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
    if (m_save != 0) saveJsonCfgPlus(root);
    m_all.build(root);
    reset();

    int result = buildFromTable(root);
    if (result != 0) reset();
    return result;
}

int jsonCfgPlus::buildFromTable(json_object* root) {
    const std::list<std::string> none;
    walk(root, "", kTopLevelScalars, none, m_global);

    std::string configVersion;
    if (jsonCfgObj::getJsonStrValue("config-version", root, configVersion))
        jcp::diag(" config-version: hex=0x", configVersion);
    int requestId = 0;
    if (jsonCfgObj::getJsonIntValue("request-id", root, requestId)) {
        m_request_id = static_cast<uint32_t>(requestId);
        jcp::diag(" request-id=", m_request_id);
    }
    int cenTime = 0;
    if (jsonCfgObj::getJsonIntValue("cen_time", root, cenTime)) m_cen_time = cenTime;
    jsonCfgObj::getJsonStrValue("ip", root, m_redis_ip);
    jsonCfgObj::getJsonIntValue("port", root, m_redis_port);
    jsonCfgObj::getJsonStrValue("key", root, m_redis_key);

    return m_callback != nullptr ? m_callback(this) : 0;
}
