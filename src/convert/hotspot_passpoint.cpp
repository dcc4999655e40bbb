// SPDX-License-Identifier: MIT
// Passpoint advertisement of a WLAN: connection capabilities and operator names; the OSU
// providers have a file of their own.
#include <algorithm>
#include <cctype>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/hotspot_icons.h"
#include "convert/hotspot_print.h"
#include "convert/hotspot_priv.h"

namespace hs2 = jcp::hs2;

namespace {

struct ProtocolName {
    const char* name;
    int number;
};
// The protocols a hotspot commonly states; any other is given by its number.
constexpr ProtocolName kProtocols[] = {{"icmp", 1}, {"tcp", 6}, {"udp", 17}, {"esp", 50}};

int protocolNumber(const cfgElement& e) {
    if (e.kind == CFG_INT) return e.intValue >= 0 && e.intValue <= 255 ? e.intValue : -1;
    if (e.kind != CFG_STRING) return -1;
    for (const ProtocolName& protocol : kProtocols) {
        if (e.strValue == protocol.name) return protocol.number;
    }
    return -1;
}

// A port is a number; a text of decimal digits is taken too, as managers write both.
int portNumber(const cfgElement& e) {
    if (e.kind == CFG_INT) return e.intValue >= 0 && e.intValue <= 65535 ? e.intValue : -1;
    if (e.kind != CFG_STRING || e.strValue.empty() || e.strValue.size() > 5) return -1;
    for (char c : e.strValue) {
        if (std::isdigit(static_cast<unsigned char>(c)) == 0) return -1;
    }
    int port = std::stoi(e.strValue);
    return port <= 65535 ? port : -1;
}

bool readConnCap(const hs2::Item& item, CONN_CAP& out) {
    const cfgElement* protocol = hs2::field(*item.fields, item.prefix, "protocol");
    const cfgElement* port = hs2::field(*item.fields, item.prefix, "port");
    const cfgElement* status = hs2::field(*item.fields, item.prefix, "status");
    int number = protocol != nullptr ? protocolNumber(*protocol) : -1;
    if (number < 0) {
        hs2::warn(item.name, protocol == nullptr
                                 ? std::string("no protocol, dropped")
                                 : "unknown protocol " + hs2::shown(*protocol) + ", dropped");
        return false;
    }
    int portValue = port != nullptr ? portNumber(*port) : -1;
    if (portValue < 0) {
        hs2::warn(item.name, port == nullptr
                                 ? std::string("no port, dropped")
                                 : "port " + hs2::shown(*port) + " is not 0 to 65535, dropped");
        return false;
    }
    std::string state = status != nullptr && status->kind == CFG_STRING ? status->strValue : "";
    if (state != "open" && state != "closed") {
        hs2::warn(item.name, status == nullptr
                                 ? std::string("no status, dropped")
                                 : "status " + hs2::shown(*status) +
                                       " is neither \"open\" nor \"closed\", dropped");
        return false;
    }
    out.protocol = static_cast<uint8_t>(number);
    out.port = static_cast<uint16_t>(portValue);
    out.status = state == "open" ? 1 : 0;
    return true;
}

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsPasspoint(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusVnsPasspoint: processing Passpoint...");
    // One set of icon files for every WLAN: each read once, their bytes bounded together.
    jcp::hs2::IconScope icons;
    for (radio_entry& radio : doc.m_radios) {
        for (vns_entry& wlan : radio.wlans) {
            jcp::EventPlaceScope place(wlan);
            jsonCfgPlusHS2ConnectionCap(wlan);
            jsonCfgPlusVnsHS2OperatorName(wlan);
            jsonCfgPlusVnsHS2OsuSp(wlan, doc.m_global);
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusHS2ConnectionCap(vns_entry& wlan) {
    std::vector<hs2::Item> caps = hs2::items(wlan.elements, "passpoint_policy/cc_variable");
    std::vector<uint8_t> bytes;
    size_t kept = 0;
    for (const hs2::Item& item : caps) {
        if (kept == size_t(kHs2MaxConnCaps)) {
            hs2::warnCut(item.name, kHs2MaxConnCaps);
            break;
        }
        CONN_CAP record{};
        if (!hs2::usable(item) || !readConnCap(item, record)) continue;
        hs2::append(bytes, record);
        ++kept;
    }
    if (kept == 0) return 0;
    hs2::store(wlan.elements, cfgElement("passpoint_policy/cen_cc_variable", std::move(bytes), "",
                                         nullptr, printApiCfgPlusConnCap));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsHS2OperatorName(vns_entry& wlan) {
    hs2::nameList(*this, wlan.elements, "passpoint_policy/operator_name_lang",
                  "passpoint_policy/cen_operator_name_lang");
    return 0;
}
