// SPDX-License-Identifier: MIT
// Diagnostic line output and the caller's diagnostics handler.
#include "base/diag.h"

#include <cstdio>

#include "base/records.h"

// The handler receives the C levels; the two lists must not drift apart.
static_assert(static_cast<int>(jcp::DiagLevel::progress) == JCP_DIAG_PROGRESS, "level");
static_assert(static_cast<int>(jcp::DiagLevel::info) == JCP_DIAG_INFO, "level");
static_assert(static_cast<int>(jcp::DiagLevel::milestone) == JCP_DIAG_MILESTONE, "level");
static_assert(static_cast<int>(jcp::DiagLevel::warning) == JCP_DIAG_WARNING, "level");
static_assert(static_cast<int>(jcp::DiagLevel::error) == JCP_DIAG_ERROR, "level");

namespace {

// Process-wide like the other settings of the library: one parse at a time.
jsonCfgPlusDiagHandler gHandler = nullptr;
void* gContext = nullptr;
thread_local jcp::DiagCapture* tCapture = nullptr;

struct Prefix {
    const char* text;
    jcp::DiagLevel level;
};

// "[WARNING: " and "warning: " are how a few warnings of the converters begin.
const Prefix kPrefixes[] = {
    {"JSON-Q+: ", jcp::DiagLevel::milestone}, {"[WARN]", jcp::DiagLevel::warning},
    {"[WARNING", jcp::DiagLevel::warning},    {"warning: ", jcp::DiagLevel::warning},
    {"[ERR]", jcp::DiagLevel::error},         {"[ERROR]", jcp::DiagLevel::error},
    {"ERR: ", jcp::DiagLevel::error},         {"[INFO]", jcp::DiagLevel::info},
};

void emit(jcp::DiagLevel level, const std::string& text, std::FILE* stream) {
    if (tCapture != nullptr) {
        tCapture->keep(text);
        return;
    }
    if (gHandler != nullptr) {
        gHandler(static_cast<int>(level), text.c_str(), gContext);
        return;
    }
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fputc('\n', stream);
    std::fflush(stream);
}

}  // namespace

namespace jcp {

DiagCapture::DiagCapture() : m_outer(tCapture) {
    tCapture = this;
}

DiagCapture::~DiagCapture() {
    tCapture = m_outer;
}

DiagLevel levelOfLine(const std::string& text) {
    for (const Prefix& prefix : kPrefixes) {
        if (text.compare(0, std::char_traits<char>::length(prefix.text), prefix.text) == 0)
            return prefix.level;
    }
    return DiagLevel::info;
}

void writeLine(const std::string& text) {
    emit(levelOfLine(text), text, stdout);
}

void writeLine(DiagLevel level, const std::string& text) {
    emit(level, text, stdout);
}

void writeErrorLine(const std::string& text) {
    emit(DiagLevel::error, text, stderr);
}

}  // namespace jcp

namespace jcp {

void setDiagHandler(jsonCfgPlusDiagHandler handler, void* context) {
    gHandler = handler;
    gContext = handler != nullptr ? context : nullptr;
}

}  // namespace jcp
