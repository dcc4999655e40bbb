// SPDX-License-Identifier: MIT
// Shared test helpers.
#include "test_support.h"

#include "document/json_cfg_plus.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace testsupport {

std::string captureStdout(const std::function<void()>& fn) {
    testing::internal::CaptureStdout();
    fn();
    return testing::internal::GetCapturedStdout();
}

std::string captureStderr(const std::function<void()>& fn) {
    testing::internal::CaptureStderr();
    fn();
    return testing::internal::GetCapturedStderr();
}

std::string dataPath(const std::string& name) {
    return std::string(JCP_TEST_DATA_DIR) + "/" + name;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << content;
}

apiCfgPlusResult* parseText(const std::string& text, jsonCfgPlusCallback callback,
                            std::string* output) {
    apiCfgPlusResult* result = nullptr;
    std::string out = captureStdout([&] {
        result = parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()), callback, 0,
                                  0, 0);
    });
    if (output != nullptr) *output = out;
    return result;
}

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "jcp-test-XXXXXX").string();
    char* made = mkdtemp(pattern.data());
    if (made == nullptr) throw std::runtime_error("mkdtemp failed");
    m_path = made;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

size_t occurrences(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

std::string joined(size_t n, const std::function<std::string(size_t)>& item) {
    std::string out;
    for (size_t i = 0; i < n; ++i) out += (i > 0 ? "," : "") + item(i);
    return out;
}

const apiCfgPlusEntry* findEntry(const apiCfgPlusEntryArray& array, const std::string& name) {
    for (int32_t i = 0; i < array.count; ++i) {
        if (array.entries[i].name != nullptr && name == array.entries[i].name)
            return &array.entries[i];
    }
    return nullptr;
}

size_t nestedCount(const apiCfgPlusEntry& entry) {
    return entry.size <= 0 ? 0 : size_t(entry.size) / sizeof(apiCfgPlusEntry);
}

Built build(jsonCfgPlus& doc, const std::string& text) {
    Built b;
    b.output = captureStdout(
        [&] { b.result = doc.buildConfig(text.data(), static_cast<unsigned int>(text.size())); });
    return b;
}

ToolRun runCommand(const std::string& command, const std::string& input, const std::string& cwd) {
    TempDir dir;
    writeFile(dir.file("in"), input);
    std::string line = (cwd.empty() ? "" : "cd " + cwd + " && ") + command + " <" + dir.file("in") +
                       " >" + dir.file("out") + " 2>" + dir.file("err");
    int raw = std::system(line.c_str());
    ToolRun run;
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = readFile(dir.file("out"));
    run.err = readFile(dir.file("err"));
    return run;
}

ToolRun runTool(const std::string& args, const std::string& input, const std::string& cwd) {
    return runCommand(std::string(JCP_TOOL_PATH) + " " + args, input, cwd);
}

}  // namespace testsupport
