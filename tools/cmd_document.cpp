// SPDX-License-Identifier: MIT
// Commands over one document: dump, validate, reqid and check.
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "api/clock.h"
#include "api/jsoncfgplus.h"
#include "args.h"
#include "commands.h"
#include "convert/hotspot_icons.h"
#include "document/json_cfg_plus.h"
#include "json_out.h"
#include "library_lines.h"
#include "signature/signature_maps.h"

namespace tool {

namespace {

// The conversion pipeline the dump runs unless told not to.
constexpr jsonCfgPlusCallback kPipeline = jsonCfgPlusParserCallback;

bool g_clockRequested = false;

// Stands in for settimeofday unless --set-clock is given: the clock is left alone.
int leaveClockAlone(const struct timeval*, const struct timezone*) {
    g_clockRequested = true;
    return -1;
}

// The name a diagnostic's level has in the JSON dump: a milestone ("JSON-Q+: ...") is a note,
// as syslog's notice; progress, which only a traced build reports, counts as info.
const char* severityName(int level) {
    switch (level) {
        case JCP_DIAG_ERROR:
            return "error";
        case JCP_DIAG_WARNING:
            return "warning";
        case JCP_DIAG_MILESTONE:
            return "note";
        default:
            return "info";
    }
}

// The JSON form of the dump, with the full pipeline; the library's own lines are kept out of its
// entries and given as "diagnostics".
int dumpJson(const Args& args, const std::string& text) {
    if (args.has("no-convert") || args.has("trace") || args.has("save") || args.has("save-backup"))
        throw UsageError("--json takes no other option");
    std::vector<LibraryLine> libraryLines;
    JsonPtr json = buildToJson(text, libraryLines);
    if (json == nullptr) {
        for (const LibraryLine& line : libraryLines)
            std::fprintf(stderr, "%s\n", line.text.c_str());
        throw std::runtime_error("the document was not built (the reason is printed above)");
    }
    // Every line the library reported, so a script sees each warning; untagged ones too, since
    // some say why a value was refused ("MAC address ... is not valid").
    json_object* diagnostics = json_object_new_array();
    json_object_object_add(json.get(), "diagnostics", diagnostics);
    for (const LibraryLine& line : libraryLines) {
        if (saysNothing(line)) continue;
        json_object* item = json_object_new_object();
        json_object_object_add(item, "severity", json_object_new_string(severityName(line.level)));
        json_object_object_add(item, "text", json_object_new_string(line.text.c_str()));
        json_object_array_add(diagnostics, item);
    }
    printJsonDocument(json.get());
    return 0;
}

}  // namespace

void useSignatureDir(const Args& args) {
    if (!args.hasOption("signature-dir")) return;
    // The factory and live-update signature files under one directory, by their AP names.
    std::string dir = args.option("signature-dir", "");
    cfgPlusSignatureMaps::m_inst.setPaths(dir + "/appid.xml", dir + "/displaynames.xml",
                                          dir + "/mergedAppid.xml",
                                          dir + "/mergedDisplaynames.xml");
}

void useIconDir(const Args& args) {
    if (args.hasOption("icon-dir")) jcp::hs2::setIconDir(args.option("icon-dir", ""));
}

int runDump(int argc, char** argv) {
    Args args(argc, argv, {"no-convert", "trace", "save", "save-backup", "json"},
              {"signature-dir", "icon-dir"});
    std::string text = readInput(args.positionals(1)[0]);
    useSignatureDir(args);
    useIconDir(args);
    if (args.has("json")) return dumpJson(args, text);
    jsonCfgPlusCallback pipeline = args.has("no-convert") ? nullptr : kPipeline;
    apiCfgPlusResult* result =
        parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), pipeline,
                         args.has("save"), args.has("save-backup"), args.has("trace"));
    if (result == nullptr)
        throw std::runtime_error("the document was not built (the reason is printed above)");
    printJsonCfgPlus(result);
    freeJsonCfgPlus(result);
    return 0;
}

int runValidate(int argc, char** argv) {
    Args args(argc, argv, {}, {});
    std::string path = inputPath(args.positionals(1)[0]);
    if (jsonCfgPlus().validate(path.c_str()) != 0)
        throw std::runtime_error(args.positionals(1)[0] + " is not a valid JSON document");
    return 0;
}

int runReqId(int argc, char** argv) {
    Args args(argc, argv, {}, {});
    std::string text = readInput(args.positionals(1)[0]);
    std::printf("%d\n", getJsonCfgPlusReqId(text.data(), static_cast<unsigned int>(text.size())));
    return 0;
}

int runCheck(int argc, char** argv) {
    Args args(argc, argv, {"set-clock"}, {"serial"});
    std::string text = readInput(args.positionals(1)[0]);
    std::string serial = args.option("serial", "");
    if (!args.has("set-clock")) jcp::setClockSetter(&leaveClockAlone);
    int requestId = 0;
    int rc = checkJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()),
                              args.hasOption("serial") ? serial.c_str() : nullptr, &requestId);
    if (g_clockRequested)
        std::fprintf(stderr, "jsoncfgplus: check: clock left unchanged (--set-clock sets it)\n");
    if (rc != 0) throw std::runtime_error("serial number mismatch");
    return 0;
}

}  // namespace tool
