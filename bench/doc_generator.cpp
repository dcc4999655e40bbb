// SPDX-License-Identifier: MIT
// Document generators: plain string building, so the documents do not depend on the library.
#include "doc_generator.h"

#include <string>

namespace jcpbench {

namespace {

std::string num(int i) {
    return std::to_string(i);
}

std::string quoted(const std::string& s) {
    return "\"" + s + "\"";
}

// "{...},{...}" of count items made by item(i).
template <typename Item>
std::string joined(int count, Item item) {
    std::string out;
    for (int i = 0; i < count; ++i) {
        if (i > 0) out += ',';
        out += item(i);
    }
    return out;
}

std::string keys(int n, const char* prefix) {
    std::string out;
    for (int i = 0; i < n; ++i) out += "," + quoted(prefix + num(i)) + ":" + num(i);
    return out;
}

std::string macRule(int i) {
    return "{\"precedence\":" + num(i + 1) + ",\"allow\":\"deny\",\"smac\":\"00-11-22-" +
           num(10 + i % 90) + "-44-55\",\"smac_mask\":\"ff-ff-ff-ff-ff-ff\"}";
}

std::string ipRule(int i, bool v6) {
    std::string source =
        v6 ? "\"2001:db8::" + num(i % 9000) + "/128\"" : "\"10." + num(i % 250) + ".0.0/16\"";
    return "{\"precedence\":" + num(i + 1) +
           ",\"allow\":\"allow\",\"protocol\":6,\"sip\":" + source +
           ",\"low_dport\":" + num(1000 + i % 60000) + ",\"high_dport\":" + num(1000 + i % 60000) +
           "}";
}

// Two WLANs share each ACL, as neighbouring WLANs of a campus often do.
constexpr int kAclsPerType = 4;

// Rule i of the n ACL rules goes to ACL (i % 12): four MAC, four IPv4, four IPv6 lists.
std::string aclTables(int n) {
    constexpr int kLists = 3 * kAclsPerType;
    auto rulesOf = [n](int list, auto rule) {
        std::string out;
        int k = 0;
        for (int i = list; i < n; i += kLists) {
            if (k > 0) out += ',';
            out += rule(k++);
        }
        return out;
    };
    std::string mac = joined(kAclsPerType, [&](int k) {
        return "{\"name\":\"mac" + num(k) + "\",\"mac_rules\":[" +
               rulesOf(k, [](int i) { return macRule(i); }) + "]}";
    });
    std::string ip = joined(kAclsPerType, [&](int k) {
        return "{\"name\":\"ip" + num(k) + "\",\"ip_rules\":[" +
               rulesOf(kAclsPerType + k, [](int i) { return ipRule(i, false); }) + "]}";
    });
    std::string ip6 = joined(kAclsPerType, [&](int k) {
        return "{\"name\":\"ipv6-" + num(k) + "\",\"ip_rules\":[" +
               rulesOf(2 * kAclsPerType + k, [](int i) { return ipRule(i, true); }) + "]}";
    });
    return "\"mac_acl\":[" + mac + "],\"ip_acl\":[" + ip + "],\"ipv6_acl\":[" + ip6 + "]";
}

std::string wlans() {
    return "\"wlan\":[" +
           joined(8,
                  [](int k) {
                      std::string id = num(k);
                      std::string acl = num(k / 2);
                      return "{\"name\":\"wlan" + id + "\",\"cen_ssid_id\":" + num(k + 1) +
                             ",\"ssid\":\"campus-" + id +
                             "\",\"enabled\":true,\"auth_mode\":\"wpa2-enterprise\",\"vlans\":[{"
                             "\"vlan\":" +
                             num(100 + k) +
                             ",\"tagged\":true}],\"qos_policy\":\"wq\",\"mac_in_acl\":\"mac" + acl +
                             "\",\"mac_out_acl\":\"mac" + acl + "\",\"ip_in_acl\":\"ip" + acl +
                             "\",\"ip_out_acl\":\"ip" + acl + "\",\"ipv6_in_acl\":\"ipv6-" + acl +
                             "\",\"ipv6_out_acl\":\"ipv6-" + acl + "\",\"app_policy\":\"app" + id +
                             "\",\"captive_portal\":\"portal" + id + "\"}";
                  }) +
           "]";
}

std::string policies() {
    std::string apps = joined(8, [](int k) {
        return "{\"name\":\"app" + num(k) + "\",\"rule_entry\":[" +
               joined(4,
                      [](int r) {
                          return "{\"precedence\":" + num(r + 1) + ",\"canned_app\":\"app-" +
                                 num(r) + "\",\"action\":\"deny\"}";
                      }) +
               "]}";
    });
    std::string portals = joined(8, [](int k) {
        return "{\"name\":\"portal" + num(k) +
               "\",\"captive_portal_enforcement\":\"always\",\"server_host\":\"portal.example\"," +
               "\"dns_whitelist\":\"dns\",\"aaa_policy\":\"aaa\"}";
    });
    return "\"app_policy\":[" + apps + "],\"captive_portal\":[" + portals +
           "],\"dns_whitelist\":[{\"name\":\"dns\",\"entry\":[{\"host\":\"a.example\"},"
           "{\"host\":\"b.example\"}]}],\"aaa_policy\":[{\"name\":\"aaa\",\"server\":"
           "[{\"host\":\"10.0.0.5\",\"port\":1812}]}],\"wlan_qos\":[{\"name\":\"wq\","
           "\"wmm\":true}],\"radio_qos\":[{\"name\":\"rq\",\"admission_control_voice_enable\":"
           "true,\"admission_control_video_enable\":false,\"smart_rf\":1}]";
}

std::string campusRadio(int r) {
    static const char* const kModes[] = {"2.4GHz-wlan", "5GHz-wlan", "6GHz-wlan"};
    return "{\"name\":\"radio" + num(r + 1) + "\",\"type\":\"radio\",\"rf_mode\":\"" + kModes[r] +
           "\",\"channel\":\"smart\",\"power\":17,\"qos_policy\":\"rq\",\"wlanbssmap\":[" +
           joined(8,
                  [](int k) {
                      return "{\"bss\":" + num(k + 1) + ",\"wlan\":\"wlan" + num(k) + "\"}";
                  }) +
           "]}";
}

std::string virtualInterface(int i) {
    return "{\"name\":\"vlan" + num(i) + "\",\"type\":\"vlan\",\"internal_key\":" + num(i) +
           ",\"vlan\":" + num(i % 4094 + 1) + ",\"proxy_arp\":false,\"ip_address\":\"10." +
           num(i % 250) + ".1.1/24\"}";
}

// A document head: the scalars and a device that names no profile.
std::string head() {
    return "\"config-version\":\"0a1b\",\"personality\":\"ap5010\",\"request-id\":7";
}

}  // namespace

std::string campusDocument(int n) {
    std::string interfaces =
        joined(3, campusRadio) + (n > 0 ? "," : "") + joined(n, virtualInterface);
    return "{" + head() +
           ",\"device\":{\"name\":\"ap\",\"hostname\":\"ap\",\"profile_name\":\"pr\","
           "\"rf_domain_name\":\"rf\",\"interface\":[" +
           interfaces +
           "]},\"profile\":[{\"name\":\"pr\",\"type\":\"ap5010\",\"management_policy\":\"mg\","
           "\"led_mode\":\"off\"}],\"management_policy\":[{\"name\":\"mg\",\"ssh\":true}],"
           "\"rf_domain\":[{\"name\":\"rf\",\"country\":\"us\"}]," +
           wlans() + "," + aclTables(n) + "," + policies() + "}";
}

std::string campusDocumentOfSize(size_t targetBytes) {
    // The size grows linearly with n: estimate from two points, then step up to the target.
    size_t base = campusDocument(0).size();
    size_t per = (campusDocument(200).size() - base) / 200;
    int n = targetBytes > base ? static_cast<int>((targetBytes - base) / per) : 0;
    std::string text = campusDocument(n);
    while (text.size() < targetBytes) text = campusDocument(n += 1 + n / 200);
    return text;
}

std::string manyKeysDocument(int n) {
    return "{" + head() + ",\"device\":{\"name\":\"ap\"" + keys(n, "k") + "}}";
}

std::string manyUwbDocument(int n) {
    return "{" + head() + ",\"device\":{\"name\":\"ap\"" + keys(n, "k") + ",\"interface\":[" +
           joined(n,
                  [](int i) {
                      return "{\"name\":\"uwb" + num(i) +
                             "\",\"type\":\"uwb\",\"channel\":" + num(i % 9) + "}";
                  }) +
           "]}}";
}

std::string bigRadioDocument(int n) {
    std::string radio = "{\"name\":\"radio1\",\"type\":\"radio\"" + keys(n, "r") + "}";
    return "{" + head() + ",\"device\":{\"name\":\"ap\",\"profile_name\":\"pr\",\"interface\":[" +
           radio + "]},\"profile\":[{\"name\":\"pr\",\"interface\":[" + radio + "]}]}";
}

std::string manyBssDocument(int n) {
    return "{" + head() +
           ",\"device\":{\"name\":\"ap\",\"interface\":[{\"name\":\"radio1\",\"type\":\"radio\","
           "\"wlanbssmap\":[" +
           joined(n,
                  [](int i) {
                      return "{\"bss\":" + num(i % 8 + 1) + ",\"wlan\":\"w" + num(i) + "\"}";
                  }) +
           "]}]},\"wlan\":[" +
           joined(n,
                  [](int i) {
                      return "{\"name\":\"w" + num(i) + "\",\"cen_ssid_id\":" + num(i + 1) +
                             ",\"ssid\":\"net" + num(i) + "\"}";
                  }) +
           "]}";
}

std::string descendingPortsDocument(int n) {
    return "{" + head() + ",\"device\":{\"name\":\"ap\",\"interface\":[" +
           joined(n,
                  [n](int i) {
                      return "{\"name\":\"p" + num(n - i) +
                             "\",\"type\":\"ethernet\",\"speed\":\"auto\"}";
                  }) +
           "]}}";
}

std::string manyMeshpointsDocument(int n) {
    auto bssMap = joined(n, [](int i) {
        return "{\"bss\":" + num(i % 8 + 1) + ",\"meshpoint\":\"mp" + num(i) + "\"}";
    });
    auto devices = joined(n, [](int i) {
        return "{\"name\":\"mp" + num(i) +
               "\",\"is_root_dev\":\"false\",\"acs_channel_list_5\":[\"36,40\"],"
               "\"acs_path_min_5\":3}";
    });
    return "{" + head() +
           ",\"device\":{\"name\":\"ap\",\"profile_name\":\"pr\",\"meshpoint_device\":[" + devices +
           "]},\"profile\":[{\"name\":\"pr\",\"interface\":[{\"name\":\"radio2\",\"type\":"
           "\"radio\",\"rf_mode\":\"5GHz-wlan\",\"meshpointbssmap\":[" +
           bssMap + "]}]}],\"meshpoint\":[" +
           joined(n,
                  [](int i) {
                      return "{\"name\":\"mp" + num(i) + "\",\"cen_ssid_id\":" + num(i + 1) +
                             ",\"meshid\":\"mesh" + num(i) + "\",\"is_root\":false}";
                  }) +
           "]}";
}

std::string manyRadiosDocument(int n) {
    return "{" + head() + ",\"device\":{\"name\":\"ap\",\"interface\":[" +
           joined(n,
                  [](int i) {
                      return "{\"name\":\"radio" + num(i + 1) +
                             "\",\"type\":\"radio\",\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w\"}]}";
                  }) +
           "]},\"wlan\":[{\"name\":\"w\",\"cen_ssid_id\":1,\"ssid\":\"one\"}]}";
}

const std::vector<NamedShape>& adversarialShapes() {
    static const std::vector<NamedShape> shapes = {
        {"many_keys", manyKeysDocument, 20000},
        {"many_uwb", manyUwbDocument, 20000},
        {"big_radio", bigRadioDocument, 30000},
        {"many_bss", manyBssDocument, 10000},
        {"descending_ports", descendingPortsDocument, 20000},
        {"many_meshpoints", manyMeshpointsDocument, 10000},
        {"many_radios", manyRadiosDocument, 20000},
    };
    return shapes;
}

}  // namespace jcpbench
