// SPDX-License-Identifier: MIT
// Argument parsing for the tool's commands.
#include "args.h"

#include "document/read_file.h"

namespace tool {

Args::Args(int argc, char** argv, const std::set<std::string>& switches,
           const std::set<std::string>& options) {
    for (int i = 0; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg.size() > 2 && arg.compare(0, 2, "--") == 0) {
            std::string name = arg.substr(2);
            if (switches.count(name) != 0) {
                m_switches.insert(name);
            } else if (options.count(name) != 0) {
                if (i + 1 >= argc) throw UsageError("option --" + name + " needs a value");
                m_options[name] = argv[++i];
            } else {
                throw UsageError("unknown option " + arg);
            }
        } else {
            m_positionals.push_back(arg);
        }
    }
}

std::string Args::option(const std::string& name, const std::string& fallback) const {
    auto found = m_options.find(name);
    return found == m_options.end() ? fallback : found->second;
}

const std::vector<std::string>& Args::positionals(size_t count) const {
    if (m_positionals.size() != count) {
        throw UsageError("expected " + std::to_string(count) + " argument" +
                         (count == 1 ? "" : "s") + ", got " + std::to_string(m_positionals.size()));
    }
    return m_positionals;
}

const std::vector<std::string>& Args::positionalsAtLeast(size_t count) const {
    if (m_positionals.size() < count) {
        throw UsageError("expected at least " + std::to_string(count) + " argument" +
                         (count == 1 ? "" : "s") + ", got " + std::to_string(m_positionals.size()));
    }
    return m_positionals;
}

std::string inputPath(const std::string& argument) {
    return argument == "-" ? "/dev/stdin" : argument;
}

std::string readInput(const std::string& argument) {
    std::string text;
    if (!jcp::readWholeFile(inputPath(argument), text))
        throw std::runtime_error("cannot read " + argument);
    return text;
}

}  // namespace tool
