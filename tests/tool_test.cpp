// The command-line tool: exit codes, one-line errors, standard input.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

#include "test_support.h"

namespace {

struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
};

ToolRun runTool(const std::string& args, const std::string& input = "") {
    testsupport::TempDir dir;
    testsupport::writeFile(dir.file("in"), input);
    std::string command = std::string(JCP_TOOL_PATH) + " " + args + " <" + dir.file("in") + " >" +
                          dir.file("out") + " 2>" + dir.file("err");
    int raw = std::system(command.c_str());
    ToolRun run;
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = testsupport::readFile(dir.file("out"));
    run.err = testsupport::readFile(dir.file("err"));
    return run;
}

size_t lines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

TEST(Tool, DumpsTheExample) {
    ToolRun run = runTool("dump " + std::string(JCP_EXAMPLES_DIR) + "/ap-config.json");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("\nGlobal Config.\n"), std::string::npos);
    EXPECT_NE(run.out.find("JSON-Q+: freeJsonCfgPlus done.\n"), std::string::npos);
    EXPECT_EQ(run.err, "");
}

TEST(Tool, ReadsStandardInput) {
    ToolRun run = runTool("reqid -", R"({"request-id": 31})");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "31\n");
    run = runTool("dump --no-convert -", R"({"device": {"hostname": "x"}})");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\"hostname\": \"x\"\n"), std::string::npos);
    run = runTool("dump --json -", R"({"device": {"hostname": "x"}})");
    EXPECT_EQ(run.status, 0) << run.err;
    for (const char* list : {"\"global\"", "\"radios\"", "\"vns\"", "\"meshpoints\""})
        EXPECT_NE(run.out.find(list), std::string::npos) << list << " in\n" << run.out;
}

TEST(Tool, FailuresAreOneLineOnStandardError) {
    const char* cases[] = {
        "dump -",                  // not JSON
        "dump /nonexistent.json",  // unreadable
        "validate -",              // not JSON
        "check - --serial B",      // mismatch
        "dump",                    // missing argument
        "dump a b",                // too many
        "dump - --bogus",          // unknown option
        "frobnicate",              // unknown command
    };
    for (const char* args : cases) {
        SCOPED_TRACE(args);
        ToolRun run = runTool(args, R"({"device": {"cen_serial_number": "A"})");
        if (std::string(args).rfind("check", 0) == 0)
            run = runTool(args, R"({"device": {"cen_serial_number": "A"}})");
        EXPECT_NE(run.status, 0);
        EXPECT_EQ(lines(run.err) - (run.err.find("Error: ") == 0 ? 1 : 0), 1u) << run.err;
        EXPECT_EQ(run.err.find("terminate"), std::string::npos);
    }
}

TEST(Tool, CheckLeavesTheClockAloneUnlessAsked) {
    ToolRun run =
        runTool("check - --serial A", R"({"cen_time": 5, "device": {"cen_serial_number": "A"}})");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("set clock(Epoch seconds):5\n"), std::string::npos);
    EXPECT_EQ(run.out.find("set clock errno="), std::string::npos);
    EXPECT_NE(run.err.find("clock left unchanged"), std::string::npos);
}

TEST(Tool, HelpOnEveryCommand) {
    for (const char* command : {"dump", "validate", "reqid", "check"}) {
        ToolRun run = runTool(std::string(command) + " --help");
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out.rfind(std::string("usage: jsoncfgplus ") + command, 0), 0u);
    }
    EXPECT_EQ(runTool("--help").status, 0);
    EXPECT_NE(runTool("").status, 0);
}

}  // namespace
