// SPDX-License-Identifier: MIT
// Delivering the build's events to the installed sink, with the place and key scopes of the
// reporting thread.
#include "base/build_events_priv.h"

#include "document/radio_entry.h"

namespace jcp {

namespace detail {
std::atomic<BuildEventSink*> g_eventSink{nullptr};
}  // namespace detail

namespace {
thread_local EventPlaceScope* t_place = nullptr;
thread_local EventKeyScope* t_key = nullptr;
}  // namespace

const char* eventKindName(EventKind kind) {
    switch (kind) {
        case EventKind::dropped:
            return "dropped";
        case EventKind::clamped:
            return "clamped";
        case EventKind::masked:
            return "masked";
        case EventKind::defaulted:
            return "defaulted";
        case EventKind::reinterpreted:
            return "reinterpreted";
        case EventKind::refused:
            return "refused";
    }
    return "changed";
}

void setBuildEventSink(BuildEventSink* sink) {
    detail::g_eventSink.store(sink, std::memory_order_release);
}

EventPlaceScope::EventPlaceScope(const radio_entry& radio, const void* source)
    : m_radio(&radio), m_source(source), m_outer(t_place) {
    t_place = this;
}

EventPlaceScope::EventPlaceScope(const vns_entry& service, bool meshpoint)
    : m_service(&service), m_meshpoint(meshpoint), m_outer(t_place) {
    t_place = this;
}

EventPlaceScope::~EventPlaceScope() {
    t_place = m_outer;
}

EventKeyScope::EventKeyScope(const char* list, size_t index)
    : m_list(list), m_index(index), m_outer(t_key) {
    t_key = this;
}

EventKeyScope::~EventKeyScope() {
    t_key = m_outer;
}

EventPlace currentPlace() {
    EventPlace place;
    const EventPlaceScope* scope = t_place;
    if (scope == nullptr) return place;
    if (scope->m_radio != nullptr) {
        place.where = EventPlace::Where::radio;
        place.radioId = scope->m_radio->id;
        place.radioName = scope->m_radio->name;
        place.source = scope->m_source;
        return place;
    }
    place.where = scope->m_meshpoint ? EventPlace::Where::meshpoint : EventPlace::Where::wlan;
    place.radioId = scope->m_service->radioId;
    place.slot = scope->m_service->index;
    place.ssidId = scope->m_service->ssidId;
    return place;
}

std::string keyPrefix() {
    std::string prefix;
    for (const EventKeyScope* scope = t_key; scope != nullptr; scope = scope->m_outer) {
        std::string step = scope->m_list;
        if (scope->m_index != EventKeyScope::kNoIndex)
            step += "[" + std::to_string(scope->m_index) + "]";
        prefix.insert(0, step + "/");
    }
    return prefix;
}

namespace detail {

void deliverEvent(EventKind kind, const std::string& keyPath, const std::string& message) {
    BuildEventSink* sink = g_eventSink.load(std::memory_order_acquire);
    if (sink == nullptr) return;
    std::string path = keyPrefix() + keyPath;
    if (!path.empty() && path.back() == '/') path.pop_back();
    sink->onEvent(BuildEvent{kind, currentPlace(), std::move(path), message});
}

}  // namespace detail

}  // namespace jcp
