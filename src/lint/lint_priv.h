// SPDX-License-Identifier: MIT
// lint: every problem of a document in one run, each with a severity, the JSON Pointer of the
// member it concerns, that member's line and column in the text, and a one-line message. The
// library's own verdicts come from building and converting the document as a parse does, its
// lines kept back; the tree checks add what no conversion sees. Exported as jsonCfgPlusLint.
#ifndef JSONCFGPLUS_LINT_LINT_PRIV_H
#define JSONCFGPLUS_LINT_LINT_PRIV_H

#include <memory>
#include <string>
#include <vector>

namespace jcp::lint {

// Errors: what the AP refuses or silently drops. Warnings: what it accepts but a person
// probably did not mean.
enum class Severity { Error, Warning };

struct Problem {
    Severity severity;
    std::string pointer;  // RFC 6901; "" is the whole document
    std::string message;
    int line = 0;  // 1-based position in the text of the member; 0 only when there is no text
    int column = 0;
    // The kind of check, as code-scanning dashboards group results.
    std::string rule = "document";
};

class MemberPositions;

class Findings {
  public:
    void error(const std::string& pointer, const std::string& message);
    void warning(const std::string& pointer, const std::string& message);
    // A problem without a position gets that of its pointer's member once the text is located.
    void add(Problem problem);
    const std::vector<Problem>& problems() const { return m_problems; }
    // Adds text to the message of the first problem at pointer; false when there is none.
    bool amend(const std::string& pointer, const std::string& text);
    size_t count(Severity severity) const;
    // Where the members of the text stand, for the problems added from now on.
    void locateIn(std::shared_ptr<const MemberPositions> members) {
        m_members = std::move(members);
    }

  private:
    std::vector<Problem> m_problems;
    std::shared_ptr<const MemberPositions> m_members;
};

// Control bytes as \u00NN: a message or a pointer is one line, so a document's text quoted in it
// (a name with a newline) can neither break it nor forge a problem line after it.
std::string oneLine(const std::string& text);

// Every problem of a document text, syntax first.
Findings lintText(const std::string& text);

// A key or an index appended to a pointer, escaped ("~" as "~0", "/" as "~1").
std::string pointerTo(const std::string& base, const std::string& key);
std::string pointerTo(const std::string& base, size_t index);

}  // namespace jcp::lint

#endif
