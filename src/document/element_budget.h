// The cap on the elements one build may create, so that a document whose services all walk
// the same huge objects stops with an error instead of exhausting the AP's memory.
#ifndef JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H
#define JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H

#include <cstddef>
#include <exception>

namespace jcp {

// Five times a fully loaded AP's document (3 radios x 8 WLANs, each walking four 256-rule ACLs
// of ~10 fields: ~100,000 elements), while the elements stay near 100 MB on the 32-bit AP.
constexpr size_t kElementBudget = 500000;

// The budget of a document of that many bytes: one element per byte, never less than
// kElementBudget. A large document may ask for what its own size pays for (a real campus AP
// asks for under one per byte), while a small one that names a huge ACL from thousands of
// services still stops.
inline size_t elementBudgetFor(size_t documentBytes) {
    return documentBytes > kElementBudget ? documentBytes : kElementBudget;
}

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
