// SPDX-License-Identifier: MIT
// Element-side dump of a built document, before conversion to entries.
#include "base/diag.h"
#include "document/json_cfg_plus.h"

namespace {

void printList(const std::list<cfgElement>& list, unsigned int indent) {
    for (const cfgElement& element : list) jcp::writeLine(element.toString(indent));
}

}  // namespace

void jsonCfgPlus::printConfig() const {
    jcp::diag("Global Config.");
    printList(m_global, 0);
    for (size_t r = 0; r < m_radios.size(); ++r) {
        const radio_entry& radio = m_radios[r];
        jcp::diag("[Radio#", r, "] radio_id=", radio.id);
        printList(radio.elements, 1);
        for (const vns_entry& wlan : radio.wlans) {
            jcp::diag("  [VNS#", wlan.index, ", ssid_id=", wlan.ssidId, "]");
            printList(wlan.elements, 2);
        }
        for (const vns_entry& meshpoint : radio.meshpoints) {
            jcp::diag("  [MP#", meshpoint.index, ", ssid_id=", meshpoint.ssidId, "]");
            printList(meshpoint.elements, 2);
        }
    }
}
