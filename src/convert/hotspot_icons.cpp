// SPDX-License-Identifier: MIT
// Passpoint icon files, read by plain name from the icon directory.
#include "convert/hotspot_icons.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "convert/ap_records.h"
#include "convert/hotspot_priv.h"

namespace jcp {
namespace hs2 {

namespace {

std::string& iconDirSetting() {
    static std::string dir = kDefaultIconDir;
    return dir;
}

thread_local IconFiles* t_current = nullptr;

// Only images go on the air: whatever else lands in the icon directory is refused by its
// first bytes, the signatures of the formats a Hotspot 2.0 icon is given in.
bool isImage(const std::vector<uint8_t>& bytes) {
    static constexpr std::string_view kSignatures[] = {
        std::string_view("\x89PNG\r\n\x1A\n", 8),  // PNG
        std::string_view("\xFF\xD8\xFF", 3),       // JPEG
        "GIF87a",
        "GIF89a",
        "BM",                                     // BMP
        std::string_view("\x00\x00\x01\x00", 4),  // ICO
    };
    for (std::string_view signature : kSignatures) {
        if (bytes.size() >= signature.size() &&
            std::memcmp(bytes.data(), signature.data(), signature.size()) == 0)
            return true;
    }
    return false;
}

bool isPlainName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string("/\0", 2)) == std::string::npos;
}

}  // namespace

const std::string& iconDir() {
    return iconDirSetting();
}

void setIconDir(const std::string& dir) {
    iconDirSetting() = dir;
}

IconFiles::IconFiles() = default;

IconFiles::~IconFiles() {
    if (m_dir >= 0) close(m_dir);
}

const std::vector<uint8_t>* IconFiles::take(const std::string& name, const std::string& item) {
    auto found = m_files.find(name);
    if (found == m_files.end()) found = m_files.emplace(name, read(name)).first;
    File& file = found->second;
    if (file.problem.empty() && file.bytes.size() > kMaxIconBytesPerRun - m_placed) {
        // What is placed only grows, so a file refused now is refused for the rest of the run:
        // its bytes need not be held.
        file.problem = "would take the icons of this configuration past " +
                       std::to_string(kMaxIconBytesPerRun) + " bytes";
        file.bytes = std::vector<uint8_t>();
    }
    if (!file.problem.empty()) {
        warn(item, "icon file " + quoted(name) + " " + file.problem + ", icon dropped");
        return nullptr;
    }
    m_placed += file.bytes.size();
    return &file.bytes;
}

IconFiles::File IconFiles::read(const std::string& name) {
    File file;
    if (!isPlainName(name)) {
        file.problem = "is not a plain file name in the icon directory";
        return file;
    }
    if (m_dir < 0 && m_dirProblem.empty()) {
        m_dir = open(iconDir().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (m_dir < 0) m_dirProblem = std::strerror(errno);
    }
    if (m_dir < 0) {
        file.problem = "cannot be read: the icon directory " + iconDir() + " cannot be opened (" +
                       m_dirProblem + ")";
        return file;
    }
    // No link is followed, not even one within the directory: what goes on the air is
    // exactly a file that sits there. Opened without blocking, so a pipe cannot stall the run.
    int fd = openat(m_dir, name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (fd < 0) {
        file.problem = errno == ELOOP
                           ? std::string("is a link")
                           : "cannot be opened in " + iconDir() + ": " + std::strerror(errno);
        return file;
    }
    struct stat info;
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        file.problem = "is not a regular file";
    } else if (info.st_size == 0) {
        file.problem = "is empty";
    } else if (info.st_size > static_cast<off_t>(kHs2MaxIconBytes)) {
        file.problem = "holds " + std::to_string(info.st_size) + " bytes, more than " +
                       std::to_string(kHs2MaxIconBytes);
    } else {
        file.bytes.resize(static_cast<size_t>(info.st_size));
        size_t done = 0;
        while (done < file.bytes.size()) {
            ssize_t got = ::read(fd, file.bytes.data() + done, file.bytes.size() - done);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) break;
            done += static_cast<size_t>(got);
        }
        if (done != file.bytes.size()) {
            file.problem = "could not be read whole";
        } else if (!isImage(file.bytes)) {
            file.problem = "is not a PNG, JPEG, GIF, BMP or ICO image";
        }
        if (!file.problem.empty()) file.bytes = std::vector<uint8_t>();
    }
    close(fd);
    return file;
}

IconScope::IconScope() {
    if (t_current == nullptr) {
        m_owned = std::make_unique<IconFiles>();
        t_current = m_owned.get();
    }
    m_files = t_current;
}

IconScope::~IconScope() {
    if (m_owned != nullptr) t_current = nullptr;
}

}  // namespace hs2
}  // namespace jcp
