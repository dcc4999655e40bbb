// SPDX-License-Identifier: MIT
// IPAddr::hostname2ip: one address of a wanted family for a host name, through getaddrinfo.
#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>

#include "addr/ip_addr.h"

int IPAddr::hostname2ip(int family, const char* host, IPAddr& out) {
    if (family != AF_INET && family != AF_INET6) return -9;
    addrinfo hints;
    std::memset(&hints, 0, sizeof hints);
    hints.ai_family = family;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* results = nullptr;
    if (const int rc = getaddrinfo(host, nullptr, &hints, &results)) return rc;

    int rc = -4;
    for (const addrinfo* ai = results; ai != nullptr; ai = ai->ai_next) {
        if (ai->ai_family != family || ai->ai_addr == nullptr) continue;
        if (family == AF_INET) {
            if (ai->ai_addrlen < sizeof(sockaddr_in)) continue;
            sockaddr_in sin;
            std::memcpy(&sin, ai->ai_addr, sizeof sin);
            out = IPAddr(ntohl(sin.sin_addr.s_addr));
        } else {
            if (ai->ai_addrlen < sizeof(sockaddr_in6)) continue;
            sockaddr_in6 sin6;
            std::memcpy(&sin6, ai->ai_addr, sizeof sin6);
            out.assignV6NtwkOrder(sin6.sin6_addr.s6_addr);
        }
        rc = 0;
        break;
    }
    freeaddrinfo(results);
    return rc;
}
