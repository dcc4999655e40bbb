// Counting the elements of one build against its budget.
#include "document/element_budget.h"

namespace jcp {

namespace {
thread_local ElementBudgetScope* t_scope = nullptr;
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
