// SPDX-License-Identifier: MIT
// Standard output sent to a temporary file while the library runs, so that its lines stay out of
// what the tool prints and can be read back, whole or one call's lines at a time. Standard error
// may join it, so that json-c's parse errors land among the library's lines in the order printed.
#ifndef JSONCFGPLUS_TOOLS_STDOUT_CAPTURE_H
#define JSONCFGPLUS_TOOLS_STDOUT_CAPTURE_H

#include <cstdio>
#include <string>

namespace tool {

class StdoutCapture {
  public:
    // Starts capturing; throws std::runtime_error when no temporary file can be made.
    explicit StdoutCapture(bool withStandardError = false);
    // Gives standard output back if finish() was not called (an exception on the way).
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // How many bytes were captured so far: a mark to cut the captured text at.
    size_t mark();
    // Gives standard output back; everything captured.
    std::string finish();

  private:
    void restore();

    FILE* m_file = nullptr;
    int m_saved = -1;
    int m_savedError = -1;
};

}  // namespace tool

#endif
