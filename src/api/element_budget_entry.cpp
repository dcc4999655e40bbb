// The daemon's say over how many elements one build may create.
#include "api/jsoncfgplus.h"
#include "document/element_budget.h"

extern "C" void setJsonCfgPlusElementBudget(unsigned long budget) {
    jcp::setElementBudget(static_cast<size_t>(budget));
}
