// SPDX-License-Identifier: MIT
// Capturing standard output in a temporary file; see stdout_capture.h.
#include "stdout_capture.h"

#include <unistd.h>

#include <stdexcept>

namespace tool {

StdoutCapture::StdoutCapture(bool withStandardError) {
    std::fflush(stdout);
    std::fflush(stderr);
    m_file = std::tmpfile();
    if (m_file == nullptr) throw std::runtime_error("cannot create a temporary file");
    m_saved = dup(STDOUT_FILENO);
    if (m_saved < 0 || dup2(fileno(m_file), STDOUT_FILENO) < 0) {
        if (m_saved >= 0) close(m_saved);
        m_saved = -1;
        std::fclose(m_file);
        m_file = nullptr;
        throw std::runtime_error("cannot redirect standard output");
    }
    if (!withStandardError) return;
    m_savedError = dup(STDERR_FILENO);
    if (m_savedError < 0 || dup2(fileno(m_file), STDERR_FILENO) < 0) {
        if (m_savedError >= 0) close(m_savedError);
        m_savedError = -1;
        restore();
        std::fclose(m_file);
        m_file = nullptr;
        throw std::runtime_error("cannot redirect standard error");
    }
}

StdoutCapture::~StdoutCapture() {
    restore();
    if (m_file != nullptr) std::fclose(m_file);
}

size_t StdoutCapture::mark() {
    std::fflush(stdout);
    // Standard output and the file share one open file, so one offset.
    off_t at = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    return at < 0 ? 0 : static_cast<size_t>(at);
}

void StdoutCapture::restore() {
    if (m_savedError >= 0) {
        std::fflush(stderr);
        dup2(m_savedError, STDERR_FILENO);
        close(m_savedError);
        m_savedError = -1;
    }
    if (m_saved < 0) return;
    std::fflush(stdout);
    dup2(m_saved, STDOUT_FILENO);
    close(m_saved);
    m_saved = -1;
}

std::string StdoutCapture::finish() {
    restore();
    std::string text;
    std::rewind(m_file);
    char buffer[4096];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, m_file)) > 0) text.append(buffer, got);
    return text;
}

}  // namespace tool
