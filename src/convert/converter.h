// SPDX-License-Identifier: MIT
// cfgPlusApiConverter: the conversion pipeline's converters and the element helpers they share.
#ifndef JSONCFGPLUS_CONVERT_CONVERTER_H
#define JSONCFGPLUS_CONVERT_CONVERTER_H

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "../base/export.h"
#include "../document/json_cfg_plus.h"
#include "../model/cfg_element.h"
#include "ap_records.h"

class JCP_EXPORT cfgPlusApiConverter {
  public:
    using ElementList = std::list<cfgElement>;
    using NameList = std::list<std::string>;

    // Pipeline steps, in their order; each returns 0 or a code that stops the pipeline.
    int jsonCfgPlusBlackList(jsonCfgPlus& doc);
    int jsonCfgPlusEthMode(jsonCfgPlus& doc);
    int jsonCfgPlusApName(jsonCfgPlus& doc);
    int jsonCfgPlusFabricAttach(jsonCfgPlus& doc);
    int jsonCfgPlusVnsVlan(jsonCfgPlus& doc);
    int jsonCfgPlusVnsSessionAvail(jsonCfgPlus& doc);
    int jsonCfgPlusLocation(jsonCfgPlus& doc);
    int jsonCfgPlusAntennaType(jsonCfgPlus& doc);
    int jsonCfgPlusLBS(jsonCfgPlus& doc);
    int jsonCfgPlusPositioning(jsonCfgPlus& doc);
    int jsonCfgPlusIoT(jsonCfgPlus& doc);
    int jsonCfgPlusAdspServer(jsonCfgPlus& doc);
    int jsonCfgPlusFailoverCfg(jsonCfgPlus& doc);
    int jsonCfgPlusRouteCfg(jsonCfgPlus& doc);
    int jsonCfgPlusTopologies(jsonCfgPlus& doc);
    int jsonCfgPlusArpGuard(jsonCfgPlus& doc);
    int jsonCfgPlusLocAp(jsonCfgPlus& doc);
    int jsonCfgPlusRadioFallbackChannelList(jsonCfgPlus& doc);
    int jsonCfgPlusRadioDtim(jsonCfgPlus& doc);
    int jsonCfgPlusRadioOcsChannelList(jsonCfgPlus& doc);
    int jsonCfgPlusRadioSensorChannelList(jsonCfgPlus& doc);
    int jsonCfgPlusRadioProbeSuppress(jsonCfgPlus& doc);
    int jsonCfgPlusRadioLoadBalancing(jsonCfgPlus& doc);
    int jsonCfgPlusRadioAxParamsDefault(jsonCfgPlus& doc);
    int jsonCfgPlusVnsFilters(jsonCfgPlus& doc);
    int jsonCfgPlusVnsWepKey(jsonCfgPlus& doc);
    int jsonCfgPlusVnsClientBridge(jsonCfgPlus& doc);
    int jsonCfgPlusVns11U(jsonCfgPlus& doc);
    int jsonCfgPlusVnsPasspoint(jsonCfgPlus& doc);
    int jsonCfgPlusMeshpointToWlan(jsonCfgPlus& doc);
    int jsonCfgPlusVnsOrderWlans(jsonCfgPlus& doc);

    // Not in the pipeline: for outside callers.
    int jsonCfgPlusRadioAcsChannelList(jsonCfgPlus& doc);
    int jsonCfgPlusVnsReorderWlans(jsonCfgPlus& doc);

    // Topology workers.
    int jsonCfgPlusTopology(const ElementList& fields, TOPOLOGY_ENTRY& entry, int nativeVlan,
                            bool nativeTagged);
    int jsonCfgPlusTopologyMcastAcl(TOPOLOGY_ENTRY& entry, cfgElement& acl);
    // The VLAN word of a WLAN service from its flattened "vlans/..." elements.
    int jsonCfgPlusVnsVlan(const ElementList& list, int& word);

