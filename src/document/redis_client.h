// SPDX-License-Identifier: MIT
// redisClient: the blocking hiredis connection that stores and fetches documents.
#ifndef JSONCFGPLUS_DOCUMENT_REDIS_CLIENT_H
#define JSONCFGPLUS_DOCUMENT_REDIS_CLIENT_H

#include <sys/time.h>

#include <memory>
#include <string>

#include "../base/export.h"

struct redisContext;

namespace jcp {

// Opens the connection behind every redisClient; a context that redisFree can release, or
// null. Replaceable so that fuzzers and hostile-input tests never open a socket, whatever
// server a document names.
using RedisConnector = redisContext* (*)(const char* host, int port, struct timeval timeout);

// Installs connector (null restores hiredis's redisConnectWithTimeout) and returns the one it
// replaces.
RedisConnector setRedisConnector(RedisConnector connector);

}  // namespace jcp

class JCP_EXPORT redisClient {
  public:
    enum State { kConnecting = 1, kConnected = 2, kFailed = 4 };

    // Connects at once; a failure is printed and leaves the client in state kFailed, where
    // every command returns 1 without touching the network.
    redisClient(const std::string& host, int port, struct timeval timeout);
    redisClient(const redisClient&) = delete;
    redisClient& operator=(const redisClient&) = delete;
    virtual ~redisClient();

    // GET key (5-second command time-out): 0 and value set when the key holds a string;
    // 1 for a missing key, a value of another type, a time-out or no connection.
    int getString(const std::string& key, std::string& value);
    // SET key value (20-second command time-out): 0 once the command has been issued, whatever
    // the server answered; 1 when not connected.
    int setString(const std::string& key, const std::string& value);
    // The read/write time-out of later commands; 0 on success.
    int setTimeout(unsigned int seconds);

    int state() const { return m_state; }
    bool connected() const { return m_state == kConnected; }

  private:
    std::string m_host;
    struct timeval m_timeout;  // the connect time-out as given
    int m_state = kConnecting;
    std::unique_ptr<redisContext, void (*)(redisContext*)> m_context;  // null unless connected
};

#endif
