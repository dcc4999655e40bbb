// SPDX-License-Identifier: MIT
// Online sign-up (OSU) providers of a WLAN, with their names, descriptions, icons, NAI, server
// URI and methods; icon images are read from the icon directory by the names the policy gives.
#include <algorithm>
#include <cctype>
#include <cstring>

#include "convert/hotspot_icons.h"
#include "convert/hotspot_print.h"
#include "convert/hotspot_priv.h"

namespace hs2 = jcp::hs2;

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

const char kProviders[] = "passpoint_policy/osu_provider";
const char kGlobalIcons[] = "passpoint_policy/global_hs2_icons";

// A number 0 to 65535 for an icon dimension; -1 otherwise.
int dimension(const cfgElement* e) {
    if (e == nullptr || e->kind != CFG_INT || e->intValue < 0 || e->intValue > 65535) return -1;
    return e->intValue;
}

// The global icon whose "filename" is name, or null.
const hs2::Item* globalIcon(const std::vector<hs2::Item>& icons, const std::string& name) {
    for (const hs2::Item& icon : icons) {
        const cfgElement* file = hs2::field(*icon.fields, icon.prefix, "filename");
        if (file != nullptr && file->kind == CFG_STRING && file->strValue == name) return &icon;
    }
    return nullptr;
}

// Methods with a priority, the lowest number first; OMA-DM goes first on a tie.
void readMethods(const hs2::Item& item, OSU_SP& sp) {
    struct Method {
        const char* key;
        uint8_t code;
        int priority;
    };
    Method methods[] = {{"method_oma_dm_priority", 0, 0}, {"method_soap_xml_spp_priority", 1, 0}};
    std::vector<Method> offered;
    for (Method& method : methods) {
        const cfgElement* e = hs2::field(*item.fields, item.prefix, method.key);
        if (e == nullptr) continue;
        if (e->kind != CFG_INT) {
            hs2::warn(item.name, std::string(method.key) + " " + hs2::shown(*e) +
                                     " is not a number, method not offered");
            continue;
        }
        method.priority = e->intValue;
        offered.push_back(method);
    }
    std::stable_sort(offered.begin(), offered.end(),
                     [](const Method& a, const Method& b) { return a.priority < b.priority; });
    for (const Method& method : offered) sp.osu_method_list[sp.osu_method_count++] = method.code;
}

// A text field of the provider: true and copied when it fits; an absent optional one stays "".
bool readText(const hs2::Item& item, const char* key, char* field, size_t size, bool required) {
    const cfgElement* e = hs2::field(*item.fields, item.prefix, key);
    if (e == nullptr && !required) return true;
    if (e == nullptr || e->kind != CFG_STRING || (required && e->strValue.empty())) {
        hs2::warn(item.name, std::string("no ") + key + " text, dropped");
        return false;
    }
    if (!hs2::copyText(field, size, e->strValue)) {
        hs2::warn(item.name, std::string(key) + " " + hs2::shown(*e) + " " +
                                 hs2::misfit(e->strValue, size) + ", dropped");
        return false;
    }
    return true;
}

class ProviderReader {
  public:
    ProviderReader(cfgPlusApiConverter& converter, const ElementList& global)
        : m_converter(converter), m_global(global) {}

    // One provider into sp, its icon bytes appended to data (the icons' offsets count from
    // the start of data until the caller places it); false when the provider is dropped.
    bool read(const hs2::Item& item, OSU_SP& sp, std::vector<uint8_t>& data) {
        if (!readText(item, "server_url", sp.osu_server_uri, sizeof sp.osu_server_uri, true) ||
            !readText(item, "nai", sp.osu_nai, sizeof sp.osu_nai, false)) {
            return false;
        }
        readMethods(item, sp);
        if (sp.osu_method_count == 0) {
            hs2::warn(item.name, "no OSU method has a priority, dropped");
            return false;
        }
        sp.name_count = names(item, "/name_lang", sp.name_lang);
        sp.description_count = names(item, "/description_lang", sp.description_lang);
        icons(item, sp, data);
        return true;
    }