    // Filter rules of a WLAN service. Every converter returns 0, or -1 after printing why a
    // rule is invalid.
    enum apiCfgPlusFilterDirection { FILTER_INBOUND = 0, FILTER_OUTBOUND = 1 };
    using FilterRuleList = std::list<apiCfgPlusFilterRule>;
    // One rule (an element list with plain keys) into out, emptied first whatever it held.
    int jsonCfgPlusVnsMacAcl(cfgElement& rule, apiCfgPlusFilterDirection direction,
                             apiCfgPlusFilterRule& out);
    int jsonCfgPlusVnsMacAcl(ElementList& rules, apiCfgPlusFilterDirection direction,
                             FilterRuleList& out);
    int jsonCfgPlusVnsIpAcl(cfgElement& rule, apiCfgPlusFilterDirection direction,
                            apiCfgPlusFilterRule& out);
    int jsonCfgPlusVnsIpAcl(ElementList& rules, apiCfgPlusFilterDirection direction,
                            FilterRuleList& out);
    // A name the signature maps do not know gives id 0 after a [WARN]; the rule is kept.
    int jsonCfgPlusVnsAppPolicy(cfgElement& rule, apiCfgPlusFilterRule& out);
    int jsonCfgPlusVnsAppPolicy(ElementList& rules, FilterRuleList& out);
    // Every rule source of one service into its rule array and policy elements.
    int jsonCfgPlusVnsServiceFilters(vns_entry& wlan);
    int jsonCfgPlusVnsDnsWhiteListToIpAcl(cfgElement& entry, FILTER_RULE_ENTRY& out);
    // The white-list entries' rules, then one rule per HTTP port.
    int jsonCfgPlusVnsCaptivePortalIpAcl(ElementList& entries, std::list<int>& ports,
                                         std::list<FILTER_RULE_ENTRY>& out);
    // "match_dot1p", "cen_match_tos", "cen_match_tosmask" of a rule's fields.
    int jsonCfgPlusVnsAclTosMatch(const ElementList& fields, apiCfgPlusFilterRule& rule);
    // The rule's class of service: marking, transmit queue and rate-limit indexes.
    int jsonCfgPlusVnsAclCos(const ElementList& fields, apiCfgPlusFilterRule& rule);
    // Both lists in ascending precedence into merged; they are left empty.
    void jsonCfgPlusMergeVnsFilters(FilterRuleList& inbound, FilterRuleList& outbound,
                                    FilterRuleList& merged);

    // Class of service, default action, rate limits and external applications; none fails.
    int jsonCfgPlusVnsDefaultCoS(const cfgElement& element, ap_cos_entry& cos);
    int jsonCfgPlusVnsDefaultAction(const cfgElement& element, std::string& action, int& vlan);
    int jsonCfgPlusVnsResourceTable(const cfgElement& rateLimit, std::vector<unsigned int>& slots);
    int jsonCfgPlusExtAppl(const cfgElement& object, EXT_APP_CONFIG& app);
    int jsonCfgPlusExtAppl(const ElementList& objects, std::vector<EXT_APP_CONFIG>& apps);

    // WLAN slot worker: a meshpoint turned WLAN, inserted at pos in the radio's WLANs.
    void jsonCfgPlusConvertMeshpointToWlan(radio_entry& radio, vns_entry& mp, int idx, int pos);

