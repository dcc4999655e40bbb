// SPDX-License-Identifier: MIT
// The cap on the elements one build may create, so that a document whose services all walk
// the same huge objects stops with an error instead of exhausting the AP's memory.
#ifndef JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H
#define JSONCFGPLUS_DOCUMENT_ELEMENT_BUDGET_H

#include <cstddef>
#include <exception>

namespace jcp {

// A fully loaded AP's document: 3 radios x 8 WLANs, each walking six ACLs (MAC, IPv4, IPv6, in
// and out) of 500 rules of about ten fields, is 720,000 elements; the rest of a campus document
// adds tens of thousands. ACL rule elements, with their long key paths, cost about 290 bytes
// each on the 32-bit ARM AP (malloc's overhead included), so this is up to ~290 MB of heap.
constexpr size_t kElementBudget = 1000000;

// The budget of a document of that many bytes: the daemon's own when it set one, otherwise one
// element per byte, never less than kElementBudget. A large document may ask for what its own
// size pays for (a real campus AP asks for under one per byte), while a small one that names a
// huge ACL from thousands of services still stops.
size_t elementBudgetFor(size_t documentBytes);

// The daemon's budget for every later build, whatever the document's size; 0 restores the
// default rule.
void setElementBudget(size_t budget);

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
