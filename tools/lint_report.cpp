// SPDX-License-Identifier: MIT
// lint's three report formats; see lint_report.h.
#include "lint_report.h"

#include <json-c/json.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <set>

#include "api/version.h"
#include "json_out.h"
#include "lint/lint_priv.h"

namespace tool {

namespace {

const char* severityName(const LintProblem& problem) {
    return problem.error ? "error" : "warning";
}

int64_t total(const std::vector<LintedFile>& files, unsigned int LintedFile::*count) {
    int64_t sum = 0;
    for (const LintedFile& file : files) sum += file.*count;
    return sum;
}

void addString(json_object* object, const char* key, const std::string& value) {
    json_object_object_add(object, key, json_object_new_string(value.c_str()));
}

json_object* objectIn(json_object* parent, const char* key) {
    json_object* child = json_object_new_object();
    json_object_object_add(parent, key, child);
    return child;
}

// A file name as a URI: a relative path stays a relative reference (dashboards resolve it
// against the checkout), an absolute one becomes a file URI; what is not unreserved or a path
// separator is percent-encoded, so a name with a blank or a '#' still names the file.
std::string uriOf(const std::string& name) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string uri = name.compare(0, 1, "/") == 0 ? "file://" : "";
    for (unsigned char c : name) {
        if (std::isalnum(c) != 0 || std::strchr("-._~/", c) != nullptr) {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += kHex[c >> 4];
            uri += kHex[c & 0xF];
        }
    }
    return uri;
}

const char* ruleText(const std::string& rule) {
    if (rule == "syntax") return "The text is not JSON that json-c reads; the AP refuses it.";
    if (rule == "strict-json") return "json-c takes it, a strict JSON parser refuses it.";
    return "What the AP refuses, drops or changes, or accepts but was probably not meant.";
}

}  // namespace

void printLintText(const std::vector<LintedFile>& files) {
    bool any = false;
    for (const LintedFile& file : files) {
        for (const LintProblem& p : file.problems) {
            std::string place = file.name;
            if (p.line > 0) place += ":" + std::to_string(p.line) + ":" + std::to_string(p.column);
            std::printf("%s: %s: %s: %s\n", place.c_str(), severityName(p),
                        p.pointer.empty() ? "(document)" : jcp::lint::oneLine(p.pointer).c_str(),
                        p.message.c_str());
            any = true;
        }
    }
    if (any) {
        std::printf("%lld error(s), %lld warning(s)\n",
                    static_cast<long long>(total(files, &LintedFile::errors)),
                    static_cast<long long>(total(files, &LintedFile::warnings)));
    }
}

void printLintJson(const std::vector<LintedFile>& files) {
    JsonPtr report(json_object_new_object());
    json_object* problems = json_object_new_array();
    json_object_object_add(report.get(), "problems", problems);
    for (const LintedFile& file : files) {
        for (const LintProblem& p : file.problems) {
            json_object* item = json_object_new_object();
            json_object_array_add(problems, item);
            addString(item, "file", file.name);
            json_object_object_add(item, "line", json_object_new_int(p.line));
            json_object_object_add(item, "column", json_object_new_int(p.column));
            addString(item, "severity", severityName(p));
            addString(item, "pointer", p.pointer);
            addString(item, "message", p.message);
        }
    }
    json_object_object_add(report.get(), "errors",
                           json_object_new_int64(total(files, &LintedFile::errors)));
    json_object_object_add(report.get(), "warnings",
                           json_object_new_int64(total(files, &LintedFile::warnings)));
    printJsonDocument(report.get());
}

void printLintSarif(const std::vector<LintedFile>& files) {
    JsonPtr log(json_object_new_object());
    addString(log.get(), "version", "2.1.0");
    addString(log.get(), "$schema", "https://json.schemastore.org/sarif-2.1.0.json");
    json_object* runs = json_object_new_array();
    json_object_object_add(log.get(), "runs", runs);
    json_object* run = json_object_new_object();
    json_object_array_add(runs, run);
    json_object* driver = objectIn(objectIn(run, "tool"), "driver");
    addString(driver, "name", "jsoncfgplus");
    addString(driver, "version", JSONCFGPLUS_VERSION_STRING);

    json_object* results = json_object_new_array();
    std::set<std::string> rules;
    for (const LintedFile& file : files) {
        for (const LintProblem& p : file.problems) {
            rules.insert(p.rule);
            json_object* result = json_object_new_object();
            json_object_array_add(results, result);
            addString(result, "ruleId", p.rule);
            addString(result, "level", severityName(p));
            std::string text = (p.pointer.empty() ? "(document)" : p.pointer) + ": " + p.message;
            addString(objectIn(result, "message"), "text", text);
            json_object* locations = json_object_new_array();
            json_object_object_add(result, "locations", locations);
            json_object* location = json_object_new_object();
            json_object_array_add(locations, location);
            json_object* physical = objectIn(location, "physicalLocation");
            addString(objectIn(physical, "artifactLocation"), "uri", uriOf(file.name));
            if (p.line > 0) {
                json_object* region = objectIn(physical, "region");
                json_object_object_add(region, "startLine", json_object_new_int(p.line));
                json_object_object_add(region, "startColumn", json_object_new_int(p.column));
            }
            // The pointer again on its own, for a dashboard that groups by member.
            if (p.pointer.empty()) continue;
            json_object* logical = json_object_new_array();
            json_object_object_add(location, "logicalLocations", logical);
            json_object* member = json_object_new_object();
            json_object_array_add(logical, member);
            addString(member, "fullyQualifiedName", p.pointer);
        }
    }
    json_object* ruleList = json_object_new_array();
    json_object_object_add(driver, "rules", ruleList);
    for (const std::string& id : rules) {
        json_object* rule = json_object_new_object();
        json_object_array_add(ruleList, rule);
        addString(rule, "id", id);
        addString(objectIn(rule, "shortDescription"), "text", ruleText(id));
    }
    json_object_object_add(run, "results", results);
    printJsonDocument(log.get());
}

}  // namespace tool
