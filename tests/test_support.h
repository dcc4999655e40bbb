// SPDX-License-Identifier: MIT
// Shared test helpers: captured output, test documents, temporary directories.
#ifndef JSONCFGPLUS_TESTS_TEST_SUPPORT_H
#define JSONCFGPLUS_TESTS_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "api/jsoncfgplus.h"

class jsonCfgPlus;

namespace testsupport {

// Standard output written while fn runs.
std::string captureStdout(const std::function<void()>& fn);
// Standard error written while fn runs.
std::string captureStderr(const std::function<void()>& fn);
// A file under tests/data.
std::string dataPath(const std::string& name);
std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& content);

// parseJsonCfgPlus over a string, output captured (it is noisy); callback as given.
apiCfgPlusResult* parseText(const std::string& text, jsonCfgPlusCallback callback = nullptr,
                            std::string* output = nullptr);

// What jsonCfgPlus::buildConfig returned over a string, and everything it printed.
struct Built {
    int result = 0;
    std::string output;
};
Built build(jsonCfgPlus& doc, const std::string& text);

// What the tool printed and how it ended; status is -1 when it did not exit (a crash).
struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
};
// Runs a shell command, its last simple command reading input, in directory cwd if given.
ToolRun runCommand(const std::string& command, const std::string& input = "",
                   const std::string& cwd = "");
// Runs the tool with args (shell words), input on standard input, in directory cwd if given.
ToolRun runTool(const std::string& args, const std::string& input = "",
                const std::string& cwd = "");

// A directory that lives as long as the object.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }

  private:
    std::string m_path;
};

// How many times part occurs in text.
size_t occurrences(const std::string& text, const std::string& part);
// n items, each made by item from its index, separated by commas.
std::string joined(size_t n, const std::function<std::string(size_t)>& item);

// The entry named name in an array, or null.
const apiCfgPlusEntry* findEntry(const apiCfgPlusEntryArray& array, const std::string& name);
// Nested entries of a kind 9 or 10 entry.
size_t nestedCount(const apiCfgPlusEntry& entry);

}  // namespace testsupport

#endif
