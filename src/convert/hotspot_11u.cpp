// SPDX-License-Identifier: MIT
// 802.11u advertisement of a WLAN: cellular networks, NAI realms with their EAP methods,
// venue names, network authentication type, and the OSEN rule.
#include <algorithm>
#include <cctype>
#include <cstring>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/hotspot_print.h"
#include "convert/hotspot_priv.h"

namespace hs2 = jcp::hs2;

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

bool allDigits(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) != 0;
    });
}

// The MCC as 3 digits. A number is accepted too: an MCC always has 3 digits, so zero-padding
// it cannot change its meaning.
bool readMcc(const hs2::Item& item, char (&mcc)[kHs2MccSize]) {
    const cfgElement* e = hs2::field(*item.fields, item.prefix, "mcc");
    std::string digits;
    if (e != nullptr && e->kind == CFG_STRING && e->strValue.size() == 3 &&
        allDigits(e->strValue)) {
        digits = e->strValue;
    } else if (e != nullptr && e->kind == CFG_INT && e->intValue >= 0 && e->intValue <= 999) {
        digits = std::to_string(e->intValue);
        digits.insert(0, 3 - digits.size(), '0');
    } else {
        hs2::warn(item.name, e == nullptr ? std::string("no mcc, dropped")
                                          : "mcc " + hs2::shown(*e) + " is not 3 digits, dropped");
        return false;
    }
    return hs2::copyText(mcc, sizeof mcc, digits);
}

// The MNC as 2 or 3 digits; only a text will do, since a number cannot tell "01" from "001".
bool readMnc(const hs2::Item& item, char (&mnc)[kHs2MncSize]) {
    const cfgElement* e = hs2::field(*item.fields, item.prefix, "mnc");
    if (e != nullptr && e->kind == CFG_STRING && allDigits(e->strValue) &&
        (e->strValue.size() == 2 || e->strValue.size() == 3)) {
        return hs2::copyText(mnc, sizeof mnc, e->strValue);
    }
    if (e == nullptr) {
        hs2::warn(item.name, "no mnc, dropped");
    } else if (e->kind == CFG_INT) {
        hs2::warn(item.name, "mnc " + hs2::shown(*e) +
                                 " is a number; give it as a text of 2 or 3 digits, dropped");
    } else {
        hs2::warn(item.name, "mnc " + hs2::shown(*e) + " is not 2 or 3 digits, dropped");
    }
    return false;
}

// An EAP code from its table name, or a number 0 to 255 given as it goes on the air; -1, after
// a warning, for anything else.
int eapCode(const cfgElement& e, const naiEapTable* table, const std::string& item,
            const char* key) {
    if (e.kind == CFG_STRING && table != nullptr) {
        int value = hs2::lookup(*table, e.strValue);
        if (value >= 0) return value;
    } else if (e.kind == CFG_INT && e.intValue >= 0 && e.intValue <= 255) {
        return e.intValue;
    }
    hs2::warn(item, std::string("unknown ") + key + " " + hs2::shown(e) + ", row dropped");
    return -1;
}

// One EAP row; false (after a warning) when it cannot be advertised.
bool readEapRow(const hs2::Item& row, size_t position, EAP_METHOD& out) {
    const ElementList& fields = *row.fields;
    const cfgElement* index = hs2::field(fields, row.prefix, "index");
    const cfgElement* method = hs2::field(fields, row.prefix, "method");
    const cfgElement* authType = hs2::field(fields, row.prefix, "auth_type");
    const cfgElement* authVal = hs2::field(fields, row.prefix, "auth_val");

    // Without an index every row is a method of its own, in document order.
    int order = static_cast<int>(std::min<size_t>(position + 1, 255));
    if (index != nullptr) {
        if (index->kind != CFG_INT || index->intValue < 0 || index->intValue > 255) {
            hs2::warn(row.name, "index " + hs2::shown(*index) + " is not 0 to 255, row dropped");
            return false;
        }
        order = index->intValue;
    }
    if (method == nullptr) {
        hs2::warn(row.name, "no method, row dropped");
        return false;
    }
    int methodCode = eapCode(*method, &naiEapMethod, row.name, "method");
    if (methodCode < 0) return false;
    int typeCode = 0;
    int valCode = 0;
    if (authType != nullptr || authVal != nullptr) {
        if (authType == nullptr || authVal == nullptr) {
            hs2::warn(row.name, "auth_type and auth_val go together, row dropped");
            return false;
        }
        typeCode = eapCode(*authType, &naiEapAuthType, row.name, "auth_type");
        if (typeCode < 0) return false;
        const naiEapTable* values = typeCode == 2   ? &naiEapAuthValId2
                                    : typeCode == 5 ? &naiEapAuthValId5
                                                    : nullptr;
        valCode = eapCode(*authVal, values, row.name, "auth_val");
        if (valCode < 0) return false;
    }
    out.index = static_cast<uint8_t>(order);
    out.method = static_cast<uint8_t>(methodCode);
    out.auth_type = static_cast<uint8_t>(typeCode);
    out.auth_val = static_cast<uint8_t>(valCode);
    return true;
}

