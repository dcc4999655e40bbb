// SPDX-License-Identifier: MIT
// Loading, choosing and searching the application-signature tables.
#include "signature/signature_maps.h"

#include <sys/stat.h>
#include <tinyxml2.h>

#include <string>

#include "base/decimal_int_priv.h"
#include "base/diag.h"

namespace {

using NameMap = std::unordered_map<std::string, int>;

// The file's root element of the given name, or null after printing why not.
const tinyxml2::XMLElement* openRoot(tinyxml2::XMLDocument& doc, const std::string& path,
                                     const char* rootName) {
    tinyxml2::XMLError rc = doc.LoadFile(path.c_str());
    if (rc != tinyxml2::XML_SUCCESS) {
        jcp::diag("load xml file: ", path, " with error, rc=", static_cast<int>(rc));
        return nullptr;
    }
    const tinyxml2::XMLElement* root = doc.FirstChildElement(rootName);
    if (root == nullptr) jcp::diag("invalid xml file: ", path);
    return root;
}

// Refills map from the root's children named item; false when the file was unusable and the
// map was left as it was.
bool loadMap(const std::string& path, const char* rootName, const char* item,
             const char* idAttribute, NameMap& map) {
    tinyxml2::XMLDocument doc;
    const tinyxml2::XMLElement* root = openRoot(doc, path, rootName);
    if (root == nullptr) return false;
    map.clear();
    for (const tinyxml2::XMLElement* e = root->FirstChildElement(item); e != nullptr;
         e = e->NextSiblingElement(item)) {
        const char* name = e->Attribute("name");
        const char* id = e->Attribute(idAttribute);
        // The decimal conversion throws on a missing or non-numeric id: the file is broken,
        // and a silent 0 would send every rule naming it to the wrong application.
        map[name != nullptr ? name : ""] = jcp::decimalInt(id != nullptr ? id : "");
    }
    return true;
}

bool isDnsDisplayId(int32_t id) {
    return id >= 5500 && id <= 5563;
}

}  // namespace

cfgPlusSignatureMaps cfgPlusSignatureMaps::m_inst;

void cfgPlusSignatureMaps::load(const std::string& groupFile, const std::string& displayFile) {
    loadFactoryOnce();
    loadPair(groupFile, displayFile);
}

void cfgPlusSignatureMaps::loadPair(const std::string& groupFile, const std::string& displayFile) {
    if (!loadMap(groupFile, "Cockatrice", "AppGroupID", "value", m_groups)) return;
    loadMap(displayFile, "DisplayNames", "DisplayName", "id", m_displays);
}

void cfgPlusSignatureMaps::reload() {
    struct stat status;
    if (stat(m_liveGroupPath.c_str(), &status) != 0) {
        if (m_liveUpdate) {
            loadPair(m_factoryGroupPath, m_factoryDisplayPath);
            m_liveUpdate = false;
        }
        return;
    }
    jcp::diag("live update files exist, change-time=", static_cast<int32_t>(status.st_ctime),
              ", previous-change-time=", m_changeTime);
    if (static_cast<int32_t>(status.st_ctime) <= m_changeTime) {
        jcp::diag("live-update signature up-to date, no need to reload.");
    } else {
        jcp::diag("load live-update signature.");
        // The factory tables lie under the live-update pair, so a live file that does not
        // load leaves the factory ids answering.
        loadFactoryOnce();
        loadPair(m_liveGroupPath, m_liveDisplayPath);
        // Deliberate: the status-change time is compared, the modification time remembered.
        m_changeTime = static_cast<int32_t>(status.st_mtime);
    }
    m_liveUpdate = true;
}

void cfgPlusSignatureMaps::reloadExtended(const std::list<cfgPlusExtendedSig>& signatures) {
    m_extended.clear();
    for (const cfgPlusExtendedSig& signature : signatures) m_extended[signature.name] = signature;
}

void cfgPlusSignatureMaps::loadFactoryOnce() {
    if (m_factoryTried) return;
    // Marked first: factory files that throw do so once, not on every later lookup.
    m_factoryTried = true;
    loadPair(m_factoryGroupPath, m_factoryDisplayPath);
}

int cfgPlusSignatureMaps::findGroupId(std::string name) {
    loadFactoryOnce();
    auto it = m_groups.find(name);
    return it != m_groups.end() ? it->second : 0;
}

int cfgPlusSignatureMaps::findDisplayId(std::string name) {
    loadFactoryOnce();
    auto extended = m_extended.find(name);
    if (extended != m_extended.end()) return extended->second.dispId;
    auto it = m_displays.find(name);
    return it != m_displays.end() ? it->second : 0;
}

cfgPlusExtendedSig cfgPlusSignatureMaps::findDnsEntry(std::string text) {
    loadFactoryOnce();
    // A linear scan: the answer is the first match in the map's own order.
    for (const auto& item : m_extended) {
        const cfgPlusExtendedSig& signature = item.second;
        if (signature.matchStr == text && isDnsDisplayId(signature.dispId)) return signature;
    }
    return cfgPlusExtendedSig();
}

void cfgPlusSignatureMaps::show() const {
    showSummary();
    for (const auto& item : m_groups) jcp::diag("  group \"", item.first, "\": ", item.second);
    for (const auto& item : m_displays) jcp::diag("  display \"", item.first, "\": ", item.second);
    for (const auto& item : m_extended) {
        const cfgPlusExtendedSig& s = item.second;
        jcp::diag("  extended \"", item.first, "\": appId=", s.appId, ", dispId=", s.dispId,
                  ", groupId=", s.groupId, ", match=\"", s.matchStr, "\"");
    }
}

void cfgPlusSignatureMaps::showSummary() const {
    jcp::diag("signature maps: live-update=", m_liveUpdate ? "true" : "false",
              ", change-time=", m_changeTime, ", groups=", m_groups.size(),
              ", displays=", m_displays.size(), ", extended=", m_extended.size());
}

void cfgPlusSignatureMaps::setPaths(const std::string& factoryGroup,
                                    const std::string& factoryDisplay, const std::string& liveGroup,
                                    const std::string& liveDisplay) {
    m_factoryGroupPath = factoryGroup;
    m_factoryDisplayPath = factoryDisplay;
    m_liveGroupPath = liveGroup;
    m_liveDisplayPath = liveDisplay;
}

void cfgPlusSignatureMaps::clear() {
    m_changeTime = 0;
    m_liveUpdate = false;
    m_factoryTried = false;
    m_displays.clear();
    m_groups.clear();
    m_extended.clear();
}
