// Hotspot 2.0 records of a WLAN byte by byte, the bounds of its lists, OSU icons from files,
// and the release of the OSU list; the OSEN rule and dropped items are golden (hotspot).
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "convert/converter.h"
#include "convert/hotspot_print.h"
#include "test_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

// Builds one radio with WLAN "w" (its members wlanExtra) using Passpoint policy "p" (its
// members policy), then runs both Hotspot steps; returns what they print.
std::string convert(jsonCfgPlus& doc, const std::string& policy, const std::string& wlanExtra = "",
                    const std::string& deviceExtra = "") {
    std::string text =
        R"({"device": {"interface": [{"name": "radio1", "type": "radio",
             "wlanbssmap": [{"bss": 1, "wlan": "w"}]}])" +
        deviceExtra + R"(}, "wlan": [{"name": "w", "cen_ssid_id": 1, )" + wlanExtra +
        R"("passpoint_policy": "p"}], "passpoint_policy": [{"name": "p")" + policy + "}]}";
    testsupport::captureStdout([&] { doc.buildConfig(text.data(), unsigned(text.size())); });
    return testsupport::captureStdout([&] {
        cfgPlusApiConverter converter;
        converter.jsonCfgPlusVns11U(doc);
        converter.jsonCfgPlusVnsPasspoint(doc);
    });
}

const std::list<cfgElement>& wlan(const jsonCfgPlus& doc) {
    return doc.m_radios.at(0).wlans.at(0).elements;
}

const cfgElement* find(const jsonCfgPlus& doc, const std::string& name) {
    for (const cfgElement& e : wlan(doc)) {
        if (e.name == name) return &e;
    }
    return nullptr;
}

Bytes value(const jsonCfgPlus& doc, const std::string& name) {
    const cfgElement* e = find(doc, name);
    return e != nullptr ? e->bytesValue : Bytes();
}

// A record of `size` zero bytes with the given texts and bytes at their offsets.
Bytes record(size_t size, std::initializer_list<std::pair<size_t, std::string>> parts) {
    Bytes out(size, 0);
    for (const auto& part : parts)
        std::memcpy(&out[part.first], part.second.data(), part.second.size());
    return out;
}

Bytes join(std::initializer_list<Bytes> records) {
    Bytes out;
    for (const Bytes& r : records) out.insert(out.end(), r.begin(), r.end());
    return out;
}

TEST(Hotspot, RecordsHoldTheDocumentValuesInTheirLayout) {
    jsonCfgPlus doc;
    std::string out = convert(doc, R"(,
        "plmnid": [{"mcc": "310", "mnc": "410"}, {"mcc": 1, "mnc": "01"}],
        "nai_realm": [{"realm_name": "example.com", "eap_method": [
            {"index": 2, "method": "aka'"},
            {"index": 1, "method": "ttls", "auth_type": "credential", "auth_val": "username-password"},
            {"index": 1, "method": "ttls", "auth_type": "non-eap-inner", "auth_val": "mschapv2"}]}],
        "venue_name_lang": [{"code": "eng", "name": "Lobby"}, {"code": "de", "name": "Foyer"}],
        "operator_name_lang": [{"code": "fra", "name": "Opérateur"}],
        "cc_variable": [{"protocol": "tcp", "port": 443, "status": "open"},
                        {"protocol": 47, "port": "0", "status": "closed"}],
        "net_auth_type": [{"auth_type": "http_redirection", "url": "https://a.example/"}])");
    EXPECT_EQ(out, "");
    EXPECT_EQ(value(doc, "passpoint_policy/cen_plmnid"),
              join({record(8, {{0, "310"}, {4, "410"}}), record(8, {{0, "001"}, {4, "01"}})}));
    // Rows sorted by index, ties in document order: aka' (50) moves behind both TTLS rows.
    Bytes realm = record(
        sizeof(NAI_REALM),
        {{0, "example.com"}, {256, "\x03"}, {260, "\x01\x15\x05\x07\x01\x15\x02\x04\x02\x32"}});
    EXPECT_EQ(value(doc, "passpoint_policy/cen_nai_realm"), realm);
    EXPECT_EQ(
        value(doc, "passpoint_policy/cen_venue_name_lang"),
        join({record(260, {{0, "eng"}, {4, "Lobby"}}), record(260, {{0, "de"}, {4, "Foyer"}})}));
    EXPECT_EQ(value(doc, "passpoint_policy/cen_operator_name_lang"),
              record(260, {{0, "fra"}, {4, "Opérateur"}}));
    EXPECT_EQ(
        value(doc, "passpoint_policy/cen_cc_variable"),
        join({record(6, {{0, "\x06"}, {2, "\xBB\x01"}, {4, "\x01"}}), record(6, {{0, "\x2F"}})}));
    const cfgElement* type = find(doc, "passpoint_policy/net_auth_type/cen_auth_type");
    const cfgElement* url = find(doc, "passpoint_policy/net_auth_type/cen_url");
    ASSERT_TRUE(type != nullptr && url != nullptr);
    EXPECT_EQ(type->strValue, "02");
    EXPECT_EQ(url->strValue, "https://a.example/");
}

std::string many(int n, const std::string& item) {
    std::string out;
    for (int i = 0; i < n; ++i) out += (i > 0 ? "," : "") + item;
    return out;
}

