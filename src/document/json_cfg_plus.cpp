// SPDX-License-Identifier: MIT
// Document lifecycle: reset, parsing, validation, saving and the JSON shape tests.
#include "document/json_cfg_plus.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <new>

#include "document/parse_text_priv.h"
#include "document/read_file.h"
#include "document/replace_file.h"

namespace {

// Library-wide: successive saves alternate between two slots, keeping the last two documents.
int g_saveSlot = 1;

std::string& saveDirectory() {
    static std::string directory = "/tmp";
    return directory;
}

constexpr int kSaveFlags = JSON_C_TO_STRING_SPACED | JSON_C_TO_STRING_PRETTY;

}  // namespace

const std::list<std::string> jsonCfgPlus::m_radio_qos_vns_names = {
    "admission_control_voice_enable", "admission_control_video_enable",
    "admission_control_best_effort_enable", "admission_control_background_enable"};
const std::string jsonCfgPlus::m_wired_port_prefix = "p";
const std::string jsonCfgPlus::m_bridge_port_prefix = "br";

jsonCfgPlus::~jsonCfgPlus() {
    jsonCfgPlus::reset();
    m_all.reset();
}

void jsonCfgPlus::reset() {
    m_global.clear();
    m_radios.clear();
    m_redis_key = "";
    m_redis_port = 0;
    m_redis_key = "";  // cleared twice on purpose; ip, request id and time stay as they are
}

json_object* jsonCfgPlus::parse(const char* text, unsigned int len) {
    jcp::ParsedText parsed =
        jcp::parseDocumentText(text == nullptr ? "" : text, text == nullptr ? 0 : len);
    if (parsed.error != json_tokener_success)
        jcp::writeErrorLine(std::string("Error: ") + json_tokener_error_desc(parsed.error));
    return parsed.root;
}

json_object* jsonCfgPlus::parse(std::string path) {
    std::string data;
    if (!jcp::readWholeFile(path, data)) return nullptr;
    return parse(data.data(), static_cast<unsigned int>(data.size()));
}

int jsonCfgPlus::validate(const char* path) {
    std::string shown = path != nullptr ? path : "";
    jcp::diag("");
    jcp::diag("Validating file: ", shown, "\n");
    std::string data;
    if (path == nullptr || !jcp::readWholeFile(path, data)) {
        jcp::diag("error in file:", shown);
        return -1;
    }
    json_object* root = json_tokener_parse(data.c_str());
    if (root == nullptr) {
        jcp::diag("error in JSON file");
        return -1;
    }
    jcp::diag("Validated!");
    jcp::diag(json_object_to_json_string_ext(root, kSaveFlags));
    json_object_put(root);
    return 0;
}

int jsonCfgPlus::saveJsonCfgPlus(json_object* root) {
    if (root == nullptr) return 0;
    const char* text = json_object_to_json_string_ext(root, kSaveFlags);
    std::string fileName = saveDirectory() + "/json_q" + std::to_string(g_saveSlot) +
                           (m_save_backup != 0 ? "_bk" : "") + ".json";
    if (++g_saveSlot > 2) g_saveSlot = 1;
    size_t length = std::strlen(text);
    jcp::diag("save JSON-Q+ configuration to file: ", fileName, ", size:", length);
    std::string content(text, length);
    content += '\n';
    // The document holds the WLAN and tunnel keys: a fresh private file renamed into place,
    // and any failure on the way is reported as the file not opening.
    if (!jcp::replaceFile(fileName, content.data(), content.size())) {
        jcp::diag("Unable to open file: ", fileName);
        return -1;
    }
    jcp::diag("JSON-Q+ Configuration is saved to file: ", fileName);
    return 0;
}

std::string jsonCfgPlus::setSaveDirectory(const std::string& directory) {
    std::string previous = saveDirectory();
    saveDirectory() = directory.empty() ? "/tmp" : directory;
    return previous;
}

int jsonCfgPlus::saveJsonCfgPlus(const char* text, unsigned int len) {
    json_object* root = jsonCfgPlus().parse(text, len);
    if (root == nullptr) return 0;
    int result = saveJsonCfgPlus(root);
    json_object_put(root);
    return result;
}

bool jsonCfgPlus::isStrList(json_object* o, std::list<std::string>& out) {
    if (o == nullptr || !json_object_is_type(o, json_type_array)) return false;
    size_t length = json_object_array_length(o);
    if (length < 1) return false;
    for (size_t i = 0; i < length; ++i) {
        json_object* item = json_object_array_get_idx(o, i);
        if (item == nullptr || !json_object_is_type(item, json_type_string)) return false;
        out.emplace_back(json_object_get_string(item),
                         static_cast<size_t>(json_object_get_string_len(item)));
    }
    return true;
}

bool jsonCfgPlus::isIntList(json_object* o, std::list<int>& out) {
    if (o == nullptr || !json_object_is_type(o, json_type_array)) return false;
    size_t length = json_object_array_length(o);
    if (length < 1) return false;
    for (size_t i = 0; i < length; ++i) {
        json_object* item = json_object_array_get_idx(o, i);
        if (item == nullptr || !json_object_is_type(item, json_type_int)) return false;
        out.push_back(json_object_get_int(item));
    }
    return true;
}

bool jsonCfgPlus::isEmptyObj(json_object* o) {
    return o != nullptr && json_object_is_type(o, json_type_object) &&
           json_object_object_length(o) == 0;
}
