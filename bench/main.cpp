// SPDX-License-Identifier: MIT
// The benchmark runner; "--emit=SHAPE:N" writes a generated document to standard output
// instead (campus:BYTES, or an adversarial shape's name and its n).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "doc_generator.h"

namespace {

bool emit(const std::string& request) {
    size_t colon = request.find(':');
    if (colon == std::string::npos) return false;
    std::string shape = request.substr(0, colon);
    long n = std::stol(request.substr(colon + 1));
    std::string text;
    if (shape == "campus") {
        text = jcpbench::campusDocumentOfSize(static_cast<size_t>(n));
    } else {
        for (const jcpbench::NamedShape& s : jcpbench::adversarialShapes()) {
            if (shape == s.name) text = s.make(static_cast<int>(n));
        }
        if (text.empty()) return false;
    }
    std::fwrite(text.data(), 1, text.size(), stdout);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const char kEmit[] = "--emit=";
    if (argc == 2 && std::strncmp(argv[1], kEmit, sizeof kEmit - 1) == 0) {
        if (emit(argv[1] + sizeof kEmit - 1)) return 0;
        std::fprintf(stderr, "unknown shape: %s\n", argv[1] + sizeof kEmit - 1);
        return 2;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
