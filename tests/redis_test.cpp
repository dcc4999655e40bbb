// SPDX-License-Identifier: MIT
// The Redis transport and the build driver's Redis source against a real redis-server.
#include <chrono>
#include <memory>
#include <string>

#include "document/json_cfg_plus.h"
#include "document/redis_client.h"
#include "document/redis_source.h"
#include "redis_server.h"
#include "test_support.h"

using testsupport::captureStderr;
using testsupport::captureStdout;

namespace {

// Allowance for a loaded machine and the sanitizer build on top of a time-out.
constexpr double kSlack = 3.0;
const std::string kGot = "retrieving Json Configuration from Redis server succeeded.\n";
const std::string kNotGot = "retrieving Json Configuration from Redis server failed.\n";
const std::string kRefused = "Connection error: Connection refused\n";

template <typename Fn>
double secondsTaken(Fn&& fn) {
    auto start = std::chrono::steady_clock::now();
    fn();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string connecting(const std::string& key, int port) {
    return "Connecting  Redis-server: 127.0.0.1:" + std::to_string(port) +
           ", retrieving key: " + key + "\n";
}

class RedisTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { s_server = std::make_unique<testsupport::RedisServer>(); }
    static void TearDownTestSuite() { s_server.reset(); }

    static int port() { return s_server->port(); }
    static std::string pointer(const std::string& key, int port) {
        return R"({"ip":"127.0.0.1","port":)" + std::to_string(port) + R"(,"key":")" + key +
               R"("})";
    }
    // sendJsonCfgPlus with its standard output kept in out.
    static int send(const std::string& ptr, const std::string& payload, int verbose,
                    std::string& out) {
        int rc = 0;
        out = captureStdout([&] {
            rc = sendJsonCfgPlus(ptr.data(), unsigned(ptr.size()), payload.c_str(), verbose);
        });
        return rc;
    }
    static std::string setLine(const std::string& key, int port, size_t bytes) {
        return "Redis<127.0.0.1:" + std::to_string(port) + ">: SET " + key +
               " [payload: " + std::to_string(bytes) + " bytes]\n";
    }

    static std::unique_ptr<testsupport::RedisServer> s_server;
};

std::unique_ptr<testsupport::RedisServer> RedisTest::s_server;

TEST_F(RedisTest, ReadsOnlyStringValues) {
    s_server->cli("SET plain 'a b'");
    s_server->cli("SET empty ''");
    s_server->cli("RPUSH listed x");
    redisClient client("127.0.0.1", port(), {2, 0});
    ASSERT_TRUE(client.connected());
    std::string value = "untouched";
    EXPECT_EQ(client.getString("missing", value), 1);
    EXPECT_EQ(client.getString("listed", value), 1);
    EXPECT_EQ(value, "untouched");
    EXPECT_EQ(client.getString("plain", value), 0);
    EXPECT_EQ(value, "a b");
    EXPECT_EQ(client.getString("empty", value), 0);
    EXPECT_EQ(value, "");

    std::string out = captureStdout([&] {
        EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", port(), "plain"), 0);
        EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", port(), "missing"), -1);
    });
    EXPECT_EQ(out, connecting("plain", port()) + kGot + connecting("missing", port()) + kNotGot);
}

TEST_F(RedisTest, UnreachableServerFailsFastAndSendsNothing) {
    int unused = testsupport::unusedPort();
    std::string out;
    double taken = secondsTaken([&] {
        out = captureStdout([&] {
            redisClient client("127.0.0.1", unused, {2, 500000});
            EXPECT_EQ(client.state(), redisClient::kFailed);
            EXPECT_EQ(client.setString("k", "v"), 1);
            EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", unused, "k"), -1);
        });
    });
    EXPECT_EQ(out, kRefused + kRefused + connecting("k", unused) + "Redis Connection error.\n");
    EXPECT_LT(taken, 2.5);
    EXPECT_EQ(send(pointer("k", unused), "{}", 0, out), -1);
    EXPECT_EQ(out, setLine("k", unused, 2) + kRefused + "Redis Connection error.\n");
}

TEST_F(RedisTest, SilentServerHitsTheCommandTimeouts) {
    testsupport::LoopbackSocket silent(true);
    double getTaken = secondsTaken([&] {
        captureStdout(
            [&] { EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", silent.port(), "k"), -1); });
    });
    EXPECT_GT(getTaken, 4.5);
    EXPECT_LT(getTaken, 5 + kSlack);
    // setString reports only that SET was issued, so an unanswered store still "succeeds".
    std::string out;
    double setTaken =
        secondsTaken([&] { EXPECT_EQ(send(pointer("k", silent.port()), "{}", 0, out), 0); });
    EXPECT_GT(setTaken, 19.5);
    EXPECT_LT(setTaken, 20 + kSlack);
    EXPECT_EQ(out, setLine("k", silent.port(), 2) +
                       "set Json Configuration to Redis server succeeded.\n");
}

TEST_F(RedisTest, UnusablePointerIsRefusedWithoutConnecting) {
    const std::string incorrect = "Redis server info is incorrect.\n";
    const std::pair<std::string, std::string> cases[] = {
        {R"({"ip":"127.0.0.1","port":6379})", "Redis: 127.0.0.1:6379, key=\n" + incorrect},
        {R"({"ip":"127.0.0.1","port":0,"key":"k"})", "Redis: 127.0.0.1:0, key=k\n" + incorrect},
        {R"({"ip":)", ""},
    };
    for (const auto& [ptr, expected] : cases) {
        std::string out;
        captureStderr([&] { EXPECT_EQ(send(ptr, "{}", 0, out), -1) << ptr; });
        EXPECT_EQ(out, expected) << ptr;
    }
}

TEST_F(RedisTest, StoresMegabytesByteForByte) {
    std::string payload = R"({"items":[)";
    for (int i = 0; payload.size() < 4u << 20; ++i)
        payload += R"({"n":)" + std::to_string(i) + R"j(,"s":"a b\t\"q\" \u00e9 é ;$(x)"},)j";
    payload += "{}]}";
    std::string out;
    ASSERT_EQ(send(pointer("big key", port()), payload, 0, out), 0);
    EXPECT_EQ(out, setLine("big key", port(), payload.size()) +
                       "set Json Configuration to Redis server succeeded.\n");
    EXPECT_TRUE(s_server->cli("GET 'big key'") == payload + "\n");
}

