// SPDX-License-Identifier: MIT
// Running out of memory while meshpoints become WLANs: each allocation of the step fails in
// turn, and every failure leaves the radio with the meshpoints converted so far ahead of its
// WLANs, nothing half-made and nothing lost. A suite of its own: it replaces operator new.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include "convert/converter.h"

namespace {

// The number of the allocation that fails (once); negative when none does.
long g_failAt = -1;
long g_allocations = 0;

}  // namespace

// These are the replaceable operators themselves, so their malloc and free belong together;
// GCC sees only the standard names at the call sites it inlines into.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size) {
    if (g_failAt >= 0 && g_allocations++ == g_failAt) throw std::bad_alloc();
    if (void* block = std::malloc(size == 0 ? 1 : size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

// The other forms go through the two above, so no allocation escapes the count and no block
// is released by an allocator that did not make it.
void* operator new[](std::size_t size) {
    return ::operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return ::operator new(size, tag);
}

void operator delete[](void* block) noexcept {
    ::operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    ::operator delete(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    ::operator delete(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    ::operator delete(block);
}

namespace {

using List = std::list<cfgElement>;
using Strs = std::list<std::string>;

// Two non-root meshpoints on a 2.4 GHz radio with one WLAN; each meshpoint sets the radio's
// channel list last, so the list tells how many were converted in full.
radio_entry meshRadio() {
    auto meshpoint = [](const char* meshid, const char* channels) {
        return vns_entry{0, 3, 0,
                         List{cfgElement("meshid", meshid), cfgElement("is_root", false),
                              cfgElement("meshpoint_device/acs_channel_list_24", Strs{channels})}};
    };
    radio_entry radio{3, "radio3", List{cfgElement("rf_mode", "2.4GHz-wlan")}, {}, {}};
    radio.meshpoints = {meshpoint("a", "1,6,11"), meshpoint("b", "36,40")};
    radio.wlans = {vns_entry{2, 3, 5, List{cfgElement("ssid", "w")}}};
    return radio;
}

// How many meshpoints the radio's channel list says were converted.
size_t convertedByChannelList(radio_entry& radio) {
    cfgPlusApiConverter c;
    auto list = c.findCfgElement(radio.elements, "meshpoint_device/acs_channel_list");
    if (list == radio.elements.end()) return 0;
    return list->intList == std::list<int>{1, 6, 11} ? 1 : 2;
}

TEST(MeshpointToWlan, EachFailedAllocationLeavesTheConvertedMeshpointsAndTheWlans) {
    size_t failuresSeen[3] = {0, 0, 0};
    for (long failAt = 0; failAt < 100000; ++failAt) {
        SCOPED_TRACE(testing::Message() << "allocation " << failAt << " fails");
        jsonCfgPlus doc;
        doc.m_radios.push_back(meshRadio());
        bool failed = false;
        g_allocations = 0;
        g_failAt = failAt;
        try {
            cfgPlusApiConverter().jsonCfgPlusMeshpointToWlan(doc);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        g_failAt = -1;
        if (!failed) break;

        radio_entry& radio = doc.m_radios.front();
        cfgPlusApiConverter c;
        size_t converted = convertedByChannelList(radio);
        ++failuresSeen[converted];
        ASSERT_EQ(radio.wlans.size(), converted + 1);
        for (size_t i = 0; i < converted; ++i) {
            List& wlan = radio.wlans[i].elements;
            EXPECT_EQ(c.getCfgElementString(wlan, "ssid"), i == 0 ? "a" : "b");
            EXPECT_NE(c.findCfgElement(wlan, "cen_is_root"), wlan.end());
            EXPECT_NE(c.findCfgElement(wlan, "meshpoint_idx"), wlan.end());
        }
        EXPECT_EQ(radio.wlans.back().index, 2);
        EXPECT_EQ(c.getCfgElementString(radio.wlans.back().elements, "ssid"), "w");
        EXPECT_EQ(radio.meshpoints.size(), 2u);
    }
    // Failures came before the first, between the two and after the second conversion.
    for (size_t seen : failuresSeen) EXPECT_GT(seen, 0u);
}

}  // namespace
