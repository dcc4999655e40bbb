// SPDX-License-Identifier: MIT
// The build's and the converters' account of what they do not take as written: every value
// they drop, clamp, mask, default, reinterpret or refuse, with the element's key path and where
// the element lives. The account goes to one process-wide sink that a checking tool installs;
// without one, reporting costs one branch and prints nothing, so the printed lines stay as
// they are. Internal: not part of the exported interface.
#ifndef JSONCFGPLUS_BASE_BUILD_EVENTS_PRIV_H
#define JSONCFGPLUS_BASE_BUILD_EVENTS_PRIV_H

#include <atomic>
#include <cstddef>
#include <string>

struct radio_entry;
struct vns_entry;

namespace jcp {

enum class EventKind { dropped, clamped, masked, defaulted, reinterpreted, refused };

// "dropped", "clamped", ...
const char* eventKindName(EventKind kind);

// Where the element of an event lives: the global list, a radio, or a service of a radio.
struct EventPlace {
    enum class Where { global, radio, wlan, meshpoint };
    Where where = Where::global;
    int radioId = 0;
    std::string radioName;
    int slot = -1;  // a service's BSS slot (its "bss" - 1)
    int ssidId = 0;
    // A radio's: the interface item it is being built from. Items of one name merge into one
    // radio later, so the name alone cannot say which of them an event is about.
    const void* source = nullptr;
};

struct BuildEvent {
    EventKind kind;
    EventPlace place;
    // Slash-joined element names; "[i]" after a name selects item i of its list.
    std::string keyPath;
    std::string message;  // what the AP does with it
};

class BuildEventSink {
  public:
    virtual ~BuildEventSink() = default;
    virtual void onEvent(const BuildEvent& event) = 0;
};

// Installs the sink for every later build on any thread; null removes it. The caller keeps it
// alive while installed.
void setBuildEventSink(BuildEventSink* sink);

namespace detail {
extern std::atomic<BuildEventSink*> g_eventSink;
void deliverEvent(EventKind kind, const std::string& keyPath, const std::string& message);
}  // namespace detail

// keyPath is relative to the innermost EventKeyScope of this thread, if one is open.
inline void reportEvent(EventKind kind, const std::string& keyPath, const std::string& message) {
    if (detail::g_eventSink.load(std::memory_order_acquire) != nullptr)
        detail::deliverEvent(kind, keyPath, message);
}

// While alive, events of this thread happen at the radio or service given. Scopes nest.
class EventPlaceScope {
  public:
    EventPlaceScope(const radio_entry& radio, const void* source);
    EventPlaceScope(const vns_entry& service, bool meshpoint = false);
    ~EventPlaceScope();
    EventPlaceScope(const EventPlaceScope&) = delete;
    EventPlaceScope& operator=(const EventPlaceScope&) = delete;

  private:
    const radio_entry* m_radio = nullptr;
    const void* m_source = nullptr;
    const vns_entry* m_service = nullptr;
    bool m_meshpoint = false;
    EventPlaceScope* m_outer;
    friend EventPlace currentPlace();
};

// While alive, key paths of this thread's events start with list[index], or with name alone.
// Nothing is built unless an event is reported.
class EventKeyScope {
  public:
    static constexpr size_t kNoIndex = static_cast<size_t>(-1);
    EventKeyScope(const char* list, size_t index = kNoIndex);
    ~EventKeyScope();
    EventKeyScope(const EventKeyScope&) = delete;
    EventKeyScope& operator=(const EventKeyScope&) = delete;

  private:
    const char* m_list;
    size_t m_index;
    EventKeyScope* m_outer;
    friend std::string keyPrefix();
};

}  // namespace jcp

#endif
