// SPDX-License-Identifier: MIT
// The strict JSON scan: one pass over the text, tracking the pointer of each value; see
// strict_json.h.
#include "lint/strict_json_priv.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace jcp::lint {

namespace {

// The length of the valid UTF-8 sequence at text[at], or 0 when it is not one (overlong forms,
// surrogates and code points past U+10FFFF included).
size_t utf8Length(const std::string& text, size_t at) {
    auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char lead = byte(at);
    if (lead < 0x80) return 1;
    size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || lead > 0xF4 || at + length > text.size()) return 0;
    for (size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return 0;
    }
    unsigned char second = byte(at + 1);
    if (lead == 0xE0 && second < 0xA0) return 0;   // overlong
    if (lead == 0xED && second >= 0xA0) return 0;  // a surrogate
    if (lead == 0xF0 && second < 0x90) return 0;   // overlong
    if (lead == 0xF4 && second >= 0x90) return 0;  // past U+10FFFF
    return length;
}

class Scanner {
  public:
    Scanner(const std::string& text, MemberPositions& members, Findings& out)
        : m_text(text), m_members(members), m_positions(members.text()), m_out(out) {}

    void run() {
        skipSpace("");
        m_members.set("", m_at);
        if (!value("")) return;
        skipSpace("");
        // Text after the document is the syntax check's to report.
    }

  private:
    // Past json-c's own nesting limit: a text it parsed never comes near.
    static constexpr int kMaxDepth = 256;

    const std::string& m_text;
    MemberPositions& m_members;
    const TextPositions& m_positions;
    Findings& m_out;
    int m_depth = 0;
    size_t m_at = 0;
    bool m_badUtf8Reported = false;

