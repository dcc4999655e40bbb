// Diagnostic line output.
#include "api/diag.h"

#include <cstdio>

namespace jcp {

void writeLine(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace jcp
