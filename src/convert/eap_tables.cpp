// SPDX-License-Identifier: MIT
// The NAI-realm EAP name tables.
#include "convert/eap_tables.h"

const naiEapTable naiEapMethod = {
    {"ttls", 21}, {"tls", 13}, {"sim", 18}, {"aka", 23}, {"aka'", 50}};
const naiEapTable naiEapAuthType = {{"non-eap-inner", 2}, {"credential", 5}};
const naiEapTable naiEapAuthValId2 = {{"pap", 1}, {"chap", 2}, {"mschap", 3}, {"mschapv2", 4}};
const naiEapTable naiEapAuthValId5 = {
    {"sim", 1}, {"usim", 2}, {"cert", 6}, {"username-password", 7}};