    // Element helpers.
    ElementList::iterator findCfgElement(ElementList& list, const std::string& name);
    ElementList::const_iterator findCfgElement(const ElementList& list,
                                               const std::string& name) const;
    // The string value of a kind-4 element, else "".
    std::string getCfgElementString(const ElementList& list, const std::string& name) const;
    // True when "captive_portal_enforcement" is present and not "none".
    bool captivePortal(const ElementList& list) const;
    // Splits "addr/prefix" at the last slash; prefix is left alone when there is none.
    void parseIpAddress(const std::string& text, std::string& addr, std::string& prefix) const;
    // Drops the first n path components of the element's name.
    void jsonCfgPlusRemoveElementPrefix(cfgElement& element, int n) const;
    // Copy of a kind-9 element with n path components dropped from each child's name.
    cfgElement jsonCfgPlusRemovePrefix(const cfgElement& element, int n) const;
    // Copies of the list's kind-9 elements with prefix dropped from each child's name (the
    // empty prefix keeps only the last path component).
    ElementList jsonCfgPlusRemovePrefix(const ElementList& list, const std::string& prefix) const;
    std::vector<unsigned char> jsonCfgPlusHex2Bytes(const std::string& hex) const;
    // Throws std::invalid_argument for a piece that does not start with a number.
    std::list<int> jsonCfgPlusStr2IntList(const std::string& text, char separator) const;
    int mapTosMask(int mask) const;
    // Throws std::invalid_argument for the empty text.
    int ethProtocol(const std::string& name) const;

    // In-place conversions; a missing element or one of another kind is left alone.
    void jsonCfgPlusElementIPStr2Network(ElementList& list, const std::string& name);
    void jsonCfgPlusElementIPStr2Network(ElementList& list, const NameList& names);
    void jsonCfgPlusElementIPStr2Local(ElementList& list, const std::string& name);
    void jsonCfgPlusElementIPStr2Local(ElementList& list, const NameList& names);
    void jsonCfgPlusElementIPStrList2NetworkList(ElementList& list, const std::string& name);
    void jsonCfgPlusElementMacStr2Mac(ElementList& list, const std::string& name);
    void jsonCfgPlusElementMacStr2Mac(ElementList& list, const NameList& names);
    void jsonCfgPlusElementStrAsOctets(ElementList& list, const std::string& name);
    void jsonCfgPlusElementStrAsOctets(ElementList& list, const NameList& names);
    void jsonCfgPlusElementHex2Bin(ElementList& list, const std::string& name);
    void jsonCfgPlusElementHex2Bin(ElementList& list, const NameList& names);
    void jsonCfgPlusElementStr2IntList(ElementList& list, const std::string& name);
    void jsonCfgPlusElementStr2IntList(ElementList& list, const NameList& names);

    // Hotspot 2.0 and Passpoint, one WLAN at a time; each returns 0. A list that is missing
    // or empty adds nothing; an item that cannot be advertised is dropped with a "[WARN]".
    int jsonCfgPlusVns11UCellNet(vns_entry& wlan);
    int jsonCfgPlusVns11UNaiRealm(vns_entry& wlan);
    int jsonCfgPlusVns11UVenueName(vns_entry& wlan);
    int jsonCfgPlusVns11UNetAuthType(vns_entry& wlan);
    // Runs on every WLAN: "auth" eap with "enc" akm means OSEN, and "enc" becomes ccmp.
    int jsonCfgPlusOSEN(vns_entry& wlan);
    int jsonCfgPlusHS2ConnectionCap(vns_entry& wlan);
    int jsonCfgPlusVnsHS2OperatorName(vns_entry& wlan);
    // Icons named but not given by a provider come from global "passpoint_policy/global_hs2_icons".
    int jsonCfgPlusVnsHS2OsuSp(vns_entry& wlan, const ElementList& global);
    // One name duple from the fields prefix + "/code" and prefix + "/name"; false (after a
    // warning naming item) when it cannot be advertised. A name too long is cut, with a warning.
    bool jsonCfgPlusVns11ULangName(const ElementList& fields, const std::string& prefix,
                                   const std::string& item, NAME_LANG& out);
    // One icon from the fields prefix + "/width", "/height", "/code", "/filename" and "/file"
    // (the name of the image in the AP's icon directory), its bytes appended to data and
    // icon_data set to where they start there; false after a warning naming item when it
    // cannot be advertised.
    bool jsonCfgPlusVnsHS2Icons(const ElementList& fields, const std::string& prefix,
                                const std::string& item, jsonHS2Icon& icon,
                                std::vector<uint8_t>& data);
};

#endif
