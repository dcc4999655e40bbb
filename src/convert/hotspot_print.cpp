// SPDX-License-Identifier: MIT
// Text rendering of the Hotspot 2.0 record lists, in the indented JSON-like shape of the
// standard rendering, and the OSU provider list's release.
#include "convert/hotspot_print.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "convert/ap_records.h"
#include "convert/eap_tables.h"
#include "convert/element_print.h"
#include "convert/record_print_priv.h"
#include "model/entry_items.h"

namespace {

using jcp::block;
using jcp::indentOf;
using jcp::object;
using jcp::printRecords;

// A text field, read no further than its size, in double quotes with JSON escapes.
std::string quoted(const char* text, size_t size) {
    std::string out = "\"";
    for (size_t i = 0; i < size && text[i] != '\0'; ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += char(c);
        } else if (c < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            out += escaped;
        } else {
            out += char(c);
        }
    }
    return out + "\"";
}

template <size_t N>
std::string quoted(const char (&field)[N]) {
    return quoted(field, N);
}

// A number with the name it has in a table: "\"ttls\" (21)"; the number alone when unnamed.
std::string named(int value, const naiEapTable* table) {
    if (table != nullptr) {
        for (const auto& row : *table) {
            if (row.second == value) return "\"" + row.first + "\" (" + std::to_string(value) + ")";
        }
    }
    return std::to_string(value);
}

std::string nameLang(const NAME_LANG& name, unsigned int indent) {
    return object(indent, {{"code", quoted(name.code)}, {"name", quoted(name.name)}});
}

std::string nameList(const NAME_LANG* names, size_t count, unsigned int indent) {
    return block(count, indent, [&](size_t i, unsigned int at) { return nameLang(names[i], at); });
}

std::string eapRow(const EAP_METHOD& row, unsigned int indent) {
    const naiEapTable* values = row.auth_type == 2   ? &naiEapAuthValId2
                                : row.auth_type == 5 ? &naiEapAuthValId5
                                                     : nullptr;
    return object(indent, {{"index", std::to_string(row.index)},
                           {"method", named(row.method, &naiEapMethod)},
                           {"auth_type", named(row.auth_type, &naiEapAuthType)},
                           {"auth_val", named(row.auth_val, values)}});
}

const char* protocolName(uint8_t protocol) {
    switch (protocol) {
        case 1:
            return "icmp";
        case 6:
            return "tcp";
        case 17:
            return "udp";
        case 50:
            return "esp";
        default:
            return nullptr;
    }
}

std::string osuMethods(const OSU_SP& sp, unsigned int indent) {
    size_t count = std::min<size_t>(sp.osu_method_count, kHs2MaxOsuMethods);
    return block(count, indent, [&](size_t i, unsigned int at) {
        uint8_t code = sp.osu_method_list[i];
        const char* name = code == 0 ? "\"oma-dm\" (0)" : code == 1 ? "\"soap-xml-spp\" (1)" : "";
        return indentOf(at) + (*name != '\0' ? std::string(name) : std::to_string(code));
    });
}

std::string osuProvider(OSU_SP& sp, unsigned int indent) {
    unsigned int inner = indent + 1;
    std::string icons = "icons";
    apiCfgPlusEntry iconEntry{};
    iconEntry.type = CFG_BYTES;
    iconEntry.name = &icons[0];
    iconEntry.value = sp.icons;
    iconEntry.size = static_cast<int32_t>(std::min<size_t>(sp.icon_count, kHs2MaxOsuIcons) *
                                          sizeof(jsonHS2Icon));
    char* iconText = printApiCfgPlusOsuIcons(&iconEntry, inner);
    std::string iconLine(iconText + 2 * size_t(inner) + std::strlen("\"icons\": "));
    std::free(iconText);
    return object(
        indent, {{"name_lang",
                  nameList(sp.name_lang, std::min<size_t>(sp.name_count, kHs2MaxOsuNames), inner)},
                 {"description_lang",
                  nameList(sp.description_lang,
                           std::min<size_t>(sp.description_count, kHs2MaxOsuNames), inner)},
                 {"icons", iconLine},
                 {"osu_nai", quoted(sp.osu_nai)},
                 {"osu_server_uri", quoted(sp.osu_server_uri)},
                 {"osu_method_list", osuMethods(sp, inner)}});
}

}  // namespace

char* printApiCfgPlusCellNet(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<_3GPP_CELL_NET>(entry, indent, [](const _3GPP_CELL_NET& r, unsigned at) {
        return object(at, {{"mcc", quoted(r.mcc)}, {"mnc", quoted(r.mnc)}});
    });
}

char* printApiCfgPlusNaiRealm(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<NAI_REALM>(entry, indent, [](const NAI_REALM& r, unsigned at) {
        size_t rows = std::min<size_t>(r.eap_count, kHs2MaxEapRows);
        return object(at, {{"realm_name", quoted(r.realm_name)},
                           {"eap_method", block(rows, at + 1, [&](size_t i, unsigned int row) {
                                return eapRow(r.eap_method[i], row);
                            })}});
    });
}

char* printApiCfgPlusVenueName(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<NAME_LANG>(entry, indent, nameLang);
}

char* printApiCfgPlusConnCap(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<CONN_CAP>(entry, indent, [](const CONN_CAP& r, unsigned at) {
        const char* name = protocolName(r.protocol);
        std::string protocol = std::to_string(r.protocol);
        if (name != nullptr) protocol = "\"" + std::string(name) + "\" (" + protocol + ")";
        std::string status = r.status == 1   ? "\"open\" (1)"
                             : r.status == 0 ? "\"closed\" (0)"
                                             : std::to_string(r.status);
        return object(
            at, {{"protocol", protocol}, {"port", std::to_string(r.port)}, {"status", status}});
    });
}

char* printApiCfgPlusOsuIcons(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<jsonHS2Icon>(entry, indent, [](const jsonHS2Icon& r, unsigned at) {
        return object(at,
                      {{"width", std::to_string(r.width)},
                       {"height", std::to_string(r.height)},
                       {"code", quoted(r.code)},
                       {"icon_name", quoted(r.icon_name)},
                       {"icon_data", "\"" + std::to_string(r.icon_data_len) + " bytes at offset " +
                                         std::to_string(r.icon_data) + "\""}});
    });
}

char* printApiCfgPlusOsuSp(apiCfgPlusEntry* entry, unsigned int indent) {
    std::string out = jcp::entryPrefix(entry, indent);
    size_t size = entry->value != nullptr && entry->size > 0 ? size_t(entry->size) : 0;
    if (size < sizeof(OSU_SP_LIST)) return jcp::printed(out + "[ ]");
    const auto* bytes = static_cast<const unsigned char*>(entry->value);
    OSU_SP_LIST head;
    std::memcpy(&head, bytes, sizeof head);
    // A damaged count never reads past the value.
    size_t count = std::min<size_t>(head.count, (size - sizeof head) / sizeof(OSU_SP));
    out += block(count, indent, [&](size_t i, unsigned int inner) {
        OSU_SP sp;
        std::memcpy(&sp, bytes + sizeof head + i * sizeof sp, sizeof sp);
        return osuProvider(sp, inner);
    });
    return jcp::printed(out);
}

void releaseCfgPlusOsuIcons(apiCfgPlusEntry* entry) {
    if (entry == nullptr) return;
    // The icon bytes sit in the value block behind the records, so they go with it.
    std::free(entry->name);
    entry->name = nullptr;
    delete[] static_cast<uint8_t*>(entry->value);
    entry->value = nullptr;
    entry->size = 0;
}