    bool atEnd() const { return m_at >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_at]; }

    void warn(size_t offset, const std::string& pointer, const std::string& message) {
        Problem problem{Severity::Warning, pointer, message};
        problem.rule = "strict-json";
        m_positions.at(offset, problem.line, problem.column);
        m_out.add(std::move(problem));
    }

    // Whitespace and comments; each comment is reported at its start.
    void skipSpace(const std::string& pointer) {
        while (!atEnd()) {
            char c = peek();
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
                ++m_at;
            } else if (c == '/' && m_at + 1 < m_text.size() &&
                       (m_text[m_at + 1] == '/' || m_text[m_at + 1] == '*')) {
                size_t start = m_at;
                bool line = m_text[m_at + 1] == '/';
                size_t end = line ? m_text.find('\n', m_at) : m_text.find("*/", m_at + 2);
                end = end == std::string::npos ? m_text.size() : end + (line ? 0 : 2);
                warn(start, pointer, "a comment; json-c skips it, but strict JSON has no comments");
                checkUtf8(start, end, pointer);
                m_at = end;
            } else {
                return;
            }
        }
    }

    void checkUtf8(size_t from, size_t to, const std::string& pointer) {
        for (size_t i = from; i < to;) {
            size_t length = utf8Length(m_text, i);
            if (length != 0) {
                i += length;
                continue;
            }
            // One report per document: a file in another encoding would otherwise give one
            // per accented letter.
            if (!m_badUtf8Reported) {
                char hex[8];
                std::snprintf(hex, sizeof hex, "0x%02X", static_cast<unsigned char>(m_text[i]));
                warn(i, pointer,
                     std::string("invalid UTF-8 (byte ") + hex +
                         "); json-c passes the bytes on as they are, strict JSON refuses them");
                m_badUtf8Reported = true;
            }
            ++i;
        }
    }

    void singleQuoted(size_t at, const std::string& pointer) {
        warn(at, pointer, "a string in single quotes; strict JSON needs double quotes");
    }

    // The code point of four hex digits at, or -1.
    long hex4(size_t at) const {
        if (at + 4 > m_text.size()) return -1;
        long value = 0;
        for (size_t i = at; i < at + 4; ++i) {
            int digit = std::isxdigit(static_cast<unsigned char>(m_text[i])) == 0 ? -1
                        : std::isdigit(static_cast<unsigned char>(m_text[i])) != 0
                            ? m_text[i] - '0'
                            : (std::tolower(static_cast<unsigned char>(m_text[i])) - 'a' + 10);
            if (digit < 0) return -1;
            value = value * 16 + digit;
        }
        return value;
    }

    // "\uXXXX" at m_at (a surrogate pair as one), appended as UTF-8 as json-c decodes it, so
    // a key written with escapes is the key the build sees; false when it is not one.
    bool unicodeEscape(std::string& text) {
        long code = hex4(m_at + 2);
        if (code < 0) return false;
        m_at += 6;
        long low = code >= 0xD800 && code < 0xDC00 && peek() == '\\' && m_at + 1 < m_text.size() &&
                           m_text[m_at + 1] == 'u'
                       ? hex4(m_at + 2)
                       : -1;
        if (low >= 0xDC00 && low < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
            m_at += 6;
        }
        auto byte = [&text](long b) { text += static_cast<char>(b); };
        if (code < 0x80) {
            byte(code);
        } else if (code < 0x800) {
            byte(0xC0 | (code >> 6));
            byte(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            byte(0xE0 | (code >> 12));
            byte(0x80 | ((code >> 6) & 0x3F));
            byte(0x80 | (code & 0x3F));
        } else {
            byte(0xF0 | (code >> 18));
            byte(0x80 | ((code >> 12) & 0x3F));
            byte(0x80 | ((code >> 6) & 0x3F));
            byte(0x80 | (code & 0x3F));
        }
        return true;
    }

    // A string at m_at, in double or single quotes; its text with simple escapes undone, for
    // comparing keys.
    std::string string(const std::string& pointer, bool tellQuotes = true) {
        size_t start = m_at;
        char quote = peek();
        if (quote == '\'' && tellQuotes) singleQuoted(start, pointer);
        ++m_at;
        std::string text;
        bool controlTold = false;  // once per string: a pasted block would give many
        while (!atEnd() && peek() != quote) {
            if (peek() == '\\' && m_at + 1 < m_text.size()) {
                char escaped = m_text[m_at + 1];
                if (escaped == 'u' && unicodeEscape(text)) continue;
                const char* from = "bfnrt";
                const char* to = "\b\f\n\r\t";
                const char* found = std::strchr(from, escaped);
                text += found != nullptr && escaped != '\0' ? to[found - from] : escaped;
                m_at += 2;
                continue;
            }
            if (static_cast<unsigned char>(peek()) < 0x20 && !controlTold) {
                char hex[8];
                std::snprintf(hex, sizeof hex, "0x%02X", static_cast<unsigned char>(peek()));
                warn(m_at, pointer,
                     std::string("a control character (") + hex +
                         ") in a string; json-c keeps it, strict JSON needs it escaped");
                controlTold = true;
            }
            text += peek();
            ++m_at;
        }
        checkUtf8(start + 1, m_at, pointer);
        if (!atEnd()) ++m_at;
        return text;
    }

    // A number or a literal: NaN, Infinity, literals in another case, leading zeros and a bare
    // '.' are what json-c alone takes.
    void literal(const std::string& pointer) {
        size_t start = m_at;
        while (!atEnd() && (std::isalnum(static_cast<unsigned char>(peek())) != 0 ||
                            std::strchr("+-.", peek()) != nullptr))
            ++m_at;
        std::string token = m_text.substr(start, m_at - start);
        std::string lower = token;
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        std::string unsigned_ = !lower.empty() && lower[0] == '-' ? lower.substr(1) : lower;
        if (unsigned_ == "nan" || unsigned_ == "infinity") {
            warn(start, pointer,
                 token +
                     " is not a JSON number; json-c reads it as a double, strict JSON "
                     "refuses it");
        } else if ((lower == "true" || lower == "false" || lower == "null") && token != lower) {
            warn(start, pointer,
                 token + " is read as " + lower + " by json-c; strict JSON knows only " + lower);
        } else if (unsigned_.size() > 1 && unsigned_[0] == '0' &&
                   std::isdigit(static_cast<unsigned char>(unsigned_[1])) != 0) {
            warn(start, pointer,
                 token +
                     " has a leading zero; json-c reads it as a decimal number, strict "
                     "JSON refuses it");
        } else {
            size_t dot = token.find('.');
            if (dot != std::string::npos &&
                (dot + 1 == token.size() ||
                 std::isdigit(static_cast<unsigned char>(token[dot + 1])) == 0))
                warn(start, pointer,
                     token +
                         " has no digit after its '.'; json-c takes it, strict JSON "
                         "refuses it");
        }
        if (m_at == start) ++m_at;  // never stall on a byte nothing else takes
    }

    // The value at m_at and everything in it; false when the text ends or loses its way.
    bool value(const std::string& pointer) {
        if (atEnd()) return false;
        char c = peek();
        if (c == '{' || c == '[') {
            if (m_depth == kMaxDepth) return false;
            ++m_depth;
            bool whole = container(pointer, c == '{');
            --m_depth;
            return whole;
        }
        if (c == '"' || c == '\'') {
            string(pointer);
            return true;
        }
        literal(pointer);
        return true;
    }

    // An object or array; duplicate keys are reported at the later key, and a comma before the
    // closing bracket at the comma.
    bool container(const std::string& pointer, bool object) {
        const char close = object ? '}' : ']';
        ++m_at;
        std::unordered_map<std::string, size_t> keys;
        size_t index = 0;
        skipSpace(pointer);
        if (peek() == close) {
            ++m_at;
            return true;
        }
        while (!atEnd()) {
            std::string member;
            if (object) {
                if (peek() != '"' && peek() != '\'') return false;
                size_t keyAt = m_at;
                // A key in single quotes is told at the member it names.
                bool single = peek() == '\'';
                std::string key = string(pointer, false);
                // json-c keeps keys as C strings: an escaped NUL ends the key the build sees.
                key.resize(std::strlen(key.c_str()));
                member = pointerTo(pointer, key);
                m_members.set(member, keyAt);
                if (single) singleQuoted(keyAt, member);
                auto first = keys.emplace(key, keyAt);
                if (!first.second) {
                    int line = 0;
                    int column = 0;
                    m_positions.at(first.first->second, line, column);
                    warn(keyAt, member,
                         "duplicate key " + std::string("\"") + key + "\" (first at line " +
                             std::to_string(line) + ", column " + std::to_string(column) +
                             "); the AP keeps only the last value given for it");
                    first.first->second = keyAt;
                }
                skipSpace(member);
                if (peek() != ':') return false;
                ++m_at;
                skipSpace(member);
            } else {
                member = pointerTo(pointer, index++);
                skipSpace(member);
                m_members.set(member, m_at);
            }
            if (!value(member)) return false;
            skipSpace(pointer);
            if (peek() == close) {
                ++m_at;
                return true;
            }
            if (peek() != ',') return false;
            size_t comma = m_at++;
            skipSpace(pointer);
            if (peek() == close) {
                warn(comma, pointer,
                     std::string("a comma before '") + close +
                         "'; json-c ignores it, strict JSON refuses it");
                ++m_at;
                return true;
            }
        }
        return false;
    }
};

}  // namespace

TextPositions::TextPositions(const std::string& text) : m_lineStarts{0}, m_size(text.size()) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') m_lineStarts.push_back(i + 1);
    }
}

void TextPositions::at(size_t offset, int& line, int& column) const {
    offset = std::min(offset, m_size);
    auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    line = static_cast<int>(next - m_lineStarts.begin());
    column = static_cast<int>(offset - *(next - 1)) + 1;
}

bool MemberPositions::locate(const std::string& pointer, int& line, int& column) const {
    for (std::string at = pointer;;) {
        auto found = m_offsets.find(at);
        if (found != m_offsets.end()) {
            m_text.at(found->second, line, column);
            return true;
        }
        if (at.empty()) return false;
        size_t slash = at.rfind('/');
        at.erase(slash == std::string::npos ? 0 : slash);
    }
}

std::shared_ptr<const MemberPositions> checkStrictJson(const std::string& text, Findings& out) {
    auto members = std::make_shared<MemberPositions>(text);
    Scanner(text, *members, out).run();
    return members;
}

}  // namespace jcp::lint
