// SPDX-License-Identifier: MIT
// jsonCfgPlusDebugCfg: the developer's debug switches and apply-configuration file, read from
// a small XML settings file on the AP.
#ifndef JSONCFGPLUS_API_DEBUG_CFG_H
#define JSONCFGPLUS_API_DEBUG_CFG_H

#include <string>

#include "../base/export.h"
#include "jsoncfgplus.h"

class JCP_EXPORT jsonCfgPlusDebugCfg {
  public:
    // The process-wide settings behind the exported entries.
    static jsonCfgPlusDebugCfg m_inst;

    jsonCfgPlusDebugCfg() = default;
    jsonCfgPlusDebugCfg(const jsonCfgPlusDebugCfg&) = delete;
    jsonCfgPlusDebugCfg& operator=(const jsonCfgPlusDebugCfg&) = delete;
    virtual ~jsonCfgPlusDebugCfg() = default;

    // Re-reads the settings file. An unreadable or malformed file is printed and changes
    // nothing; an element that is absent leaves its setting as it was. A switch whose text is
    // not a decimal number throws std::invalid_argument (std::out_of_range beyond int), with
    // the switches before it already stored.
    void loadConfigurations();
    // The apply-configuration file's whole content, re-read on every call; null when no
    // file is named or it cannot be read. Valid until the next call or setApplyCfgPath.
    const char* getApplyCfgPayload();
    // One line per setting on standard output.
    void show() const;

    // Names the apply-configuration file and forgets the payload read from the previous one.
    void setApplyCfgPath(const std::string& path);
    jsonCfgPlusDebug* switches() { return &m_debug; }
    const std::string& applyCfgPath() const { return m_applyCfgPath; }

    // Points the settings at another file; for tests and the tool, not exported.
    __attribute__((visibility("hidden"))) void setPath(const std::string& path) { m_path = path; }
    const std::string& path() const { return m_path; }

  private:
    std::string m_path = "/home/config/cap.conf.xml";
    jsonCfgPlusDebug m_debug = {};
    std::string m_applyCfgPath;
    std::string m_applyCfgPayload;
};

#endif