  private:
    uint8_t names(const hs2::Item& item, const std::string& key,
                  NAME_LANG (&out)[kHs2MaxOsuNames]) {
        size_t kept = 0;
        for (const hs2::Item& name : hs2::items(*item.fields, item.prefix + key)) {
            if (kept == size_t(kHs2MaxOsuNames)) {
                hs2::warnCut(name.name, kHs2MaxOsuNames);
                break;
            }
            if (hs2::usable(name) && m_converter.jsonCfgPlusVns11ULangName(
                                         *name.fields, name.prefix, name.name, out[kept])) {
                ++kept;
            } else {
                out[kept] = NAME_LANG{};
            }
        }
        return static_cast<uint8_t>(kept);
    }

    void icons(const hs2::Item& item, OSU_SP& sp, std::vector<uint8_t>& data) {
        const std::string list = item.prefix + "/icon";
        const cfgElement* given = hs2::field(*item.fields, item.prefix, "icon");
        // An icon given by file name alone is one of the global icons.
        std::vector<std::pair<std::string, const hs2::Item*>> wanted;
        std::vector<hs2::Item> own;
        if (given != nullptr && given->kind == CFG_STRING) {
            wanted.emplace_back(given->strValue, nullptr);
        } else if (given != nullptr && given->kind == CFG_STR_LIST) {
            for (const std::string& name : given->strList) wanted.emplace_back(name, nullptr);
        } else {
            own = hs2::items(*item.fields, list);
            for (const hs2::Item& icon : own) wanted.emplace_back("", &icon);
        }
        size_t index = 0;
        for (const auto& want : wanted) {
            std::string name = item.name + " icon[" + std::to_string(index++) + "]";
            if (sp.icon_count == kHs2MaxOsuIcons) {
                hs2::warnCut(name, kHs2MaxOsuIcons);
                break;
            }
            const hs2::Item* source = want.second;
            if (source != nullptr && !hs2::usable(*source)) continue;
            if (source != nullptr &&
                hs2::field(*source->fields, source->prefix, "file") == nullptr) {
                const cfgElement* file = hs2::field(*source->fields, source->prefix, "filename");
                if (file == nullptr || file->kind != CFG_STRING) {
                    hs2::warn(name, "neither file nor filename, icon dropped");
                    continue;
                }
                source = lookup(file->strValue, name);
            } else if (source == nullptr) {
                source = lookup(want.first, name);
            }
            if (source == nullptr) continue;
            jsonHS2Icon& icon = sp.icons[sp.icon_count];
            if (m_converter.jsonCfgPlusVnsHS2Icons(*source->fields, source->prefix, name, icon,
                                                   data)) {
                ++sp.icon_count;
            } else {
                icon = jsonHS2Icon{};
            }
        }
    }

    const hs2::Item* lookup(const std::string& name, const std::string& item) {
        if (!m_globalRead) {
            m_globalIcons = hs2::items(m_global, kGlobalIcons);
            m_globalRead = true;
            for (const hs2::Item& icon : m_globalIcons) hs2::usable(icon);
        }
        const hs2::Item* icon = globalIcon(m_globalIcons, name);
        if (icon == nullptr) {
            hs2::warn(item,
                      "no icon " + hs2::quoted(name) + " in " + kGlobalIcons + ", icon dropped");
        }
        return icon;
    }

