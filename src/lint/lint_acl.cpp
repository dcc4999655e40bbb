// SPDX-License-Identifier: MIT
// lint: every filter rule (MAC, IPv4 and IPv6 ACLs, application policies, DNS white lists) and
// every captive portal's HTTP ports, judged by the filter converter itself, one rule at a time,
// so that every invalid rule is found and not only the first. The converter's own reason, which
// it prints, becomes the message; nothing of its judgement is repeated here.
#include <exception>

#include "base/diag.h"
#include "convert/converter.h"
#include "lint/lint_context_priv.h"

namespace jcp::lint {

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

enum class RuleKind { Mac, Ip, App, DnsEntry };

// Where rules live: the array in each object of a table, and the name the build walks that
// object under for a WLAN. A rule's elements are named walkedAs/array/key until the converter
// strips that prefix.
struct RuleSource {
    const char* table;
    const char* array;
    const char* walkedAs;
    RuleKind kind;
};

const RuleSource kRuleSources[] = {
    {"mac_acl", "mac_rules", "mac_in_acl", RuleKind::Mac},
    {"ip_acl", "ip_rules", "ip_in_acl", RuleKind::Ip},
    {"ipv6_acl", "ip_rules", "ipv6_in_acl", RuleKind::Ip},
    {"app_policy", "rule_entry", "app_policy", RuleKind::App},
    {"dns_whitelist", "entry", "captive_portal/dns_whitelist", RuleKind::DnsEntry},
};

// One conversion whose captured lines are read once the capture ends.
struct Verdict {
    std::string pointer;
    bool error;  // an error when the object is in use, else a warning
    size_t from;
    size_t to;
    std::string thrown;  // what the conversion threw; the build lets it escape
};

class RuleJudge {
  public:
    explicit RuleJudge(const jcp::DiagCapture& capture) : m_capture(capture) {}

    // Runs convert; a failure (or an exception) is kept with the lines it printed.
    template <typename Convert>
    void judge(const std::string& pointer, bool inUse, Convert convert) {
        size_t from = m_capture.text().size();
        std::string thrown;
        int result = 0;
        try {
            result = convert();
        } catch (const std::exception& e) {
            thrown = e.what();
            result = -1;
        }
        if (result < 0)
            m_verdicts.push_back({pointer, inUse, from, m_capture.text().size(), thrown});
    }

    void report(const std::string& captured, Findings& out) const {
        for (const Verdict& v : m_verdicts) {
            std::string message = lastLine(captured.substr(v.from, v.to - v.from));
            if (!v.thrown.empty()) {
                if (!message.empty()) message += "; ";
                message +=
                    "the filter step throws (" + v.thrown + "), so the document is not translated";
            }
            if (message.empty()) message = "the filter converter refuses it";
            if (v.error) {
                out.error(v.pointer, message);
            } else {
                out.warning(v.pointer, message + " (unused, so the AP never reads it)");
            }
        }
    }

  private:
    static std::string lastLine(const std::string& text) {
        size_t end = text.find_last_not_of('\n');
        if (end == std::string::npos) return "";
        size_t newline = text.rfind('\n', end);
        size_t begin = newline == std::string::npos ? 0 : newline + 1;
        return text.substr(begin, end + 1 - begin);
    }

