// SPDX-License-Identifier: MIT
// Reading the debug settings file, and the four exported entries over the singleton.
#include "api/debug_cfg.h"

#include <tinyxml2.h>

#include <string>

#include "base/decimal_int_priv.h"
#include "base/diag.h"
#include "base/entry_guard_priv.h"
#include "document/read_file.h"

namespace {

// Stores the element's decimal text, narrowed to one byte, when the element has text.
void readSwitch(const tinyxml2::XMLElement* parent, const char* name, uint8_t& out) {
    const tinyxml2::XMLElement* element = parent->FirstChildElement(name);
    if (element == nullptr || element->GetText() == nullptr) return;
    // The conversion's exception is left to escape: a broken settings file is the developer's
    // to fix, and a silent 0 would hide it.
    out = static_cast<uint8_t>(jcp::decimalInt(element->GetText()));
}

}  // namespace

jsonCfgPlusDebugCfg jsonCfgPlusDebugCfg::m_inst;

void jsonCfgPlusDebugCfg::loadConfigurations() {
    jcp::diag("Loading XML Config file: ", m_path);
    tinyxml2::XMLDocument doc;
    tinyxml2::XMLError rc = doc.LoadFile(m_path.c_str());
    if (rc != tinyxml2::XML_SUCCESS) {
        jcp::diag("xml load file error, rc=", static_cast<int>(rc));
        return;
    }
    const tinyxml2::XMLElement* config = doc.FirstChildElement("config");
    if (config == nullptr) {
        jcp::diag("xml parse error.");
        return;
    }
    if (const tinyxml2::XMLElement* debug = config->FirstChildElement("debug")) {
        readSwitch(debug, "cap", m_debug.cap);
        readSwitch(debug, "tproxy", m_debug.tproxy);
        readSwitch(debug, "cfcgi", m_debug.cfcgi);
    }

    const tinyxml2::XMLElement* cfg = config->FirstChildElement("cfg");
    if (cfg == nullptr) return;
    if (const tinyxml2::XMLElement* saveCfg = cfg->FirstChildElement("saveCfg")) {
        const char* text = saveCfg->GetText();
        m_debug.saveCfg = text != nullptr && std::string(text) == "true" ? 1 : 0;
    }
    const tinyxml2::XMLElement* applyCfg = cfg->FirstChildElement("applyCfg");
    if (applyCfg == nullptr) return;
    m_applyCfgPath = applyCfg->GetText() != nullptr ? applyCfg->GetText() : "";
}

const char* jsonCfgPlusDebugCfg::getApplyCfgPayload() {
    m_applyCfgPayload.clear();
    if (m_applyCfgPath.empty() || !jcp::readWholeFile(m_applyCfgPath, m_applyCfgPayload)) {
        m_applyCfgPayload.clear();
        return nullptr;
    }
    return m_applyCfgPayload.c_str();
}

void jsonCfgPlusDebugCfg::setApplyCfgPath(const std::string& path) {
    m_applyCfgPath = path;
    m_applyCfgPayload.clear();
}

void jsonCfgPlusDebugCfg::show() const {
    jcp::diag("debug settings file: ", m_path);
    jcp::diag("  cap=", static_cast<int>(m_debug.cap));
    jcp::diag("  tproxy=", static_cast<int>(m_debug.tproxy));
    jcp::diag("  cfcgi=", static_cast<int>(m_debug.cfcgi));
    jcp::diag("  saveCfg=", m_debug.saveCfg != 0 ? "true" : "false");
    jcp::diag("  applyCfg=", m_applyCfgPath);
}

extern "C" jsonCfgPlusDebug* getJsonCfgPlusDebugCfg(void) {
    jsonCfgPlusDebugCfg& settings = jsonCfgPlusDebugCfg::m_inst;
    // A switch that is not a number changes no switch, as an unreadable file does; the record
    // itself is always handed back, since a daemon reads it without a check.
    const jsonCfgPlusDebug before = *settings.switches();
    bool loaded = jcp::guardEntry("getJsonCfgPlusDebugCfg", false, [&] {
        settings.loadConfigurations();
        return true;
    });
    if (!loaded) *settings.switches() = before;
    return settings.switches();
}

extern "C" const char* getJsonCfgPlusDebugApplyCfg(void) {
    return jcp::guardEntry("getJsonCfgPlusDebugApplyCfg", nullptr,
                           [] { return jsonCfgPlusDebugCfg::m_inst.getApplyCfgPayload(); });
}

extern "C" void setJsonCfgPlusDebugApplyCfg(const char* path) {
    jcp::guardVoidEntry("setJsonCfgPlusDebugApplyCfg", [path] {
        jsonCfgPlusDebugCfg::m_inst.setApplyCfgPath(path != nullptr ? path : "");
    });
}

extern "C" void printJsonCfgPlusDebugCfg(void) {
    jcp::guardVoidEntry("printJsonCfgPlusDebugCfg", [] { jsonCfgPlusDebugCfg::m_inst.show(); });
}
