// SPDX-License-Identifier: MIT
// Printers of the topology records and of the VLAN word, for the diagnostic dumps.
#ifndef JSONCFGPLUS_CONVERT_TOPOLOGY_PRINT_H
#define JSONCFGPLUS_CONVERT_TOPOLOGY_PRINT_H

#include <cstdint>
#include <string>

#include "../base/records.h"
#include "ap_records.h"

// The "cen_topologies" entry: its indentation and name, then every TOPOLOGY_ENTRY of the
// value as an array of objects ("[ ]" when it holds none; a trailing partial record is not
// shown). Returns a heap string (strdup) that the caller frees.
char* printApiCfgPlusTopologies(apiCfgPlusEntry* entry, unsigned int indent);
// One record as an object opened at indent. An endpoint count of 4 shows the fourth endpoint
// from the bytes over the name; larger counts are cut to 4 and rule counts to 65.
std::string printApiCfgPlusOneTopology(const TOPOLOGY_ENTRY& topology, unsigned int indent);
// One multicast ACL rule as its bytes in hexadecimal.
std::string printApiCfgPlusTopologyAcl(const FILTER_RULE_ENTRY& rule, unsigned int indent);
// One endpoint as an object with "addr", "secure" and "ikev2_psk".
std::string printApiCfgPlusTopologyGre(const GRE_END_POINT& endpoint, unsigned int indent);
// A VLAN word: "41001 <vlan:1, bridged:true, tagged:false, egress:true>".
std::string printApiCfgPlusContainToVlan(uint16_t word);

#endif
