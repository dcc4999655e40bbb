// SPDX-License-Identifier: MIT
// Whole-file replacement through a private temporary file and a rename.
#include "document/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace jcp {

namespace {

bool writeAll(int fd, const char* data, size_t length) {
    while (length > 0) {
        ssize_t written = ::write(fd, data, length);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        data += written;
        length -= static_cast<size_t>(written);
    }
    return true;
}

}  // namespace

bool replaceFile(const std::string& path, const char* data, size_t length) {
    // mkostemp opens with O_CREAT | O_EXCL and mode 0600: a name that exists, a link
    // included, is never opened, and the bytes are never readable by others.
    std::string pattern = path + ".XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    int fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd < 0) return false;
    // No fsync: the slots live on the AP's RAM file system, and a lost save is not a lost
    // configuration; the rename alone keeps a reader from ever seeing a half-written slot.
    bool written = writeAll(fd, data, length);
    bool closed = ::close(fd) == 0;
    if (written && closed && std::rename(name.data(), path.c_str()) == 0) return true;
    ::unlink(name.data());
    return false;
}

}  // namespace jcp
