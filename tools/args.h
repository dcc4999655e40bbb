// SPDX-License-Identifier: MIT
// Command-line arguments of one tool command: positionals, switches and valued options.
#ifndef JSONCFGPLUS_TOOLS_ARGS_H
#define JSONCFGPLUS_TOOLS_ARGS_H

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace tool {

// A usage error: reported as one line, with the command's usage.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Args {
  public:
    // switches take no value; options take the next argument.
    Args(int argc, char** argv, const std::set<std::string>& switches,
         const std::set<std::string>& options);

    bool has(const std::string& name) const { return m_switches.count(name) != 0; }
    std::string option(const std::string& name, const std::string& fallback) const;
    bool hasOption(const std::string& name) const { return m_options.count(name) != 0; }
    // Exactly count positionals, or a usage error.
    const std::vector<std::string>& positionals(size_t count) const;
    // At least count positionals, or a usage error.
    const std::vector<std::string>& positionalsAtLeast(size_t count) const;

  private:
    std::set<std::string> m_switches;
    std::map<std::string, std::string> m_options;
    std::vector<std::string> m_positionals;
};

// "-" names standard input.
std::string inputPath(const std::string& argument);
// The whole content of a file argument, or a runtime error naming it.
std::string readInput(const std::string& argument);

}  // namespace tool

#endif
