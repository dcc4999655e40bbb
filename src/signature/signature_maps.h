// SPDX-License-Identifier: MIT
// cfgPlusSignatureMaps: application group, display and extended-signature names to the numeric
// ids the AP's classifier works with, read from the packet-inspection engine's XML files.
#ifndef JSONCFGPLUS_SIGNATURE_SIGNATURE_MAPS_H
#define JSONCFGPLUS_SIGNATURE_SIGNATURE_MAPS_H

#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>

#include "../base/export.h"

// One manager-defined signature.
class JCP_EXPORT cfgPlusExtendedSig {
  public:
    ~cfgPlusExtendedSig() = default;

    int32_t appId = 0;
    int32_t dispId = 0;
    int32_t groupId = 0;
    int32_t reserved = 0;  // not filled by this library
    std::string name;      // the extended map's key
    std::string matchStr;  // what findDnsEntry compares
};

class JCP_EXPORT cfgPlusSignatureMaps {
  public:
    // The process-wide tables. The factory files are loaded lazily, before the first lookup or
    // load after start, so loading the library never touches the file system.
    static cfgPlusSignatureMaps m_inst;

    cfgPlusSignatureMaps() = default;
    cfgPlusSignatureMaps(const cfgPlusSignatureMaps&) = delete;
    cfgPlusSignatureMaps& operator=(const cfgPlusSignatureMaps&) = delete;
    virtual ~cfgPlusSignatureMaps() = default;

    // Replaces the group map, then the display map, each only once its file has parsed with
    // the right root (over the factory tables, loaded first if they never were). A non-numeric
    // id throws std::invalid_argument (std::out_of_range beyond int), with the entries before
    // it already stored.
    void load(const std::string& groupFile, const std::string& displayFile);
    // Loads the live-update pair when it is newer than the last one loaded, or goes back to
    // the factory pair once the live-update files are gone.
    void reload();
    // Replaces the extended map; a later signature of the same name wins.
    void reloadExtended(const std::list<cfgPlusExtendedSig>& signatures);

    // 0 for an unknown name.
    int findGroupId(std::string name);
    // An extended signature's display id first, then the display map's; 0 when unknown.
    int findDisplayId(std::string name);
    // The first extended signature, in map order, whose match text is text and whose display
    // id is one of the DNS ids 5500 to 5563; an empty signature when there is none.
    cfgPlusExtendedSig findDnsEntry(std::string text);

    void show() const;
    void showSummary() const;

    // Points the four files elsewhere; for tests and the tool, not exported.
    __attribute__((visibility("hidden"))) void setPaths(const std::string& factoryGroup,
                                                        const std::string& factoryDisplay,
                                                        const std::string& liveGroup,
                                                        const std::string& liveDisplay);
    // Forgets every table and the live-update state, as at start; for tests, not exported.
    __attribute__((visibility("hidden"))) void clear();
    int32_t changeTime() const { return m_changeTime; }
    bool liveUpdate() const { return m_liveUpdate; }
    size_t groupCount() const { return m_groups.size(); }
    size_t displayCount() const { return m_displays.size(); }
    size_t extendedCount() const { return m_extended.size(); }

  private:
    void loadFactoryOnce();
    void loadPair(const std::string& groupFile, const std::string& displayFile);

    int32_t m_changeTime = 0;
    bool m_liveUpdate = false;
    std::unordered_map<std::string, int> m_displays;
    std::unordered_map<std::string, int> m_groups;
    std::unordered_map<std::string, cfgPlusExtendedSig> m_extended;

    bool m_factoryTried = false;  // the factory pair has been loaded, or tried, since start
    std::string m_factoryGroupPath = "/etc/dpi/conf/appid.xml";
    std::string m_factoryDisplayPath = "/etc/dpi/conf/displaynames.xml";
    std::string m_liveGroupPath = "/tmp/mergedAppid.xml";
    std::string m_liveDisplayPath = "/tmp/mergedDisplaynames.xml";
};

#endif
