/* Textual address validators (C linkage). */
#ifndef JSONCFGPLUS_ADDR_ADDRCHK_H
#define JSONCFGPLUS_ADDR_ADDRCHK_H

#endif
