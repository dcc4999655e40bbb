// SPDX-License-Identifier: MIT
// The table of a document's top-level objects, name-reference resolution, and the typed
// JSON getters every build step reads single members with.
#ifndef JSONCFGPLUS_DOCUMENT_JSON_CFG_ALL_H
#define JSONCFGPLUS_DOCUMENT_JSON_CFG_ALL_H

#include <json-c/json.h>

#include <list>
#include <memory>
#include <string>
#include <unordered_map>

#include "../base/export.h"

// One top-level member of the document, indexed for lookup by element name.
class JCP_EXPORT jsonCfgObj {
  public:
    jsonCfgObj(std::string name, json_object* json, std::string keyField);
    virtual ~jsonCfgObj();

    // By name: the indexed member; a scalar member answers every name with itself.
    json_object* findJsonElement(const std::string& name) const;
    // By position: an array's member, or the object itself at 0.
    json_object* findJsonElement(unsigned int index) const;
    // Typed lookups: found only when the value has exactly that JSON type; out untouched else.
    bool findJsonStrValue(const std::string& name, std::string& out) const;
    bool findJsonIntValue(const std::string& name, int& out) const;
    bool findJsonBoolValue(const std::string& name, bool& out) const;

    // Readers that use no member data. Null, a wrong type or a missing step gives null/false.
    static json_object* getJsonObject(const std::string& key, json_object* obj);
    static json_object* getJsonObject(const std::string& keyField, const std::string& value,
                                      json_object* array);
    static bool getJsonStrValue(const std::string& key, json_object* obj, std::string& out);
    static bool getJsonStrValue(const std::list<std::string>& keys, json_object* obj,
                                std::string& out);
    static bool getJsonIntValue(const std::string& key, json_object* obj, int& out);
    static bool getJsonIntValue(const std::list<std::string>& keys, json_object* obj, int& out);
    static bool getJsonBoolValue(const std::string& key, json_object* obj, bool& out);
    static bool getJsonBoolValue(const std::list<std::string>& keys, json_object* obj, bool& out);

    // Readable dump for diagnosis.
    std::string toString() const;

    const std::string& name() const { return m_name; }
    json_object* json() const { return m_json; }
    int type() const { return m_type; }

  private:
    std::string m_name;
    json_object* m_json;  // borrowed from the document's tree
    std::string m_keyField;
    std::unordered_map<std::string, json_object*> m_index;
    int m_type;
};

class JCP_EXPORT jsonCfgAll {
  public:
    jsonCfgAll() = default;
    jsonCfgAll(const jsonCfgAll&) = delete;
    jsonCfgAll& operator=(const jsonCfgAll&) = delete;
    virtual ~jsonCfgAll();
    virtual void reset();

    // Rebuilds the table from root and takes ownership of the tree.
    void build(json_object* root);
    jsonCfgObj* findCfgObject(const std::string& name) const;
    // The element of `target` named by from's string member refKey.
    json_object* resolveRelationship(json_object* from, const std::string& refKey,
                                     const std::string& target) const;
    json_object* resolveRelationship(const std::string& fromName, const std::string& refKey,
                                     const std::string& target) const;
    // The element of `target` named elementName.
    json_object* resolveRelationship(const std::string& elementName,
                                     const std::string& target) const;

    json_object* root() const { return m_root; }

  private:
    json_object* m_root = nullptr;
    std::unordered_map<std::string, std::unique_ptr<jsonCfgObj>> m_table;
};

#endif