TEST_F(RedisTest, VerboseShowsJsonPayloadsOnly) {
    std::string out;
    ASSERT_EQ(send(pointer("v", port()), R"({"a":[1]})", 1, out), 0);
    EXPECT_EQ(out, setLine("v", port(), 9) + "payload to SET:\n{\n  \"a\": [\n    1\n  ]\n}\n" +
                       "set Json Configuration to Redis server succeeded.\n");
    ASSERT_EQ(send(pointer("v", port()), "not json", 1, out), 0);
    EXPECT_EQ(out.find("payload to SET:"), std::string::npos);
    EXPECT_EQ(s_server->cli("GET v"), "not json\n");
}

class RedisSourceTest : public RedisTest {
  protected:
    int build(const std::string& key, int onPort) {
        m_doc.m_redis_ip = "127.0.0.1";
        m_doc.m_redis_port = onPort;
        m_doc.m_redis_key = key;
        m_doc.m_redis_depth = 0;
        EXPECT_TRUE(jcp::hasRedisSource(m_doc));
        int rc = 0;
        m_out =
            captureStdout([&] { m_err = captureStderr([&] { rc = jcp::buildFromRedis(m_doc); }); });
        EXPECT_FALSE(jcp::hasRedisSource(m_doc));  // counted, even when it failed
        return rc;
    }
    jsonCfgPlus m_doc;
    std::string m_out, m_err;
};

TEST_F(RedisSourceTest, FetchFailuresGiveMinusOne) {
    s_server->cli("SET broken '{\"device\":'");
    s_server->cli("SET blank ''");
    s_server->cli("RPUSH listdoc a");
    // Key, what the fetch reports, and whether the fetched text reached the JSON parser.
    const std::tuple<const char*, std::string, bool> cases[] = {{"absent", kNotGot, false},
                                                                {"listdoc", kNotGot, false},
                                                                {"broken", kGot, true},
                                                                {"blank", kGot, true}};
    for (const auto& [key, verdict, parsed] : cases) {
        EXPECT_EQ(build(key, port()), -1) << key;
        EXPECT_EQ(m_out.rfind(connecting(key, port()) + verdict, 0), 0u) << m_out;
        EXPECT_EQ(m_err.rfind("Error: ", 0) == 0, parsed) << key;
    }
}

// The silent server's time-outs are the transport's (SilentServerHitsTheCommandTimeouts).
TEST_F(RedisSourceTest, UnreachableServerGivesMinusOne) {
    int unused = testsupport::unusedPort();
    EXPECT_EQ(build("k", unused), -1);
    EXPECT_EQ(m_out, connecting("k", unused) + kRefused + "Redis Connection error.\n");
}

}  // namespace

namespace {

// The whole road: a pointer document handed to the parse entry comes back as the stored one,
// fetched once even though the stored document is itself a pointer.
TEST_F(RedisTest, PointerDocumentBuildsTheStoredDocument) {
    s_server->cli(
        "SET whole '{\"request-id\":9,\"ip\":\"127.0.0.1\",\"port\":" + std::to_string(port()) +
        ",\"key\":\"second\",\"device\":{\"hostname\":\"stored-ap\"}}'");
    std::string pointerText = "{\"ip\":\"127.0.0.1\",\"port\":" + std::to_string(port()) +
                              ",\"key\":\"whole\",\"device\":{\"hostname\":\"pointer\"}}";
    std::string out;
    apiCfgPlusResult* r = testsupport::parseText(pointerText, jsonCfgPlusParserCallback, &out);
    ASSERT_NE(r, nullptr);
    EXPECT_NE(out.find(connecting("whole", port()) + kGot), std::string::npos) << out;
    EXPECT_EQ(out.find("retrieving key: second"), std::string::npos) << out;
    std::vector<std::string> names;
    for (int32_t i = 0; i < r->global.count; ++i) names.push_back(r->global.entries[i].name);
    ASSERT_GE(names.size(), 3u);
    EXPECT_EQ(names[names.size() - 2], "cen_redis_port");
    EXPECT_EQ(names.back(), "cen_redis_host");
    const apiCfgPlusEntry* hostname = testsupport::findEntry(r->global, "hostname");
    ASSERT_NE(hostname, nullptr);
    EXPECT_STREQ(static_cast<const char*>(hostname->value), "stored-ap");
    captureStdout([&] { freeJsonCfgPlus(r); });
}

}  // namespace
