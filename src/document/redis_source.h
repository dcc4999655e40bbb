// SPDX-License-Identifier: MIT
// The build driver's Redis source: a document that only points at a Redis key is replaced by
// the document stored there.
#ifndef JSONCFGPLUS_DOCUMENT_REDIS_SOURCE_H
#define JSONCFGPLUS_DOCUMENT_REDIS_SOURCE_H

class jsonCfgPlus;

namespace jcp {

// True when the built document names a Redis server and key ("ip", "port", "key") and this
// object has not fetched from Redis before.
bool hasRedisSource(const jsonCfgPlus& document);

// Fetches the key from the server the document names and builds the fetched text into the
// same object, then appends "cen_redis_port" and "cen_redis_host" to the global list.
// -1 when the server cannot be reached or the key holds no string; otherwise the result of
// the nested build. Counts the fetch in m_redis_depth, so the nested build never fetches.
int buildFromRedis(jsonCfgPlus& document);

}  // namespace jcp

#endif
