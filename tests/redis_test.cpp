// The Redis transport and the build driver's Redis source against a real redis-server.
#include <memory>
#include <string>

#include "api/redis_client.h"
#include "document/json_cfg_plus.h"
#include "document/redis_source.h"
#include "redis_server.h"
#include "test_support.h"

using testsupport::captureStderr;
using testsupport::captureStdout;
using testsupport::secondsTaken;

namespace {

const timeval kConnectTimeout = {2, 500000};
// Allowance for a loaded machine and the sanitizer build on top of a time-out.
constexpr double kSlack = 3.0;

class RedisTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { s_server = std::make_unique<testsupport::RedisServer>(); }
    static void TearDownTestSuite() { s_server.reset(); }

    static int port() { return s_server->port(); }
    static std::string hostPort() { return "127.0.0.1:" + std::to_string(port()); }
    static std::string pointer(const std::string& key, int port) {
        return R"({"ip":"127.0.0.1","port":)" + std::to_string(port) + R"(,"key":")" + key +
               R"(","device":{"name":"ap"}})";
    }
    static int send(const std::string& pointerText, const std::string& payload, int verbose,
                    std::string& out) {
        int rc = 0;
        out = captureStdout([&] {
            rc = sendJsonCfgPlus(pointerText.data(), unsigned(pointerText.size()), payload.c_str(),
                                 verbose);
        });
        return rc;
    }

    static std::unique_ptr<testsupport::RedisServer> s_server;
};

std::unique_ptr<testsupport::RedisServer> RedisTest::s_server;

TEST_F(RedisTest, ClientReadsOnlyStringValues) {
    s_server->cli("SET plain 'a b c'");
    s_server->cli("SET empty ''");
    s_server->cli("RPUSH listed x y");
    captureStdout([&] {
        redisClient client("127.0.0.1", port(), kConnectTimeout);
        ASSERT_EQ(client.state(), redisClient::kConnected);
        std::string value = "untouched";
        EXPECT_EQ(client.getString("missing", value), 1);
        EXPECT_EQ(client.getString("listed", value), 1);
        EXPECT_EQ(value, "untouched");
        EXPECT_EQ(client.getString("plain", value), 0);
        EXPECT_EQ(value, "a b c");
        EXPECT_EQ(client.getString("empty", value), 0);
        EXPECT_EQ(value, "");
    });
}

TEST_F(RedisTest, RefusedConnectionFailsFastAndSendsNothing) {
    std::string out;
    double taken = secondsTaken([&] {
        out = captureStdout([&] {
            redisClient client("127.0.0.1", testsupport::unusedPort(), kConnectTimeout);
            EXPECT_EQ(client.state(), redisClient::kFailed);
            std::string value;
            EXPECT_EQ(client.getString("k", value), 1);
            EXPECT_EQ(client.setString("k", "v"), 1);
        });
    });
    EXPECT_EQ(out, "Connection error: Connection refused\n");
    EXPECT_LT(taken, 2.5);
}

TEST_F(RedisTest, SilentServerHitsTheCommandTimeouts) {
    testsupport::LoopbackSocket silent(true);
    std::string out;
    double getTaken =
        secondsTaken([&] { EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", silent.port(), "k"), -1); });
    EXPECT_GT(getTaken, 4.5);
    EXPECT_LT(getTaken, 5 + kSlack);
    // setString reports only that SET was issued, so an unanswered store still "succeeds".
    double setTaken =
        secondsTaken([&] { EXPECT_EQ(send(pointer("k", silent.port()), "{}", 0, out), 0); });
    EXPECT_GT(setTaken, 19.5);
    EXPECT_LT(setTaken, 20 + kSlack);
    EXPECT_NE(out.find("set Json Configuration to Redis server succeeded.\n"), std::string::npos);
}

TEST_F(RedisTest, UnusablePointerIsRefusedWithoutConnecting) {
    struct Case {
        std::string pointer, out;
    } cases[] = {
        {R"({"ip":"127.0.0.1","port":6379})",
         "Redis: 127.0.0.1:6379, key=\nRedis server info is incorrect.\n"},
        {R"({"ip":"127.0.0.1","port":0,"key":"k"})",
         "Redis: 127.0.0.1:0, key=k\nRedis server info is incorrect.\n"},
        {R"({"ip":"127.0.0.1","port":"6379","key":"k"})",
         "Redis: 127.0.0.1:0, key=k\nRedis server info is incorrect.\n"},
        {R"({"port":6379,"key":"k"})", "Redis: :6379, key=k\nRedis server info is incorrect.\n"},
        {R"({"ip":)", ""},
    };
    for (const Case& c : cases) {
        std::string out;
        captureStderr([&] { EXPECT_EQ(send(c.pointer, "{}", 0, out), -1) << c.pointer; });
        EXPECT_EQ(out, c.out) << c.pointer;
    }
}

TEST_F(RedisTest, SendStoresMegabytesByteForByte) {
    std::string payload = R"({"items":[)";
    for (int i = 0; payload.size() < 4u << 20; ++i)
        payload += R"({"n":)" + std::to_string(i) + R"j(,"s":"a b\t\"q\" \u00e9 é ;$(x)"},)j";
    payload += R"({}]})";
    std::string out;
    ASSERT_EQ(send(pointer("big key", port()), payload, 0, out), 0);
    EXPECT_EQ(out, "Redis<" + hostPort() +
                       ">: SET big key [payload: " + std::to_string(payload.size()) +
                       " bytes]\nset Json Configuration to Redis server succeeded.\n");
    EXPECT_TRUE(s_server->cli("GET 'big key'") == payload + "\n");
}

