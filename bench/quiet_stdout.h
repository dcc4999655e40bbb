// SPDX-License-Identifier: MIT
// Sends the library's milestone lines to /dev/null while a benchmark runs.
#ifndef JSONCFGPLUS_BENCH_QUIET_STDOUT_H
#define JSONCFGPLUS_BENCH_QUIET_STDOUT_H

#include <unistd.h>

#include <cstdio>

class QuietStdout {
  public:
    QuietStdout() : saved_(dup(1)) {
        std::fflush(stdout);
        FILE* null = std::fopen("/dev/null", "w");
        dup2(fileno(null), 1);
        std::fclose(null);
    }
    ~QuietStdout() {
        std::fflush(stdout);
        dup2(saved_, 1);
        close(saved_);
    }
    QuietStdout(const QuietStdout&) = delete;
    QuietStdout& operator=(const QuietStdout&) = delete;

  private:
    int saved_;
};

#endif
