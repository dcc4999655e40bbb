// The cap on the elements one build may create, so that a document whose services all walk
// the same huge objects stops with an error instead of exhausting the AP's memory.
#ifndef JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H
#define JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H

#include <cstddef>
#include <exception>

namespace jcp {

// About twenty times a full AP's document (3 radios x 8 WLANs, each naming four 256-rule ACLs
// of ~10 fields, ~100,000 elements), and still below ~250 MB of elements on a 64-bit host.
constexpr size_t kElementBudget = 2000000;

class ElementBudgetExceeded : public std::exception {
  public:
    const char* what() const noexcept override { return "element budget exceeded"; }
};

// While one is alive on a thread, every element the walk creates there is counted against a
// budget of its own; the element past the budget throws ElementBudgetExceeded. Scopes nest:
// the inner one counts alone until it ends.
class ElementBudgetScope {
  public:
    explicit ElementBudgetScope(size_t budget = kElementBudget);
    ~ElementBudgetScope();
    ElementBudgetScope(const ElementBudgetScope&) = delete;
    ElementBudgetScope& operator=(const ElementBudgetScope&) = delete;

    size_t budget() const { return m_budget; }

  private:
    friend void chargeElement();
    size_t m_budget;
    size_t m_created = 0;
    ElementBudgetScope* m_outer;
};

// Counts one new element against the innermost scope of this thread, if there is one.
void chargeElement();

}  // namespace jcp

#endif
