// SPDX-License-Identifier: MIT
// A policy's default class of service and default action, the rate-limit resource table and
// the manager's external applications, each from one element sub-tree into a fixed record.
#include <algorithm>
#include <cstring>

#include "convert/converter.h"
#include "signature/signature_maps.h"

namespace {

constexpr size_t kResourceSlots = 18;

int intOf(const cfgElement& element) {
    return element.kind == CFG_INT ? element.intValue : 0;
}

// Copies at most max characters and the terminator into a field of max + 1 bytes.
void copyCut(char* field, size_t max, const cfgElement& element) {
    if (element.kind != CFG_STRING) return;
    size_t length = std::min(element.strValue.size(), max);
    std::memcpy(field, element.strValue.data(), length);
    field[length] = '\0';
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsDefaultCoS(const cfgElement& element, ap_cos_entry& cos) {
    if (element.kind != CFG_OBJECT) return 0;
    cos.r_flags = 0;
    cos.r_tos = 0;
    cos.r_tosmask = 0;
    cos.r_prio_txq = 0;
    cos.r_rates = 0xFF;
    for (const cfgElement& child : element.elements) {
        const std::string& name = child.name;
        // Unsigned, so a negative or wide value shifts without undefined behaviour.
        const auto value = static_cast<unsigned int>(intOf(child));
        // Deliberate: priority and ingress index are shifted unmasked; only 4 bits survive.
        if (name == "mark_8021p") {
            cos.r_flags |= kCosUp;
            cos.r_prio_txq = static_cast<uint8_t>((cos.r_prio_txq & 0x0Fu) | (value << 4));
        } else if (name == "cen_mark_tos") {
            cos.r_flags |= kCosTos;
            cos.r_tos = static_cast<uint8_t>(value);
        } else if (name == "cen_mark_tosmask") {
            cos.r_tosmask = static_cast<uint8_t>(value);
        } else if (name == "transmit_queue") {
            cos.r_flags |= kCosTxq;
            cos.r_prio_txq = static_cast<uint8_t>((cos.r_prio_txq & 0xF0u) | (value & 0x0Fu));
        } else if (name == "ingress_enable") {
            cos.r_flags |= kCosIrl;  // deliberate: the key's presence enables, whatever its value
        } else if (name == "ingress_rate") {
            cos.r_rates = static_cast<uint8_t>((cos.r_rates & 0x0Fu) | (value << 4));
        } else if (name == "egress_enable") {
            cos.r_flags |= kCosOrl;
        } else if (name == "egress_rate") {
            cos.r_rates = static_cast<uint8_t>((cos.r_rates & 0xF0u) | (value & 0x0Fu));
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsDefaultAction(const cfgElement& element, std::string& action,
                                                     int& vlan) {
    if (element.kind != CFG_OBJECT) return 0;
    int id = 0;
    bool tagged = false;
    bool bridged = true;
    for (const cfgElement& child : element.elements) {
        if (child.name == "allow") {
            if (child.kind == CFG_STRING) action = child.strValue;
        } else if (child.name == "cen_contain_to_vlan/vlan") {
            id = intOf(child);
        } else if (child.name == "cen_contain_to_vlan/cen_tagged") {
            if (child.kind == CFG_BOOL) tagged = child.boolValue;
        } else if (child.name == "cen_contain_to_vlan/cen_bridged") {
            if (child.kind == CFG_BOOL) bridged = child.boolValue;
        }
    }
    if (id != 0) vlan = 0x2000 | (tagged ? 0x4000 : 0) | (bridged ? 0x8000 : 0) | (id & 0x0FFF);
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsResourceTable(const cfgElement& rateLimit,
                                                     std::vector<unsigned int>& slots) {
    if (rateLimit.kind != CFG_OBJ_ARRAY) return 0;
    size_t used = 0;
    for (const cfgElement& object : rateLimit.objArray) {
        unsigned int ingress = 0;
        unsigned int egress = 0;
        for (const cfgElement& child : object.elements) {
            if (child.name == "cen_rate_limit/ingress_rate") ingress = unsigned(intOf(child));
            if (child.name == "cen_rate_limit/egress_rate") egress = unsigned(intOf(child));
        }
        // Objects past the ninth are read but have no slot.
        if (used < kResourceSlots && used + 1 < slots.size()) {
            slots[used] = ingress;
            slots[used + 1] = egress;
            used += 2;
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusExtAppl(const cfgElement& object, EXT_APP_CONFIG& app) {
    for (const cfgElement& child : object.elements) {
        const std::string& name = child.name;
        if (name == "cen_ext_app_cfg_tbl/cen_ext_app_disp_name") {
            copyCut(app.dispName, kExtAppNameMax, child);
        } else if (name == "cen_ext_app_cfg_tbl/cen_ext_app_match_str") {
            copyCut(app.matchStr, kExtAppMatchMax, child);
        } else if (name == "cen_ext_app_cfg_tbl/cen_ext_app_disp_id") {
            app.dispId = static_cast<uint32_t>(intOf(child));
        } else if (name == "cen_ext_app_cfg_tbl/cen_ext_app_id") {
            app.appId = static_cast<uint32_t>(intOf(child));
        } else if (name == "cen_ext_app_cfg_tbl/cen_ext_app_group_id") {
            app.groupId = static_cast<uint32_t>(intOf(child));
        } else if (name == "cen_ext_app_cfg_tbl/cen_ext_app_group_name") {
            cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
            maps.reload();
            // A numeric id earlier in the object wins; one later overwrites the looked-up id.
            if (app.groupId == 0 && child.kind == CFG_STRING)
                app.groupId = static_cast<uint32_t>(maps.findGroupId(child.strValue));
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusExtAppl(const ElementList& objects,
                                            std::vector<EXT_APP_CONFIG>& apps) {
    for (const cfgElement& object : objects) {
        EXT_APP_CONFIG app;
        std::memset(&app, 0, sizeof app);
        int result = jsonCfgPlusExtAppl(object, app);
        if (result == -1) return result;
        apps.push_back(app);
    }
    return 0;
}
