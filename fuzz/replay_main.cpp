// SPDX-License-Identifier: MIT
// Replays fuzz inputs without libFuzzer: every file named, and every file in every directory
// named, goes once through the target's LLVMFuzzerTestOneInput. A crash or a sanitizer report
// fails the run; the library's own output is discarded.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

void replayFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
    if (std::freopen("/dev/null", "w", stdout) == nullptr) return 2;
    size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path arg(argv[i]);
        if (std::filesystem::is_directory(arg)) {
            for (const auto& entry : std::filesystem::directory_iterator(arg)) {
                if (!entry.is_regular_file() || entry.path().filename().string()[0] == '.')
                    continue;
                replayFile(entry.path());
                ++replayed;
            }
        } else if (std::filesystem::is_regular_file(arg)) {
            replayFile(arg);
            ++replayed;
        }
    }
    std::fprintf(stderr, "replayed %zu inputs\n", replayed);
    return 0;
}
