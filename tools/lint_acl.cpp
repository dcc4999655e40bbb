// lint: the rules of every ACL object, through the rule check the filter converter provides
// (g_aclRuleCheck), so the rules are judged by one set of checks only.
#include "lint_context.h"

namespace lint {

void checkAclRules(const Context& ctx, Findings& out) {
    if (g_aclRuleCheck == nullptr) return;
    for (const char* table : {"mac_acl", "ip_acl", "ipv6_acl"}) {
        forEachItem(ctx, table, [&](json_object* acl, const std::string& at) {
            g_aclRuleCheck(acl, table, at, out);
        });
    }
}

}  // namespace lint
