// SPDX-License-Identifier: MIT
// Passpoint icon files. A document arrives over the network and its icons go out over the air,
// so it names an icon only by a plain file name in the one directory where the AP keeps them;
// each file is read once per conversion run, must be an image, and the icon bytes one run
// places in records are bounded.
#ifndef JSONCFGPLUS_CONVERT_HOTSPOT_ICONS_H
#define JSONCFGPLUS_CONVERT_HOTSPOT_ICONS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace jcp {
namespace hs2 {

// Where the AP keeps its Passpoint icons: the persistent configuration directory, beside the
// debug settings.
constexpr char kDefaultIconDir[] = "/home/config/hs2_icons";

// 8 MiB: every icon slot of all 24 Passpoint WLANs filled with 10 KiB icons (7.5 MiB) fits,
// while a document can no longer make the AP hold 48 MiB of 64 KiB copies.
constexpr size_t kMaxIconBytesPerRun = size_t(8) << 20;

// The icon directory in use; points it elsewhere, for tests and the tool.
const std::string& iconDir();
void setIconDir(const std::string& dir);

// The icon files of one conversion run, by name.
class IconFiles {
  public:
    IconFiles();
    ~IconFiles();
    IconFiles(const IconFiles&) = delete;
    IconFiles& operator=(const IconFiles&) = delete;

    // The bytes of icon file name, charged to this run's bound; null after one warning
    // naming item when the file cannot be advertised.
    const std::vector<uint8_t>* take(const std::string& name, const std::string& item);

  private:
    struct File {
        std::vector<uint8_t> bytes;  // empty when the file is refused
        std::string problem;         // why it is refused
    };
    File read(const std::string& name);

    int m_dir = -1;  // the icon directory, opened on the first icon
    std::string m_dirProblem;
    // By name; bytes are kept only for files placed at least once, so they stay in the bound.
    std::unordered_map<std::string, File> m_files;
    size_t m_placed = 0;  // icon bytes placed in this run's records
};

// The icon files of the conversion run under way on this thread: the outermost scope makes
// them, scopes within it share them, so a file used by many WLANs is read once.
class IconScope {
  public:
    IconScope();
    ~IconScope();
    IconScope(const IconScope&) = delete;
    IconScope& operator=(const IconScope&) = delete;
    IconFiles& files() { return *m_files; }

  private:
    std::unique_ptr<IconFiles> m_owned;
    IconFiles* m_files;
};

}  // namespace hs2
}  // namespace jcp

#endif
