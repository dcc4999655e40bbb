// SPDX-License-Identifier: MIT
// Device converters: the AP's name, the management route as plain global elements, and the
// ARP-guard address list packed into the AP's fixed record.
#include <arpa/inet.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "addr/ip_addr.h"
#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/converter.h"
#include "convert/device_print.h"
#include "convert/element_print.h"

namespace {

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

// The network-order address of an entry's "arp_guard_acl/ip", 0 when it is not IPv4 text.
uint32_t arpGuardAddress(const cfgElement& entry) {
    for (const cfgElement& member : entry.elements) {
        if (member.name != "arp_guard_acl/ip") continue;
        // A text that does not parse leaves the address at 0.0.0.0.
        IPAddr2 addr("0.0.0.0");
        bool parsed =
            member.kind == CFG_STRING && addr.assignFromString(member.strValue.c_str()) == 0;
        if (parsed && addr.isV4()) return htonl(addr.v4());
        jcp::reportEvent(jcp::EventKind::defaulted, "ip",
                         (member.kind == CFG_STRING ? "\"" + member.strValue + "\"" : "the value") +
                             " is not an IPv4 address; stored as 0.0.0.0");
        return 0;
    }
    jcp::reportEvent(jcp::EventKind::defaulted, "ip", "the entry has no \"ip\"; stored as 0.0.0.0");
    return 0;
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusApName(jsonCfgPlus& doc) {
    ElementList& global = doc.m_global;
    auto hostname = findCfgElement(global, "hostname");
    if (hostname == global.end() || findCfgElement(global, "cen_ap_name") != global.end()) return 0;
    // A host name that is no text names the AP "": its string value is empty.
    global.insert(hostname, cfgElement("cen_ap_name", hostname->strValue));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRouteCfg(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRouteCfg: Processing Management Gateway. ");
    ElementList& global = doc.m_global;
    auto route = findCfgElement(global, "route");
    if (route == global.end() || route->kind != CFG_OBJ_ARRAY || route->objArray.empty()) return 0;
    const ElementList& first = route->objArray.front().elements;
    global.insert(route, first.begin(), first.end());
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusArpGuard(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusArpGuard: Processing ARP Guard ACL... ");
    ElementList& global = doc.m_global;
    auto acl = findCfgElement(global, "arp_guard_acl");
    if (acl == global.end()) return 0;

    ARP_GUARD_ACL record;
    std::memset(&record, 0, sizeof record);
    // Only an array of entries lists addresses; any other value leaves the list empty.
    const cfgObjArray* entries = acl->kind == CFG_OBJ_ARRAY ? &acl->objArray : nullptr;
    int count = 0;
    if (entries != nullptr) {
        for (const cfgElement& entry : *entries) {
            if (count == kArpGuardMaxEntries) {
                jcp::diag("ARP Guard ACL list(size: ", entries->size(),
                          ") reached max size: ", kArpGuardMaxEntries, ", ignore them");
                jcp::reportEvent(
                    jcp::EventKind::dropped, "arp_guard_acl[" + std::to_string(count) + "]",
                    "the ARP guard list holds at most " + std::to_string(kArpGuardMaxEntries) +
                        " entries; this and later ones are dropped");
                break;
            }
            jcp::EventKeyScope key("arp_guard_acl", static_cast<size_t>(count));
            record.addr[count++] = arpGuardAddress(entry);
        }
    }
    record.count = static_cast<uint16_t>(count);
    jcp::diag("ARP Guard ACL entries:", count);

    std::vector<uint8_t> bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    global.insert(acl, cfgElement("cen_arp_guard_acl", std::move(bytes), "", nullptr,
                                  printApiCfgPlusArpGuard));
    return 0;
}

char* printApiCfgPlusArpGuardEntry(apiCfgPlusEntry* entry, unsigned int indent) {
    std::string text = jcp::entryPrefix(entry, indent) + '"';
    if (entry->value != nullptr && entry->size >= 4)
        text += jcp::networkOrderIpText(static_cast<const unsigned char*>(entry->value));
    return jcp::printed(text + '"');
}

char* printApiCfgPlusArpGuard(apiCfgPlusEntry* entry, unsigned int indent) {
    std::string text = jcp::entryPrefix(entry, indent);
    if (entry->value == nullptr || entry->size < static_cast<int32_t>(sizeof(ARP_GUARD_ACL)))
        return jcp::printed(text + "{ }");
    ARP_GUARD_ACL record;
    std::memcpy(&record, entry->value, sizeof record);
    // A damaged count never reads past the record.
    unsigned int count = record.count < kArpGuardMaxEntries ? record.count : kArpGuardMaxEntries;

    text += "{\n" + std::string(2 * size_t(indent + 1), ' ') +
            "\"count\": " + std::to_string(record.count);
    for (unsigned int i = 0; i < count; ++i) {
        std::string name = std::to_string(i + 1);
        apiCfgPlusEntry slot{};
        slot.type = CFG_BYTES;
        slot.name = &name[0];
        slot.value = &record.addr[i];
        slot.size = sizeof record.addr[i];
        char* line = printApiCfgPlusArpGuardEntry(&slot, indent + 1);
        text += ",\n";
        text += line;
        std::free(line);
    }
    text += "\n" + std::string(2 * size_t(indent), ' ') + "}";
    return jcp::printed(text);
}