TEST(Hotspot, NamesAreCutOnACharacterBoundaryAndRowsAtTheRecordsBound) {
    jsonCfgPlus doc;
    std::string out =
        convert(doc, R"(, "venue_name_lang": [{"code": "eng", "name": ")" + std::string(251, 'a') +
                         "\xC3\xA9" + R"("}], "nai_realm": [{"realm_name": "r", "eap_method": [)" +
                         many(300, R"({"index": 1, "method": "tls"})") + "]}, " +
                         many(69, R"({"realm_name": "r"})") + "]");
    EXPECT_NE(out.find("eap_method[255]: the list holds at most 255"), std::string::npos) << out;
    EXPECT_NE(out.find("[WARN] passpoint_policy/nai_realm[64]: the list holds at most 64, this "
                       "and later items dropped\n"),
              std::string::npos)
        << out;
    Bytes name = value(doc, "passpoint_policy/cen_venue_name_lang");
    ASSERT_EQ(name.size(), 260u);
    EXPECT_EQ(std::strlen(reinterpret_cast<const char*>(&name[4])), 251u);
    Bytes realm = value(doc, "passpoint_policy/cen_nai_realm");
    ASSERT_EQ(realm.size(), 64 * sizeof(NAI_REALM));
    EXPECT_EQ(realm[256], 255);
    EXPECT_EQ(realm[1276], 1);  // the last row is filled: index 1
    EXPECT_EQ(realm[1277], 13);
}

TEST(Hotspot, OsuProvidersWithIconsFromFilesAndTheGlobalList) {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("a.png"), "PNG-A");
    testsupport::writeFile(dir.file("g.png"), "GLOBAL");
    testsupport::writeFile(dir.file("empty.png"), "");
    testsupport::writeFile(dir.file("big.png"), std::string(65536, 'x'));
    auto icon = [&](const std::string& name, const std::string& file) {
        return R"({"width": 64, "height": 32, "code": "eng", "filename": ")" + name +
               R"(", "file": ")" + dir.file(file) + "\"}";
    };
    jsonCfgPlus doc;
    std::string out =
        convert(doc,
                R"(, "osu_provider": [{"server_url": "https://osu/", "nai": "n@osu",
            "method_oma_dm_priority": 2, "method_soap_xml_spp_priority": 1,
            "name_lang": [{"code": "eng", "name": "Sign up"}],
            "icon": [)" +
                    icon("a", "a.png") + "," + icon("e", "empty.png") + "," + icon("b", "big.png") +
                    "," + icon("m", "missing.png") + "," + icon("d", "") +
                    R"(, {"filename": "g"}, {"filename": "nowhere"}]},
            {"nai": "no-url", "method_oma_dm_priority": 1},
            {"server_url": "https://two/", "method_oma_dm_priority": 1, "icon": ["g"]}])",
                "", R"(, "passpoint_policy": {"global_hs2_icons": [)" + icon("g", "g.png") + "]}");
    for (const char* warning :
         {"osu_provider[0] icon[1]: icon file \"", "\" is empty, icon dropped",
          "osu_provider[0] icon[2]: icon file \"", "holds 65536 bytes, more than 65535",
          "osu_provider[0] icon[3]: cannot open icon file", "osu_provider[0] icon[4]: icon file",
          "is not a regular file",
          "osu_provider[0] icon[6]: no icon \"nowhere\" in "
          "passpoint_policy/global_hs2_icons, icon dropped",
          "osu_provider[1]: no server_url text, dropped"}) {
        EXPECT_NE(out.find(warning), std::string::npos) << warning << "\n" << out;
    }

    Bytes bytes = value(doc, "passpoint_policy/cen_osu_provider");
    const size_t area = sizeof(OSU_SP_LIST) + 2 * sizeof(OSU_SP);
    ASSERT_EQ(bytes.size(), area + 5 + 6 + 6);
    OSU_SP_LIST head;
    std::memcpy(&head, bytes.data(), sizeof head);
    EXPECT_EQ(head.count, 2u);
    EXPECT_EQ(head.icon_bytes, 17u);
    OSU_SP first;
    OSU_SP second;
    std::memcpy(&first, &bytes[sizeof head], sizeof first);
    std::memcpy(&second, &bytes[sizeof head + sizeof first], sizeof second);
    EXPECT_STREQ(first.osu_server_uri, "https://osu/");
    EXPECT_STREQ(first.osu_nai, "n@osu");
    EXPECT_EQ(first.osu_method_count, 2);
    EXPECT_EQ(first.osu_method_list[0], 1);  // SOAP-XML SPP has the lower priority number
    EXPECT_EQ(first.name_count, 1);
    EXPECT_STREQ(first.name_lang[0].name, "Sign up");
    ASSERT_EQ(first.icon_count, 2);
    ASSERT_EQ(second.icon_count, 1);
    struct Expected {
        const jsonHS2Icon& icon;
        const char* name;
        std::string data;
    } icons[] = {{first.icons[0], "a", "PNG-A"},
                 {first.icons[1], "g", "GLOBAL"},
                 {second.icons[0], "g", "GLOBAL"}};
    for (const Expected& e : icons) {
        SCOPED_TRACE(e.name);
        EXPECT_STREQ(e.icon.icon_name, e.name);
        EXPECT_EQ(e.icon.width, 64);
        EXPECT_EQ(e.icon.height, 32);
        ASSERT_EQ(e.icon.icon_data_len, e.data.size());
        ASSERT_LE(e.icon.icon_data + e.icon.icon_data_len, bytes.size());
        EXPECT_EQ(std::string(&bytes[e.icon.icon_data], &bytes[e.icon.icon_data] + e.data.size()),
                  e.data);
    }

    // Through the entry and released as the daemon's result is.
    apiCfgPlusEntryArray array{};
    cfgElement::setApiCfgPlusList(wlan(doc), &array, 0, 0);
    const apiCfgPlusEntry* entry =
        testsupport::findEntry(array, "passpoint_policy/cen_osu_provider");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->freeFn, releaseCfgPlusOsuIcons);
    cfgElement::freeApiCfgPlusEntries(&array);
}

}  // namespace
