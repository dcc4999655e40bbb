// SPDX-License-Identifier: MIT
// Hotspot 2.0 records of a WLAN byte by byte, the bounds of its lists, OSU icons from files,
// and the release of the OSU list; the OSEN rule, dropped items and texts holding control bytes
// are golden (hotspot, hotspot_texts).
#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>

#include "convert/converter.h"
#include "convert/hotspot_icons.h"
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
    return testsupport::joined(size_t(n), [&](size_t) { return item; });
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

// Points the converters at an icon directory for as long as it lives.
class IconDir {
  public:
    IconDir() { jcp::hs2::setIconDir(m_dir.path()); }
    ~IconDir() { jcp::hs2::setIconDir(jcp::hs2::kDefaultIconDir); }
    std::string file(const std::string& name) const { return m_dir.file(name); }
    const std::string& path() const { return m_dir.path(); }

  private:
    testsupport::TempDir m_dir;
};

const std::string kPng("\x89PNG\r\n\x1A\n", 8);

// An icon object of the policy with the given "filename" and "file" (JSON text).
std::string icon(const std::string& name, const std::string& file) {
    return R"({"width": 64, "height": 32, "code": "eng", "filename": ")" + name +
           R"(", "file": ")" + file + "\"}";
}

// One OSU provider offering the given icon objects.
std::string provider(const std::string& icons) {
    return R"({"server_url": "https://osu/", "method_oma_dm_priority": 1, "icon": [)" + icons +
           "]}";
}

TEST(Hotspot, OsuProvidersWithIconsFromFilesAndTheGlobalList) {
    IconDir dir;
    testsupport::writeFile(dir.file("a.png"), kPng + "A");
    testsupport::writeFile(dir.file("g.png"), kPng + "GLOBAL");
    jsonCfgPlus doc;
    std::string out =
        convert(doc,
                R"(, "osu_provider": [{"server_url": "https://osu/", "nai": "n@osu",
            "method_oma_dm_priority": 2, "method_soap_xml_spp_priority": 1,
            "name_lang": [{"code": "eng", "name": "Sign up"}],
            "icon": [)" +
                    icon("a", "a.png") + "," + icon("d", "") +
                    R"(, {"filename": "g"}, {"filename": "nowhere"}]},
            {"nai": "no-url", "method_oma_dm_priority": 1},
            {"server_url": "https://two/", "method_oma_dm_priority": 1, "icon": ["g"]}])",
                "", R"(, "passpoint_policy": {"global_hs2_icons": [)" + icon("g", "g.png") + "]}");
    EXPECT_EQ(out,
              "[WARN] passpoint_policy/osu_provider[0] icon[1]: no file name text, icon dropped\n"
              "[WARN] passpoint_policy/osu_provider[0] icon[3]: no icon \"nowhere\" in "
              "passpoint_policy/global_hs2_icons, icon dropped\n"
              "[WARN] passpoint_policy/osu_provider[1]: no server_url text, dropped\n");

    Bytes bytes = value(doc, "passpoint_policy/cen_osu_provider");
    const size_t area = sizeof(OSU_SP_LIST) + 2 * sizeof(OSU_SP);
    ASSERT_EQ(bytes.size(), area + 9 + 14 + 14);
    OSU_SP_LIST head;
    std::memcpy(&head, bytes.data(), sizeof head);
    EXPECT_EQ(head.count, 2u);
    EXPECT_EQ(head.icon_bytes, 37u);
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
    } icons[] = {{first.icons[0], "a", kPng + "A"},
                 {first.icons[1], "g", kPng + "GLOBAL"},
                 {second.icons[0], "g", kPng + "GLOBAL"}};
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

// The opens of each file in dir while fn runs, as the kernel reports them. Closes are watched
// too: identical events in a row would be reported as one.
std::map<std::string, int> opensDuring(const std::string& dir, const std::function<void()>& fn) {
    std::map<std::string, int> opens;
    int fd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    EXPECT_GE(fd, 0);
    EXPECT_GE(inotify_add_watch(fd, dir.c_str(), IN_OPEN | IN_CLOSE_NOWRITE), 0);
    fn();
    alignas(inotify_event) char buffer[4096];
    ssize_t got = 0;
    while ((got = read(fd, buffer, sizeof buffer)) > 0) {
        for (ssize_t at = 0; at < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            if (event->len > 0 && (event->mask & IN_OPEN) != 0) ++opens[event->name];
            at += ssize_t(sizeof(inotify_event) + event->len);
        }
    }
    close(fd);
    return opens;
}

// The OSU provider list of a WLAN element list, its head and its records.
struct OsuList {
    OSU_SP_LIST head{};
    std::vector<OSU_SP> providers;
    Bytes bytes;
};

OsuList osuList(const std::list<cfgElement>& elements) {
    OsuList list;
    for (const cfgElement& e : elements) {
        if (e.name == "passpoint_policy/cen_osu_provider") list.bytes = e.bytesValue;
    }
    if (list.bytes.size() < sizeof list.head) return list;
    std::memcpy(&list.head, list.bytes.data(), sizeof list.head);
    list.providers.resize(list.head.count);
    if (list.bytes.size() >= sizeof list.head + list.head.count * sizeof(OSU_SP))
        std::memcpy(list.providers.data(), &list.bytes[sizeof list.head],
                    list.head.count * sizeof(OSU_SP));
    return list;
}

