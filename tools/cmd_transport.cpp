// SPDX-License-Identifier: MIT
// Commands over the Redis transport and the debug settings: redis-send, redis-test and
// debug-config.
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "api/debug_cfg.h"
#include "api/jsoncfgplus.h"
#include "args.h"
#include "commands.h"

namespace tool {

namespace {

int parsePort(const std::string& text) {
    errno = 0;
    char* end = nullptr;
    long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || errno == ERANGE || value < INT_MIN || value > INT_MAX)
        throw UsageError("PORT must be a number, got '" + text + "'");
    return static_cast<int>(value);
}

}  // namespace

int runRedisSend(int argc, char** argv) {
    Args args(argc, argv, {"verbose"}, {});
    const std::vector<std::string>& files = args.positionals(2);
    if (files[0] == "-" && files[1] == "-")
        throw UsageError("only one of POINTER and PAYLOAD can be read from standard input");
    std::string pointer = readInput(files[0]);
    std::string payload = readInput(files[1]);
    if (sendJsonCfgPlus(pointer.data(), static_cast<unsigned int>(pointer.size()), payload.c_str(),
                        args.has("verbose")) != 0)
        throw std::runtime_error("nothing was stored (the reason is printed above)");
    return 0;
}

int runRedisTest(int argc, char** argv) {
    Args args(argc, argv, {}, {});
    const std::vector<std::string>& given = args.positionals(3);
    if (testJsonCfgPlusRedis(given[0].c_str(), parsePort(given[1]), given[2].c_str()) != 0)
        throw std::runtime_error("the key was not read (the reason is printed above)");
    return 0;
}

int runDebugConfig(int argc, char** argv) {
    Args args(argc, argv, {}, {"file"});
    args.positionals(0);
    if (args.hasOption("file")) jsonCfgPlusDebugCfg::m_inst.setPath(args.option("file", ""));
    try {
        // The member, not the C entry: the entry only reports a bad switch, the tool fails.
        jsonCfgPlusDebugCfg::m_inst.loadConfigurations();
    } catch (const std::logic_error&) {
        throw std::runtime_error(jsonCfgPlusDebugCfg::m_inst.path() +
                                 ": a debug switch is not a decimal number that fits an int");
    }
    printJsonCfgPlusDebugCfg();
    return 0;
}

}  // namespace tool
