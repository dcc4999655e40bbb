// SPDX-License-Identifier: MIT
// Test helpers for the Redis suite: a real redis-server child process on 127.0.0.1, and
// loopback sockets that listen without ever answering or refuse connections.
#ifndef JSONCFGPLUS_TESTS_REDIS_SERVER_H
#define JSONCFGPLUS_TESTS_REDIS_SERVER_H

#include <arpa/inet.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "test_support.h"

namespace testsupport {

// A socket bound to 127.0.0.1 on a port the kernel chose. A listening one completes
// connections in the kernel but never accepts them, so it never answers.
class LoopbackSocket {
  public:
    explicit LoopbackSocket(bool listening) : m_fd(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in addr = {};
        addr.sin_family = AF_INET;
        addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof addr;
        if (m_fd < 0 || bind(m_fd, reinterpret_cast<sockaddr*>(&addr), size) != 0 ||
            getsockname(m_fd, reinterpret_cast<sockaddr*>(&addr), &size) != 0 ||
            (listening && listen(m_fd, 16) != 0))
            throw std::runtime_error("cannot bind a loopback socket");
        m_port = ntohs(addr.sin_port);
    }
    ~LoopbackSocket() { close(m_fd); }
    LoopbackSocket(const LoopbackSocket&) = delete;
    LoopbackSocket& operator=(const LoopbackSocket&) = delete;
    int port() const { return m_port; }

  private:
    int m_fd;
    int m_port = 0;
};

// A port that refuses connections: chosen by the kernel, then released.
inline int unusedPort() {
    return LoopbackSocket(false).port();
}

// redis-server without persistence, files in its own temporary directory; stopped and reaped
// with the object, and killed by the kernel should the test process die first.
class RedisServer {
  public:
    RedisServer() : m_port(unusedPort()) {
        std::vector<std::string> args = {"redis-server", "--save", "", "--appendonly", "no"};
        args.insert(args.end(), {"--port", std::to_string(m_port), "--bind", "127.0.0.1"});
        args.insert(args.end(), {"--dir", m_dir.path(), "--logfile", m_dir.file("log")});
        std::vector<char*> argv;
        for (std::string& a : args) argv.push_back(a.data());
        argv.push_back(nullptr);
        pid_t parent = getpid();
        m_pid = fork();
        if (m_pid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (getppid() != parent) _exit(1);
            dup2(open("/dev/null", O_RDWR), 1);
            execvp(argv[0], argv.data());
            _exit(127);
        }
        for (int i = 0; i < 100 && m_pid > 0 && cli("PING") != "PONG\n"; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        if (m_pid <= 0 || cli("PING") != "PONG\n") {
            stop();
            throw std::runtime_error("redis-server did not start on port " +
                                     std::to_string(m_port));
        }
    }
    ~RedisServer() { stop(); }
    RedisServer(const RedisServer&) = delete;
    RedisServer& operator=(const RedisServer&) = delete;

    int port() const { return m_port; }
    // redis-cli's standard output for the arguments, which are given shell-quoted.
    std::string cli(const std::string& args) const {
        std::string command =
            "redis-cli -p " + std::to_string(m_port) + " " + args + " 2>/dev/null";
        FILE* pipe = popen(command.c_str(), "r");
        std::string out;
        char buffer[65536];
        for (size_t n; pipe != nullptr && (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            out.append(buffer, n);
        if (pipe != nullptr) pclose(pipe);
        return out;
    }

  private:
    void stop() {
        if (m_pid <= 0) return;
        kill(m_pid, SIGTERM);
        for (int i = 0; i < 100; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(50)))
            if (waitpid(m_pid, nullptr, WNOHANG) == m_pid) return;
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }

    TempDir m_dir;
    int m_port;
    pid_t m_pid = 0;
};

}  // namespace testsupport

#endif
