// SPDX-License-Identifier: MIT
// Counting the elements of one build against its budget.
#include "document/element_budget.h"

#include <atomic>

namespace jcp {

namespace {
thread_local ElementBudgetScope* t_scope = nullptr;
// 0: no budget set, the default rule applies.
std::atomic<size_t> g_setBudget{0};
}  // namespace

size_t elementBudgetFor(size_t documentBytes) {
    size_t set = g_setBudget.load(std::memory_order_relaxed);
    if (set != 0) return set;
    return documentBytes > kElementBudget ? documentBytes : kElementBudget;
}

void setElementBudget(size_t budget) {
    g_setBudget.store(budget, std::memory_order_relaxed);
}

ElementBudgetScope::ElementBudgetScope(size_t budget) : m_budget(budget), m_outer(t_scope) {
    t_scope = this;
}

ElementBudgetScope::~ElementBudgetScope() {
    t_scope = m_outer;
}

void chargeElement() {
    if (t_scope == nullptr) return;
    if (t_scope->m_created >= t_scope->m_budget) throw ElementBudgetExceeded();
    ++t_scope->m_created;
}

}  // namespace jcp
