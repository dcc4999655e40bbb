// SPDX-License-Identifier: MIT
// A C++ caller of an installed jsoncfgplus: the document class, whose header brings json-c's.
#include <jsoncfgplus/api/jsoncfgplus.h>
#include <jsoncfgplus/document/json_cfg_plus.h>

#include <cstring>
#include <iostream>
#include <list>
#include <string>

int main() {
    const char text[] = "{\"ntp\":[\"a\",\"bc\"]}";
    jsonCfgPlus document;
    json_object* root = document.parse(text, static_cast<unsigned int>(std::strlen(text)));
    json_object* ntp = nullptr;
    std::list<std::string> servers;
    // json-c's own entries: a consumer of the C++ headers links json-c through the package.
    bool ok = root != nullptr && json_object_object_get_ex(root, "ntp", &ntp) &&
              jsonCfgPlus::isStrList(ntp, servers) && servers == std::list<std::string>{"a", "bc"};
    json_object_put(root);
    if (!ok) std::cerr << "consumer.cpp: \"ntp\" did not read back as two strings\n";
    return ok ? 0 : 1;
}