// Only images that sit in the icon directory are advertised; anything else is named in one
// warning and left out.
TEST(Hotspot, IconFilesAreImagesInTheIconDirectory) {
    IconDir dir;
    testsupport::TempDir outside;
    const std::string secret = outside.file("secret.png");
    testsupport::writeFile(secret, kPng + "SECRET");
    ASSERT_EQ(symlink(secret.c_str(), dir.file("link.png").c_str()), 0);
    ASSERT_EQ(mkdir(dir.file("sub.png").c_str(), 0700), 0);
    const std::map<std::string, std::string> files = {
        {"p.png", kPng + "P"},
        {"j.jpg", std::string("\xFF\xD8\xFF\xE0JFIF", 8)},
        {"g.gif", "GIF89a-G"},
        {"b.bmp", "BM-B"},
        {"i.ico", std::string("\0\0\1\0\1\0", 6)},
        {"big.png", kPng + std::string(65536 - kPng.size(), 'x')},
        {"text.png", "not an image at all"},
        {"empty.png", ""}};
    for (const auto& file : files) testsupport::writeFile(dir.file(file.first), file.second);
    const std::string notPlain = "is not a plain file name in the icon directory";
    struct Row {
        std::string file;     // as the document gives it (JSON text)
        std::string problem;  // empty for an icon advertised
    } rows[] = {
        {"p.png", ""},
        {"j.jpg", ""},
        {"g.gif", ""},
        {"b.bmp", ""},
        {"i.ico", ""},
        {secret, notPlain},
        {"../secret.png", notPlain},
        {".", notPlain},
        {"..", notPlain},
        {"text.png\\u0000/../x", notPlain},
        {"link.png", "is a link"},
        {"sub.png", "is not a regular file"},
        {"big.png", "holds 65536 bytes, more than 65535"},
        {"text.png", "is not a PNG, JPEG, GIF, BMP or ICO image"},
        {"empty.png", "is empty"},
        {"gone.png", "cannot be opened in " + dir.path() + ": No such file or directory"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        jsonCfgPlus doc;
        std::string out =
            convert(doc, R"(, "osu_provider": [)" + provider(icon("i", row.file)) + "]");
        OsuList list = osuList(wlan(doc));
        ASSERT_EQ(list.providers.size(), 1u);
        const jsonHS2Icon& advertised = list.providers[0].icons[0];
        if (row.problem.empty()) {
            EXPECT_EQ(out, "");
            ASSERT_EQ(list.providers[0].icon_count, 1);
            ASSERT_EQ(size_t(advertised.icon_data) + advertised.icon_data_len, list.bytes.size());
            EXPECT_EQ(std::string(list.bytes.end() - advertised.icon_data_len, list.bytes.end()),
                      files.at(row.file));
        } else {
            EXPECT_EQ(out, "[WARN] passpoint_policy/osu_provider[0] icon[0]: icon file \"" +
                               row.file + "\" " + row.problem + ", icon dropped\n");
            EXPECT_EQ(list.providers[0].icon_count, 0);
            EXPECT_EQ(list.head.icon_bytes, 0u);
        }
    }
}

TEST(Hotspot, IconBytesOfOneConversionAreBounded) {
    IconDir dir;
    // The largest icon the air format carries, in every slot of five WLANs: 160 copies.
    testsupport::writeFile(dir.file("big.png"), kPng + std::string(65535 - kPng.size(), 'x'));
    const std::string four = many(4, icon("big", "big.png"));
    std::string text = R"({"device": {"interface": [{"name": "radio1", "type": "radio",
        "wlanbssmap": [)";
    std::string wlans;
    for (int i = 1; i <= 5; ++i) {
        text += (i > 1 ? "," : "") + std::string(R"({"bss": )") + std::to_string(i) +
                R"(, "wlan": "w)" + std::to_string(i) + "\"}";
        wlans += (i > 1 ? "," : "") + std::string(R"({"name": "w)") + std::to_string(i) +
                 R"(", "cen_ssid_id": )" + std::to_string(i) + R"(, "passpoint_policy": "p"})";
    }
    text += R"(]}]}, "wlan": [)" + wlans +
            R"(], "passpoint_policy": [{"name": "p", "osu_provider": [)" + many(8, provider(four)) +
            "]}]}";
    jsonCfgPlus doc;
    testsupport::captureStdout([&] { doc.buildConfig(text.data(), unsigned(text.size())); });
    std::string out;
    std::map<std::string, int> opens = opensDuring(dir.path(), [&] {
        out =
            testsupport::captureStdout([&] { cfgPlusApiConverter().jsonCfgPlusVnsPasspoint(doc); });
    });
    EXPECT_EQ(opens["big.png"], 1);  // one read for every provider of every WLAN
    // 128 copies fit in 8 MiB; the fifth WLAN's 32 do not.
    const std::string dropped =
        "icon file \"big.png\" would take the icons of this configuration past 8388608 bytes, "
        "icon dropped\n";
    EXPECT_EQ(testsupport::occurrences(out, dropped), 32u) << out;
    EXPECT_EQ(out.rfind("[WARN] passpoint_policy/osu_provider[0] icon[0]: " + dropped, 0), 0u);
    ASSERT_EQ(doc.m_radios.at(0).wlans.size(), 5u);
    uint64_t total = 0;
    for (const vns_entry& w : doc.m_radios.at(0).wlans)
        total += osuList(w.elements).head.icon_bytes;
    EXPECT_EQ(total, 128u * 65535u);
}

}  // namespace
