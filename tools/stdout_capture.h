// Standard output sent to a temporary file while the library runs, so that its lines stay out of
// what the tool prints and can be read back, whole or one call's lines at a time.
#ifndef JSONCFGPLUS_TOOLS_STDOUT_CAPTURE_H
#define JSONCFGPLUS_TOOLS_STDOUT_CAPTURE_H

#include <cstdio>
#include <string>

namespace tool {

class StdoutCapture {
  public:
    // Starts capturing; throws std::runtime_error when no temporary file can be made.
    StdoutCapture();
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
};

}  // namespace tool

#endif