    const jcp::DiagCapture& m_capture;
    std::vector<Verdict> m_verdicts;
};

// Converts one rule of the kind; the result as the converter gives it.
int convertRule(cfgPlusApiConverter& converter, RuleKind kind, const std::string& prefix,
                const cfgElement& item) {
    // Each rule alone, as the filter step converts it, so each failure is this rule's.
    apiCfgPlusFilterRule record{};
    if (kind == RuleKind::DnsEntry) {
        ElementList one{item};
        cfgElement entry = converter.jsonCfgPlusRemovePrefix(one, prefix).front();
        return converter.jsonCfgPlusVnsDnsWhiteListToIpAcl(entry, record.rule);
    }
    cfgElement rule = converter.jsonCfgPlusRemovePrefix(item, 2);
    switch (kind) {
        case RuleKind::Mac:
            return converter.jsonCfgPlusVnsMacAcl(rule, cfgPlusApiConverter::FILTER_INBOUND,
                                                  record);
        case RuleKind::Ip:
            // A rule's direction sets only its flags, never whether it is valid.
            return converter.jsonCfgPlusVnsIpAcl(rule, cfgPlusApiConverter::FILTER_INBOUND, record);
        default:
            return converter.jsonCfgPlusVnsAppPolicy(rule, record);
    }
}

// An item of a rule array that is not an object: the walk skips null; anything else becomes a
// rule without a single key of its own.
void reportNonObjectRule(json_object* rule, const std::string& at, Findings& out) {
    if (rule == nullptr) {
        out.warning(at, "null is not a rule; the build skips it");
    } else {
        out.error(at, "is " + describeType(rule) +
                          ", not a rule object; the build makes a rule without keys of it");
    }
}

void judgeRules(const Context& ctx, cfgPlusApiConverter& converter, const RuleSource& source,
                RuleJudge& judge, Findings& out) {
    forEachItem(ctx, source.table, [&](json_object* object, const std::string& at) {
        json_object* rules = nullptr;
        if (!json_object_object_get_ex(object, source.array, &rules)) return;
        std::string rulesAt = pointerTo(at, source.array);
        // Walked as the build walks it: the rules reach the converter only from an array that
        // the walk keeps as an array of objects.
        std::string path = std::string(source.walkedAs) + "/" + source.array;
        ElementList walked;
        jsonCfgPlus::walk(rules, path, {}, {}, walked);
        if (walked.empty() || walked.front().kind != CFG_OBJ_ARRAY) {
            if (!isType(rules, json_type_array) || json_object_array_length(rules) != 0)
                out.error(rulesAt, "is " + describeType(rules) +
                                       " without rule objects; the build converts no rule of it");
            return;
        }
        const cfgObjArray& items = walked.front().objArray;
        bool inUse = ctx.isReferenced(object);
        auto item = items.begin();
        size_t count = json_object_array_length(rules);
        for (size_t i = 0; i < count && item != items.end(); ++i) {
            json_object* rule = json_object_array_get_idx(rules, i);
            std::string ruleAt = pointerTo(rulesAt, i);
            if (!isType(rule, json_type_object)) {
                reportNonObjectRule(rule, ruleAt, out);
                if (rule != nullptr) ++item;
                continue;
            }
            judge.judge(ruleAt, inUse,
                        [&] { return convertRule(converter, source.kind, path + "/", *item); });
            ++item;
        }
    });
}

// A portal's "cen_http_ports" as the filter step reads it for each WLAN that names the portal:
// through the step itself, on a service that holds nothing else.
void judgeHttpPorts(const Context& ctx, cfgPlusApiConverter& converter, RuleJudge& judge) {
    forEachItem(ctx, "captive_portal", [&](json_object* portal, const std::string& at) {
        // Present even as null: the walk makes a null element of it, which the step refuses.
        if (!json_object_object_get_ex(portal, "cen_http_ports", nullptr)) return;
        vns_entry service;
        jsonCfgPlus::walk(portal, "captive_portal", {"cen_http_ports"}, {}, service.elements);
        judge.judge(pointerTo(at, "cen_http_ports"), ctx.isReferenced(portal),
                    [&] { return converter.jsonCfgPlusVnsServiceFilters(service); });
    });
}

// The signature maps as the filter step sets them before it converts a rule: reloaded, with the
// document's own applications added, so an application rule is judged as the AP judges it.
void loadSignatures(const Context& ctx, cfgPlusApiConverter& converter) {
    jsonCfgPlus doc;
    if (json_object* apps = jsonCfgObj::getJsonObject("cen_ext_app_cfg_tbl", ctx.root()))
        jsonCfgPlus::walk(apps, "cen_ext_app_cfg_tbl", {}, {}, doc.m_global);
    converter.jsonCfgPlusVnsFilters(doc);
}

}  // namespace

void checkFilterRules(const Context& ctx, Findings& out) {
    cfgPlusApiConverter converter;
    jcp::DiagCapture capture;
    RuleJudge judge(capture);
    loadSignatures(ctx, converter);
    for (const RuleSource& source : kRuleSources) judgeRules(ctx, converter, source, judge, out);
    judgeHttpPorts(ctx, converter, judge);
    judge.report(capture.text(), out);
}

}  // namespace jcp::lint