bool readRealm(const hs2::Item& item, NAI_REALM& realm) {
    const cfgElement* name = hs2::field(*item.fields, item.prefix, "realm_name");
    if (name == nullptr || name->kind != CFG_STRING || name->strValue.empty()) {
        hs2::warn(item.name, "no realm_name text, dropped");
        return false;
    }
    if (!hs2::copyText(realm.realm_name, sizeof realm.realm_name, name->strValue)) {
        hs2::warn(item.name, "realm_name " + hs2::shown(*name) + " " +
                                 hs2::misfit(name->strValue, sizeof realm.realm_name) +
                                 ", dropped");
        return false;
    }
    std::vector<hs2::Item> rows = hs2::items(*item.fields, item.prefix + "/eap_method");
    std::vector<EAP_METHOD> kept;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (kept.size() == size_t(kHs2MaxEapRows)) {
            hs2::warnCut(rows[i].name, kHs2MaxEapRows);
            break;
        }
        EAP_METHOD row{};
        if (hs2::usable(rows[i]) && readEapRow(rows[i], i, row)) kept.push_back(row);
    }
    // Rows of one method sit together, methods in index order; ties keep document order.
    std::stable_sort(kept.begin(), kept.end(),
                     [](const EAP_METHOD& a, const EAP_METHOD& b) { return a.index < b.index; });
    std::copy(kept.begin(), kept.end(), realm.eap_method);
    realm.eap_count = static_cast<uint8_t>(kept.size());
    return true;
}

struct AuthTypeName {
    const char* name;
    int code;
};
// 802.11u Network Authentication Type Indicator values.
constexpr AuthTypeName kNetAuthTypes[] = {{"acceptance-of-terms", 0},
                                          {"online-enrollment", 1},
                                          {"http-redirection", 2},
                                          {"dns-redirection", 3}};

// The indicator of an "auth_type" value; -1 when unknown.
int netAuthCode(const cfgElement& e) {
    if (e.kind == CFG_INT) return e.intValue >= 0 && e.intValue <= 3 ? e.intValue : -1;
    if (e.kind != CFG_STRING) return -1;
    std::string name = e.strValue;
    std::replace(name.begin(), name.end(), '_', '-');
    for (const AuthTypeName& type : kNetAuthTypes) {
        if (name == type.name) return type.code;
    }
    return -1;
}

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

}  // namespace

namespace jcp {
namespace hs2 {

void nameList(cfgPlusApiConverter& converter, ElementList& wlan, const std::string& from,
              const std::string& to) {
    std::vector<Item> names = items(wlan, from);
    std::vector<uint8_t> bytes;
    size_t kept = 0;
    for (const Item& item : names) {
        if (kept == size_t(kHs2MaxNames)) {
            warnCut(item.name, kHs2MaxNames);
            break;
        }
        NAME_LANG record{};
        if (!usable(item) ||
            !converter.jsonCfgPlusVns11ULangName(*item.fields, item.prefix, item.name, record))
            continue;
        append(bytes, record);
        ++kept;
    }
    if (kept == 0) return;
    store(wlan, cfgElement(to, std::move(bytes), "", nullptr, printApiCfgPlusVenueName));
}

}  // namespace hs2
}  // namespace jcp