    cfgPlusApiConverter& m_converter;
    const ElementList& m_global;
    std::vector<hs2::Item> m_globalIcons;
    bool m_globalRead = false;
};

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsHS2OsuSp(vns_entry& wlan, const ElementList& global) {
    hs2::IconScope icons;  // a file several providers or WLANs name is read once
    std::vector<hs2::Item> providers = hs2::items(wlan.elements, kProviders);
    ProviderReader reader(*this, global);
    std::vector<OSU_SP> records;
    std::vector<uint8_t> data;
    for (const hs2::Item& item : providers) {
        if (records.size() == size_t(kHs2MaxOsuProviders)) {
            hs2::warnCut(item.name, kHs2MaxOsuProviders);
            break;
        }
        OSU_SP sp{};
        size_t mark = data.size();
        if (hs2::usable(item) && reader.read(item, sp, data)) {
            records.push_back(sp);
        } else {
            data.resize(mark);
        }
    }
    if (records.empty()) return 0;

    OSU_SP_LIST head{};
    head.count = static_cast<uint32_t>(records.size());
    head.icon_bytes = static_cast<uint32_t>(data.size());
    const size_t area = sizeof head + records.size() * sizeof(OSU_SP);
    std::vector<uint8_t> bytes;
    bytes.reserve(area + data.size());
    hs2::append(bytes, head);
    for (OSU_SP& sp : records) {
        for (uint8_t i = 0; i < sp.icon_count; ++i) sp.icons[i].icon_data += uint32_t(area);
        hs2::append(bytes, sp);
    }
    bytes.insert(bytes.end(), data.begin(), data.end());
    hs2::store(wlan.elements, cfgElement("passpoint_policy/cen_osu_provider", std::move(bytes), "",
                                         releaseCfgPlusOsuIcons, printApiCfgPlusOsuSp));
    return 0;
}

bool cfgPlusApiConverter::jsonCfgPlusVnsHS2Icons(const ElementList& fields,
                                                 const std::string& prefix, const std::string& item,
                                                 jsonHS2Icon& icon, std::vector<uint8_t>& data) {
    int width = dimension(hs2::field(fields, prefix, "width"));
    int height = dimension(hs2::field(fields, prefix, "height"));
    if (width < 0 || height < 0) {
        hs2::warn(item, "width and height must be numbers 0 to 65535, icon dropped");
        return false;
    }
    // An icon without a language is for every language: ISO 639 "zxx".
    std::string code = "zxx";
    if (const cfgElement* given = hs2::field(fields, prefix, "code")) {
        bool letters = given->kind == CFG_STRING &&
                       (given->strValue.size() == 2 || given->strValue.size() == 3) &&
                       std::all_of(given->strValue.begin(), given->strValue.end(), [](char c) {
                           return std::isalpha(static_cast<unsigned char>(c)) != 0;
                       });
        if (!letters) {
            hs2::warn(item, "code " + hs2::shown(*given) +
                                " is not a 2 or 3 letter language code, icon dropped");
            return false;
        }
        code = given->strValue;
    }
    const cfgElement* name = hs2::field(fields, prefix, "filename");
    if (name == nullptr || name->kind != CFG_STRING || name->strValue.empty()) {
        hs2::warn(item, "filename must be a text of 1 to " + std::to_string(kHs2UriSize - 1) +
                            " octets, icon dropped");
        return false;
    }
    if (!hs2::copyText(icon.icon_name, sizeof icon.icon_name, name->strValue)) {
        hs2::warn(item, "filename " + hs2::shown(*name) + " " +
                            hs2::misfit(name->strValue, sizeof icon.icon_name) + ", icon dropped");
        return false;
    }
    const cfgElement* file = hs2::field(fields, prefix, "file");
    if (file == nullptr || file->kind != CFG_STRING || file->strValue.empty()) {
        hs2::warn(item, "no file name text, icon dropped");
        return false;
    }
    hs2::IconScope scope;
    const std::vector<uint8_t>* bytes = scope.files().take(file->strValue, item);
    if (bytes == nullptr) return false;
    icon.width = static_cast<uint16_t>(width);
    icon.height = static_cast<uint16_t>(height);
    hs2::copyText(icon.code, sizeof icon.code, code);
    icon.icon_data = static_cast<uint32_t>(data.size());
    icon.icon_data_len = static_cast<uint32_t>(bytes->size());
    data.insert(data.end(), bytes->begin(), bytes->end());
    return true;
}
