// SPDX-License-Identifier: MIT
// Building a document from the text stored under the Redis key a pointer document names.
#include "document/redis_source.h"

#include "base/diag.h"
#include "document/json_cfg_plus.h"
#include "document/redis_client.h"

namespace jcp {

bool hasRedisSource(const jsonCfgPlus& document) {
    return document.m_redis_depth == 0 && !document.m_redis_ip.empty() &&
           document.m_redis_port != 0 && !document.m_redis_key.empty();
}

int buildFromRedis(jsonCfgPlus& document) {
    // The nested build resets the key and port, so the server's address is kept here.
    const std::string host = document.m_redis_ip;
    const int port = document.m_redis_port;
    diag("Connecting  Redis-server: ", host, ":", port, ", retrieving key: ", document.m_redis_key);
    ++document.m_redis_depth;

    std::string text;
    {
        struct timeval connectTimeout = {};
        connectTimeout.tv_sec = 2;
        redisClient client(host, port, connectTimeout);
        if (!client.connected()) {
            failure("Redis Connection error.");
            return -1;
        }
        if (client.getString(document.m_redis_key, text) != 0) {
            diag("retrieving Json Configuration from Redis server failed.");
            return -1;
        }
        // The connection is closed here: the nested build does not need it.
    }
    diag("retrieving Json Configuration from Redis server succeeded.");

    int result = document.buildConfig(text.data(), static_cast<unsigned int>(text.size()));
    document.m_global.emplace_back("cen_redis_port", port, "");
    document.m_global.emplace_back("cen_redis_host", host, "");
    return result;
}

}  // namespace jcp