int cfgPlusApiConverter::jsonCfgPlusVns11U(jsonCfgPlus& doc) {
    // Deliberate: the line names the Passpoint step, not this one.
    trace(doc, "jsonCfgPlusVnsPasspoint: processing 802.11u...");
    for (radio_entry& radio : doc.m_radios) {
        for (vns_entry& wlan : radio.wlans) {
            jcp::EventPlaceScope place(wlan);
            jsonCfgPlusVns11UCellNet(wlan);
            jsonCfgPlusVns11UNaiRealm(wlan);
            jsonCfgPlusVns11UVenueName(wlan);
            jsonCfgPlusVns11UNetAuthType(wlan);
            jsonCfgPlusOSEN(wlan);
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVns11UCellNet(vns_entry& wlan) {
    std::vector<hs2::Item> plmns = hs2::items(wlan.elements, "passpoint_policy/plmnid");
    std::vector<uint8_t> bytes;
    size_t kept = 0;
    for (const hs2::Item& item : plmns) {
        if (kept == size_t(kHs2MaxPlmns)) {
            hs2::warnCut(item.name, kHs2MaxPlmns);
            break;
        }
        _3GPP_CELL_NET record{};
        if (!hs2::usable(item) || !readMcc(item, record.mcc) || !readMnc(item, record.mnc))
            continue;
        hs2::append(bytes, record);
        ++kept;
    }
    if (kept == 0) return 0;
    hs2::store(wlan.elements, cfgElement("passpoint_policy/cen_plmnid", std::move(bytes), "",
                                         nullptr, printApiCfgPlusCellNet));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVns11UNaiRealm(vns_entry& wlan) {
    std::vector<hs2::Item> realms = hs2::items(wlan.elements, "passpoint_policy/nai_realm");
    std::vector<uint8_t> bytes;
    size_t kept = 0;
    for (const hs2::Item& item : realms) {
        if (kept == size_t(kHs2MaxRealms)) {
            hs2::warnCut(item.name, kHs2MaxRealms);
            break;
        }
        NAI_REALM record{};
        if (!hs2::usable(item) || !readRealm(item, record)) continue;
        hs2::append(bytes, record);
        ++kept;
    }
    if (kept == 0) return 0;
    hs2::store(wlan.elements, cfgElement("passpoint_policy/cen_nai_realm", std::move(bytes), "",
                                         nullptr, printApiCfgPlusNaiRealm));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVns11UVenueName(vns_entry& wlan) {
    hs2::nameList(*this, wlan.elements, "passpoint_policy/venue_name_lang",
                  "passpoint_policy/cen_venue_name_lang");
    return 0;
}

bool cfgPlusApiConverter::jsonCfgPlusVns11ULangName(const ElementList& fields,
                                                    const std::string& prefix,
                                                    const std::string& item, NAME_LANG& out) {
    const cfgElement* code = hs2::field(fields, prefix, "code");
    const cfgElement* name = hs2::field(fields, prefix, "name");
    bool letters = code != nullptr && code->kind == CFG_STRING &&
                   (code->strValue.size() == 2 || code->strValue.size() == 3) &&
                   std::all_of(code->strValue.begin(), code->strValue.end(), [](char c) {
                       return std::isalpha(static_cast<unsigned char>(c)) != 0;
                   });
    if (!letters) {
        hs2::warn(item, code == nullptr ? std::string("no language code, dropped")
                                        : "code " + hs2::shown(*code) +
                                              " is not a 2 or 3 letter language code, dropped");
        return false;
    }
    if (name == nullptr || name->kind != CFG_STRING) {
        hs2::warn(item, "no name text, dropped");
        return false;
    }
    hs2::copyText(out.code, sizeof out.code, code->strValue);
    // A shortened name still names the place; an item dropped would leave it nameless.
    if (hs2::copyName(out.name, sizeof out.name, name->strValue)) {
        const bool zero = name->strValue.find('\0') != std::string::npos;
        hs2::warn(item,
                  "name " + hs2::shown(*name) + (zero ? " holds a zero byte," : "") + " cut to " +
                      std::to_string(std::strlen(out.name)) + " octets",
                  jcp::EventKind::clamped);
    }
    return true;
}

int cfgPlusApiConverter::jsonCfgPlusVns11UNetAuthType(vns_entry& wlan) {
    std::vector<hs2::Item> types = hs2::items(wlan.elements, "passpoint_policy/net_auth_type");
    if (types.empty()) return 0;
    // The WLAN advertises one type: the first; the others are named as dropped.
    for (size_t i = 1; i < types.size(); ++i) {
        hs2::warn(types[i].name, "only one network authentication type is advertised, dropped");
    }
    const hs2::Item& item = types.front();
    if (!hs2::usable(item)) return 0;
    const cfgElement* type = hs2::field(*item.fields, item.prefix, "auth_type");
    int code = type != nullptr ? netAuthCode(*type) : -1;
    if (code < 0) {
        hs2::warn(item.name, type == nullptr
                                 ? std::string("no auth_type, dropped")
                                 : "unknown auth_type " + hs2::shown(*type) + ", dropped");
        return 0;
    }
    std::string url;
    const cfgElement* link = hs2::field(*item.fields, item.prefix, "url");
    if (link != nullptr && link->kind == CFG_STRING) {
        url = link->strValue;
    } else if (link != nullptr) {
        hs2::warn(item.name, "url " + hs2::shown(*link) + " is not a text, advertised without");
    }
    const char digits[] = {'0', static_cast<char>('0' + code), '\0'};
    hs2::store(wlan.elements, cfgElement("passpoint_policy/net_auth_type/cen_auth_type", digits));
    hs2::store(wlan.elements, cfgElement("passpoint_policy/net_auth_type/cen_url", url));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusOSEN(vns_entry& wlan) {
    ElementList& list = wlan.elements;
    bool osen = false;
    if (getCfgElementString(list, "auth") == "eap" && getCfgElementString(list, "enc") == "akm") {
        jcp::diag("derived OSEN from enc=akm, and set enc back to ccmp");
        auto enc = findCfgElement(list, "enc");
        *enc = cfgElement(enc->name, "ccmp", enc->key);
        osen = true;
    }
    list.insert(findCfgElement(list, "passpoint_policy/hessid"),
                cfgElement("passpoint_policy/cen_osen", osen));
    return 0;
}
