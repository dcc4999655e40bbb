// SPDX-License-Identifier: MIT
// The hiredis connection behind the Redis transport and the build driver's Redis source.
#include "document/redis_client.h"

#include <hiredis/hiredis.h>

#include "base/diag.h"

namespace {

struct ReplyRelease {
    void operator()(redisReply* reply) const { freeReplyObject(reply); }
};
using Reply = std::unique_ptr<redisReply, ReplyRelease>;

constexpr unsigned int kGetTimeoutSeconds = 5;
constexpr unsigned int kSetTimeoutSeconds = 20;

redisContext* connectWithHiredis(const char* host, int port, struct timeval timeout) {
    return redisConnectWithTimeout(host, port, timeout);
}

jcp::RedisConnector g_connector = &connectWithHiredis;

}  // namespace

jcp::RedisConnector jcp::setRedisConnector(RedisConnector connector) {
    RedisConnector previous = g_connector;
    g_connector = connector != nullptr ? connector : &connectWithHiredis;
    return previous;
}

redisClient::redisClient(const std::string& host, int port, struct timeval timeout)
    : m_host(host), m_timeout(timeout), m_context(nullptr, &redisFree) {
    m_context.reset(g_connector(m_host.c_str(), port, m_timeout));
    if (m_context == nullptr) {
        jcp::diag("Connection error: can't allocate redis context.");
        m_state = kFailed;
    } else if (m_context->err != 0) {
        jcp::diag("Connection error: ", m_context->errstr);
        m_context.reset();
        m_state = kFailed;
    } else {
        m_state = kConnected;
    }
}

redisClient::~redisClient() = default;

int redisClient::setTimeout(unsigned int seconds) {
    struct timeval tv = {};
    tv.tv_sec = static_cast<time_t>(seconds);
    if (m_context == nullptr || redisSetTimeout(m_context.get(), tv) != REDIS_OK) {
        jcp::diag("ERR: redisSetTimeout failed");
        return -1;
    }
    return 0;
}

int redisClient::getString(const std::string& key, std::string& value) {
    if (m_state != kConnected) return 1;
    setTimeout(kGetTimeoutSeconds);
    redisEnableKeepAlive(m_context.get());
    Reply reply(static_cast<redisReply*>(redisCommand(m_context.get(), "GET %s", key.c_str())));
    // A nil reply (missing key), an error reply (WRONGTYPE) and no reply (time-out) all fail.
    if (reply == nullptr || reply->type != REDIS_REPLY_STRING) return 1;
    value.assign(reply->str, reply->len);
    return 0;
}

int redisClient::setString(const std::string& key, const std::string& value) {
    if (m_state != kConnected) return 1;
    setTimeout(kSetTimeoutSeconds);
    redisEnableKeepAlive(m_context.get());
    Reply reply(static_cast<redisReply*>(
        redisCommand(m_context.get(), "SET %s %s", key.c_str(), value.c_str())));
    return 0;
}
