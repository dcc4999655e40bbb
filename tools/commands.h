// SPDX-License-Identifier: MIT
// The tool's commands; each takes the arguments after its name and returns the exit code.
#ifndef JSONCFGPLUS_TOOLS_COMMANDS_H
#define JSONCFGPLUS_TOOLS_COMMANDS_H

#include "args.h"

namespace tool {

struct Command {
    const char* name;
    const char* usage;    // arguments, shown after the command name
    const char* summary;  // one line for the command list
    int (*run)(int argc, char** argv);
};

int runDump(int argc, char** argv);
int runSummary(int argc, char** argv);
int runValidate(int argc, char** argv);
int runReqId(int argc, char** argv);
int runCheck(int argc, char** argv);
int runRedisSend(int argc, char** argv);
int runRedisTest(int argc, char** argv);
int runDebugConfig(int argc, char** argv);
int runLint(int argc, char** argv);
int runDiff(int argc, char** argv);
int runSchema(int argc, char** argv);

// "--signature-dir DIR": the application-signature files are read from DIR.
void useSignatureDir(const Args& args);
// "--icon-dir DIR": the Passpoint icon files are read from DIR.
void useIconDir(const Args& args);

}  // namespace tool

#endif
