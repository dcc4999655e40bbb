// SPDX-License-Identifier: MIT
// Finding the saved documents; see saved_documents.h.
#include "saved_documents.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace tool {

std::vector<std::string> savedDocumentsOldestFirst(const std::string& dir) {
    std::vector<std::pair<timespec, std::string>> found;
    for (const char* slot : {"json_q1.json", "json_q2.json"}) {
        std::string path = dir + "/" + slot;
        struct stat info {};
        if (stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode))
            found.emplace_back(info.st_mtim, path);
    }
    // Stable, so slot 1 stays first on equal times.
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        return a.first.tv_sec != b.first.tv_sec ? a.first.tv_sec < b.first.tv_sec
                                                : a.first.tv_nsec < b.first.tv_nsec;
    });
    std::vector<std::string> paths;
    for (auto& entry : found) paths.push_back(std::move(entry.second));
    return paths;
}

}  // namespace tool
