// SPDX-License-Identifier: MIT
// cfgElementIndex: finds an element list's elements by name in constant time, so a list built
// up by name stays linear in its size however many elements it holds.
#ifndef JSONCFGPLUS_MODEL_CFG_ELEMENT_INDEX_H
#define JSONCFGPLUS_MODEL_CFG_ELEMENT_INDEX_H

#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>

#include "../base/export.h"
#include "cfg_element.h"

// Valid while every change to the list goes through the index; the list object itself may
// move (its elements stay where they are) if rebind follows.
class JCP_EXPORT cfgElementIndex {
  public:
    using List = std::list<cfgElement>;

    // Indexes the first element of each name, the one a scan from the front finds.
    explicit cfgElementIndex(List& list);

    // What jsonCfgPlus::addCfgElement does to the list: the first element of that name is
    // replaced where it stands (or kept, replace false); a new name is appended.
    void add(cfgElement&& element, bool replace);
    // Appends without a name check; an earlier element of the same name stays the one found.
    void append(cfgElement&& element);
    // The first element of that name, or the list's end.
    List::iterator find(const std::string& name);

    List& list() { return *m_list; }
    void rebind(List& list) { m_list = &list; }

  private:
    void remember(List::iterator it);
    void appended();

    List* m_list;
    // Short lists are scanned: cheaper than hashing, and bounded, so still constant time.
    bool m_hashed = false;
    // Keyed by the name's hash so no name is copied; equal hashes are told apart by name.
    std::unordered_multimap<size_t, List::iterator> m_byHash;
};

#endif
