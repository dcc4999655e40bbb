// SPDX-License-Identifier: MIT
// The exported Redis entries: store a document under the key a pointer document names, and
// read one key to test a server.
#include <json-c/json.h>

#include <memory>
#include <string>

#include "api/jsoncfgplus.h"
#include "base/diag.h"
#include "base/entry_guard_priv.h"
#include "document/json_cfg_plus.h"
#include "document/redis_client.h"

namespace {

struct TreeRelease {
    void operator()(json_object* root) const { json_object_put(root); }
};
using Tree = std::unique_ptr<json_object, TreeRelease>;

struct timeval entryConnectTimeout() {
    struct timeval tv = {};
    tv.tv_sec = 2;
    tv.tv_usec = 500000;
    return tv;
}

// Prints the payload as json-c re-serialises it; nothing when it is not JSON.
void printPayload(const char* payload) {
    // Parsed quietly: a payload that is not JSON is still stored, and is simply not shown.
    Tree tree(json_tokener_parse(payload));
    if (tree == nullptr) return;
    jcp::diag("payload to SET:");
    jcp::diag(json_object_to_json_string_ext(tree.get(),
                                             JSON_C_TO_STRING_SPACED | JSON_C_TO_STRING_PRETTY));
}

int storeDocument(const char* pointer, unsigned int length, const char* payload, int verbose) {
    std::string host;
    std::string key;
    int port = 0;
    {
        Tree root(jsonCfgPlus().parse(pointer, length));
        if (root == nullptr) return -1;
        // Only where to store matters here; the pointer's request id, time and serial number
        // play no part in a store.
        jsonCfgObj::getJsonStrValue("ip", root.get(), host);
        jsonCfgObj::getJsonIntValue("port", root.get(), port);
        jsonCfgObj::getJsonStrValue("key", root.get(), key);
    }
    if (host.empty() || port == 0 || key.empty()) {
        jcp::diag("Redis: ", host, ":", port, ", key=", key);
        jcp::diag("Redis server info is incorrect.");
        return -1;
    }

    // A null payload is stored as an empty value rather than dereferenced.
    const std::string value = payload != nullptr ? payload : "";
    jcp::diag("Redis<", host, ":", port, ">: SET ", key, " [payload: ", value.size(), " bytes]");
    if (verbose != 0) printPayload(value.c_str());

    redisClient client(host, port, entryConnectTimeout());
    if (!client.connected()) {
        jcp::failure("Redis Connection error.");
        return -1;
    }
    if (client.setString(key, value) == 0)
        jcp::diag("set Json Configuration to Redis server succeeded.");
    else
        jcp::diag("set Json Configuration to Redis server failed.");
    return 0;
}

int readKey(const char* host, int port, const char* key) {
    const std::string hostText = host != nullptr ? host : "";
    const std::string keyText = key != nullptr ? key : "";
    redisClient client(hostText, port, entryConnectTimeout());
    jcp::diag("Connecting  Redis-server: ", hostText, ":", port, ", retrieving key: ", keyText);
    if (!client.connected()) {
        jcp::failure("Redis Connection error.");
        return -1;
    }
    std::string value;
    if (client.getString(keyText, value) != 0) {
        jcp::diag("retrieving Json Configuration from Redis server failed.");
        return -1;
    }
    jcp::diag("retrieving Json Configuration from Redis server succeeded.");
    return 0;
}

}  // namespace

extern "C" int sendJsonCfgPlus(const char* pointer, unsigned int length, const char* payload,
                               int verbose) {
    return jcp::guardEntry("sendJsonCfgPlus", -1,
                           [&] { return storeDocument(pointer, length, payload, verbose); });
}

extern "C" int testJsonCfgPlusRedis(const char* host, int port, const char* key) {
    return jcp::guardEntry("testJsonCfgPlusRedis", -1, [&] { return readKey(host, port, key); });
}
