// SPDX-License-Identifier: MIT
// Generated JSON-Q+ documents for the benchmarks: a campus AP grown to a target size, and the
// adversarial shapes that once made the build quadratic.
#ifndef JSONCFGPLUS_BENCH_DOC_GENERATOR_H
#define JSONCFGPLUS_BENCH_DOC_GENERATOR_H

#include <cstddef>
#include <string>
#include <vector>

namespace jcpbench {

// Three radios with eight WLANs each; every WLAN names MAC, IPv4 and IPv6 ACLs, an
// application policy and a captive portal. n ACL rules in all and n virtual interfaces.
std::string campusDocument(int n);
// The campus document with the smallest n whose text is at least targetBytes long.
std::string campusDocumentOfSize(size_t targetBytes);

// A device with n keys of its own.
std::string manyKeysDocument(int n);
// A device with n keys whose interface list holds n "uwb" items.
std::string manyUwbDocument(int n);
// radio1 with the same n keys in the profile's and in the device's interface list.
std::string bigRadioDocument(int n);
// One radio whose BSS map has n items naming n WLAN objects.
std::string manyBssDocument(int n);
// n wired ports listed from pN down to p1.
std::string descendingPortsDocument(int n);
// One radio with n meshpoints and as many meshpoint-device entries.
std::string manyMeshpointsDocument(int n);
// n radios whose BSS maps all name one WLAN.
std::string manyRadiosDocument(int n);

struct NamedShape {
    const char* name;
    std::string (*make)(int);
    int n;  // the size the benchmark runs
};
// Every adversarial shape with its benchmark size.
const std::vector<NamedShape>& adversarialShapes();

}  // namespace jcpbench

#endif
