// SPDX-License-Identifier: MIT
// summary: what a document gives the AP, in a few lines a person reads before any dump.
#include <cstdio>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/jsoncfgplus.h"
#include "args.h"
#include "commands.h"
#include "library_lines.h"
#include "model/entry_items.h"
#include "record_fields.h"

namespace tool {

namespace {

struct Tally {
    size_t entries = 0;
    std::map<std::string, size_t> records;  // by entry name
};

// Counts the entry and every entry nested in it; fixed records by the entry that carries them.
void tallyEntry(const apiCfgPlusEntry& entry, Tally& tally) {
    ++tally.entries;
    if (entry.type == CFG_BYTES && entry.name != nullptr && recordNameOfEntry(entry.name))
        ++tally.records[entry.name];
    if (entry.type != CFG_OBJECT && entry.type != CFG_OBJ_ARRAY) return;
    const auto* nested = static_cast<const apiCfgPlusEntry*>(entry.value);
    for (size_t i = 0; i < jcp::entryItemCount(entry, sizeof(apiCfgPlusEntry)); ++i)
        tallyEntry(nested[i], tally);
}

size_t tallyArray(const apiCfgPlusEntryArray& array, Tally& tally) {
    size_t before = tally.entries;
    for (int32_t i = 0; i < array.count && array.entries != nullptr; ++i)
        tallyEntry(array.entries[i], tally);
    return tally.entries - before;
}

// A WLAN slot holds a service when it was given one by name; empty slots carry only their ids.
bool holdsService(const apiCfgPlusEntryArray& slot) {
    for (int32_t i = 0; i < slot.count && slot.entries != nullptr; ++i) {
        const char* name = slot.entries[i].name;
        if (name != nullptr && std::strcmp(name, "name") == 0) return true;
    }
    return false;
}

// The library's lines that start with prefix, in order.
// "label: head" and the items after it, joined by ", " and wrapped under the head.
void addLine(std::string& out, const char* label, const std::string& head,
             const std::vector<std::string>& items = {}) {
    const size_t indent = 19, width = 96;
    std::string line = "  " + std::string(label) + ":";
    line.resize(indent, ' ');
    line += head;
    for (size_t i = 0; i < items.size(); ++i) {
        std::string item = items[i] + (i + 1 < items.size() ? "," : "");
        if (line.size() + 1 + item.size() > width) {
            out += line + "\n";
            line = std::string(indent - 1, ' ');
        }
        line += " " + item;
    }
    out += line + "\n";
}

// ":" when items follow the head.
std::string withColon(const std::vector<std::string>& items) {
    return items.empty() ? "" : ":";
}

std::string numbered(const char* what, size_t count) {
    return std::to_string(count) + " " + what;
}

// The interface a radio index stands for, named as the document names it: a person reads
// "radio1" and "p1", not the 0-based indexes the daemon gets.
std::string interfaceName(int32_t index) {
    if (index == JSONCFGPLUS_IOT_RADIO_INDEX) return "bluetooth1";
    if (index >= JSONCFGPLUS_BRIDGE_RADIO_INDEX(0))
        return "br" + std::to_string(index - JSONCFGPLUS_BRIDGE_RADIO_INDEX(0));
    if (index >= 3 && index <= 5) return "p" + std::to_string(index - 2);
    return "radio" + std::to_string(index + 1);
}

// The radio index an array's entries carry.
int32_t radioOf(const apiCfgPlusEntryArray& array) {
    return array.count > 0 && array.entries != nullptr ? array.entries[0].radio : -1;
}

// Everything but the warnings, which the library prints while it builds.
std::string summaryText(const std::string& file, const apiCfgPlusResult& r) {
    Tally tally;
    size_t global = tallyArray(r.global, tally);
    size_t radioEntries = 0, wlanEntries = 0, meshEntries = 0;
    std::vector<std::string> radios;
    for (int32_t i = 0; i < r.radioCount && r.radios != nullptr; ++i) {
        radioEntries += tallyArray(r.radios[i], tally);
        radios.push_back(interfaceName(radioOf(r.radios[i])));
    }

    std::map<int32_t, size_t> servicesByRadio;  // every radio with slots, even when all empty
    size_t services = 0;
    for (int32_t i = 0; i < r.vnsCount && r.vnsList != nullptr; ++i) {
        wlanEntries += tallyArray(r.vnsList[i], tally);
        if (r.vnsList[i].count <= 0 || r.vnsList[i].entries == nullptr) continue;
        size_t& perRadio = servicesByRadio[r.vnsList[i].entries[0].radio];
        if (holdsService(r.vnsList[i])) ++perRadio, ++services;
    }
    std::vector<std::string> wlans;
    for (const auto& [radio, count] : servicesByRadio)
        wlans.push_back(interfaceName(radio) + ": " + std::to_string(count));

    std::vector<std::string> meshpoints;
    for (int32_t i = 0; i < r.meshpointCount && r.meshpoints != nullptr; ++i) {
        meshEntries += tallyArray(r.meshpoints[i], tally);
        if (r.meshpoints[i].count <= 0 || r.meshpoints[i].entries == nullptr) continue;
        const apiCfgPlusEntry& first = r.meshpoints[i].entries[0];
        meshpoints.push_back(interfaceName(first.radio) + " bss " + std::to_string(first.vns + 1));
    }

    size_t records = 0;
    std::vector<std::string> byName;
    for (const auto& [name, count] : tally.records) {
        records += count;
        byName.push_back(name + (count > 1 ? " x" + std::to_string(count) : ""));
    }

    std::string out = file + ": built\n";
    addLine(out, "radios", std::to_string(r.radioCount) + withColon(radios), radios);
    addLine(out, "WLAN services",
            std::to_string(services) + " in " + std::to_string(r.vnsCount) + " slots" +
                withColon(wlans),
            wlans);
    addLine(out, "meshpoints", std::to_string(meshpoints.size()) + withColon(meshpoints),
            meshpoints);
    addLine(out, "entries", std::to_string(tally.entries) + ":",
            {numbered("global", global), numbered("in radios", radioEntries),
             numbered("in WLAN slots", wlanEntries), numbered("in meshpoints", meshEntries)});
    addLine(out, "fixed records", std::to_string(records) + withColon(byName), byName);
    return out;
}

}  // namespace

int runSummary(int argc, char** argv) {
    Args args(argc, argv, {}, {"signature-dir", "icon-dir"});
    const std::string file = args.positionals(1)[0];
    std::string text = readInput(file);
    useSignatureDir(args);
    useIconDir(args);
    // The library's own lines are counted, not shown: they would bury the summary.
    LibraryLines library;
    apiCfgPlusResult* result = parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()),
                                                jsonCfgPlusParserCallback, 0, 0, 0);
    const std::vector<LibraryLine> buildLines = library.take();
    std::string summary;
    if (result != nullptr) {
        try {
            summary = summaryText(file, *result);
        } catch (...) {
            freeJsonCfgPlus(result);
            throw;
        }
        freeJsonCfgPlus(result);
    }
    if (result == nullptr) {
        for (const LibraryLine& line : buildLines) std::fprintf(stderr, "%s\n", line.text.c_str());
        throw std::runtime_error("the document was not built (the reason is printed above)");
    }
    std::vector<std::string> warnings;
    for (const LibraryLine& line : buildLines) {
        if (line.text.rfind("[WARN]", 0) == 0) warnings.push_back(line.text);
    }
    addLine(summary, "warnings", std::to_string(warnings.size()));
    for (const std::string& warning : warnings) summary += "    " + warning + "\n";
    std::fputs(summary.c_str(), stdout);
    return 0;
}

}  // namespace tool