TEST_F(RedisTest, VerboseSendShowsJsonPayloadsOnly) {
    std::string out;
    ASSERT_EQ(send(pointer("v", port()), R"({"a":[1]})", 1, out), 0);
    EXPECT_EQ(out,
              "Redis<" + hostPort() +
                  ">: SET v [payload: 9 bytes]\npayload to SET:\n{\n  \"a\": [\n    1\n  ]\n}\n"
                  "set Json Configuration to Redis server succeeded.\n");
    ASSERT_EQ(send(pointer("v", port()), "not json", 1, out), 0);
    EXPECT_EQ(out.find("payload to SET:"), std::string::npos);
    EXPECT_EQ(s_server->cli("GET v"), "not json\n");
}

TEST_F(RedisTest, EntriesReportUnreachableServer) {
    int unused = testsupport::unusedPort();
    std::string out;
    EXPECT_EQ(send(pointer("k", unused), "{}", 0, out), -1);
    EXPECT_EQ(out, "Redis<127.0.0.1:" + std::to_string(unused) +
                       ">: SET k [payload: 2 bytes]\nConnection error: Connection refused\n"
                       "Redis Connection error.\n");
    out = captureStdout([&] { EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", unused, "k"), -1); });
    EXPECT_EQ(out, "Connection error: Connection refused\nConnecting  Redis-server: 127.0.0.1:" +
                       std::to_string(unused) + ", retrieving key: k\nRedis Connection error.\n");
}

TEST_F(RedisTest, TestEntryReadsStringKeys) {
    s_server->cli("SET present x");
    s_server->cli("RPUSH alist x");
    const std::string connecting = "Connecting  Redis-server: " + hostPort() + ", retrieving key: ";
    struct Case {
        const char* key;
        int rc;
        const char* verdict;
    } cases[] = {{"present", 0, "succeeded."}, {"absent", -1, "failed."}, {"alist", -1, "failed."}};
    for (const Case& c : cases) {
        std::string out = captureStdout(
            [&] { EXPECT_EQ(testJsonCfgPlusRedis("127.0.0.1", port(), c.key), c.rc); });
        EXPECT_EQ(out, connecting + c.key + "\nretrieving Json Configuration from Redis server " +
                           c.verdict + "\n");
    }
}

TEST(RedisSource, NeedsAddressKeyAndNoEarlierFetch) {
    jsonCfgPlus doc;
    doc.m_redis_ip = "10.0.0.1";
    doc.m_redis_port = 6379;
    doc.m_redis_key = "k";
    EXPECT_TRUE(jcp::hasRedisSource(doc));
    doc.m_redis_depth = 1;
    EXPECT_FALSE(jcp::hasRedisSource(doc));
    doc.m_redis_depth = 0;
    for (auto clear : {+[](jsonCfgPlus& d) { d.m_redis_ip.clear(); },
                       +[](jsonCfgPlus& d) { d.m_redis_port = 0; },
                       +[](jsonCfgPlus& d) { d.m_redis_key.clear(); }}) {
        jsonCfgPlus copy;
        copy.m_redis_ip = doc.m_redis_ip;
        copy.m_redis_port = doc.m_redis_port;
        copy.m_redis_key = doc.m_redis_key;
        clear(copy);
        EXPECT_FALSE(jcp::hasRedisSource(copy));
    }
}

class RedisSourceTest : public RedisTest {
  protected:
    // buildFromRedis on a document pointing at key on port; output and result captured.
    int build(const std::string& key, int onPort) {
        m_doc.m_redis_ip = "127.0.0.1";
        m_doc.m_redis_port = onPort;
        m_doc.m_redis_key = key;
        int rc = 0;
        m_out =
            captureStdout([&] { m_err = captureStderr([&] { rc = jcp::buildFromRedis(m_doc); }); });
        return rc;
    }
    std::string connecting(const std::string& key, int onPort) const {
        return "Connecting  Redis-server: 127.0.0.1:" + std::to_string(onPort) +
               ", retrieving key: " + key + "\n";
    }
    jsonCfgPlus m_doc;
    std::string m_out, m_err;
};

TEST_F(RedisSourceTest, BuildsStoredDocumentOnceAndTagsTheSource) {
    // The stored document is itself a pointer, to a key that must never be fetched.
    s_server->cli("SET stored '{\"request-id\":7,\"ip\":\"127.0.0.1\",\"port\":" +
                  std::to_string(port()) + ",\"key\":\"second\",\"device\":{\"name\":\"ap\"}}'");
    ASSERT_EQ(build("stored", port()), 0);
    EXPECT_EQ(m_out.find(connecting("stored", port())), 0u);
    EXPECT_EQ(m_out.find("Connecting", 1), std::string::npos);
    EXPECT_NE(m_out.find("retrieving Json Configuration from Redis server succeeded.\n"),
              std::string::npos);
    EXPECT_EQ(m_doc.m_redis_depth, 1);
    EXPECT_EQ(m_doc.m_request_id, 7u);
    ASSERT_GE(m_doc.m_global.size(), 2u);
    const cfgElement& host = m_doc.m_global.back();
    const cfgElement& portElement = *std::prev(m_doc.m_global.end(), 2);
    EXPECT_EQ(portElement.name, "cen_redis_port");
    EXPECT_EQ(portElement.kind, CFG_INT);
    EXPECT_EQ(portElement.intValue, port());
    EXPECT_EQ(portElement.key, "");
    EXPECT_EQ(host.name, "cen_redis_host");
    EXPECT_EQ(host.kind, CFG_STRING);
    EXPECT_EQ(host.strValue, "127.0.0.1");
}

TEST_F(RedisSourceTest, FetchFailuresGiveMinusOne) {
    s_server->cli("SET broken '{\"device\":'");
    s_server->cli("SET blank ''");
    s_server->cli("RPUSH listdoc a");
    const std::string failed = "retrieving Json Configuration from Redis server failed.\n";
    const std::string succeeded = "retrieving Json Configuration from Redis server succeeded.\n";
    struct Case {
        const char* key;
        const std::string& verdict;
        bool parseError;
    } cases[] = {{"absent", failed, false},
                 {"listdoc", failed, false},
                 {"broken", succeeded, true},
                 {"blank", succeeded, true}};
    for (const Case& c : cases) {
        EXPECT_EQ(build(c.key, port()), -1) << c.key;
        EXPECT_EQ(m_out.rfind(connecting(c.key, port()) + c.verdict, 0), 0u) << m_out;
        EXPECT_EQ(m_err.rfind("Error: ", 0) == 0, c.parseError) << c.key;
    }
}

TEST_F(RedisSourceTest, UnreachableServerGivesMinusOne) {
    int unused = testsupport::unusedPort();
    EXPECT_EQ(build("k", unused), -1);
    EXPECT_EQ(m_out, connecting("k", unused) +
                         "Connection error: Connection refused\nRedis Connection error.\n");
    EXPECT_EQ(m_doc.m_redis_depth, 1);

    testsupport::LoopbackSocket silent(true);
    double taken = secondsTaken([&] { EXPECT_EQ(build("k", silent.port()), -1); });
    EXPECT_LT(taken, 5 + kSlack);
    EXPECT_EQ(m_out, connecting("k", silent.port()) +
                         "retrieving Json Configuration from Redis server failed.\n");
}

}  // namespace
