// SPDX-License-Identifier: MIT
// Conversion of elements into the caller's flat entries, and their release.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "model/cfg_element.h"
#include "model/entry_items.h"

namespace {

char* duplicateString(const std::string& text) {
    // Copies the whole string, embedded NULs included, so `size` bytes are always readable.
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy == nullptr) throw std::bad_alloc();
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

// Owns a block of entries while it is being filled, so a failed allocation half way leaves
// nothing behind.
class EntryBlock {
  public:
    explicit EntryBlock(size_t count) : entries_(new apiCfgPlusEntry[count]()), count_(count) {}
    ~EntryBlock() {
        if (entries_ == nullptr) return;
        for (size_t i = 0; i < filled_; ++i) cfgElement::freeApiCfgPlusEntry(entries_[i]);
        delete[] entries_;
    }
    EntryBlock(const EntryBlock&) = delete;
    EntryBlock& operator=(const EntryBlock&) = delete;

    apiCfgPlusEntry& next() { return entries_[filled_]; }
    void commitOne() { ++filled_; }
    apiCfgPlusEntry* release() {
        apiCfgPlusEntry* out = entries_;
        entries_ = nullptr;
        return out;
    }
    size_t count() const { return count_; }

  private:
    apiCfgPlusEntry* entries_;
    size_t count_;
    size_t filled_ = 0;
};

template <typename Container>
void fillNested(const Container& items, apiCfgPlusEntry& entry) {
    EntryBlock block(items.size());
    for (const cfgElement& item : items) {
        item.toApiCfgPlusEntry(block.next());
        block.commitOne();
    }
    entry.size = static_cast<int32_t>(block.count() * sizeof(apiCfgPlusEntry));
    entry.value = block.release();
}

}  // namespace

void cfgElement::toApiCfgPlusEntry(apiCfgPlusEntry& entry) const {
    entry.type = kind;
    entry.freeFn = freeFn;
    entry.printFn = printFn;
    entry.value = nullptr;
    entry.size = 0;
    std::unique_ptr<char, decltype(&std::free)> entryName(duplicateString(name), &std::free);

    switch (kind) {
        case CFG_BOOL:
            entry.value = new int32_t(boolValue ? 1 : 0);
            entry.size = sizeof(int32_t);
            break;
        case CFG_DOUBLE:
            entry.value = new double(doubleValue);
            entry.size = sizeof(double);
            break;
        case CFG_INT:
            entry.value = new int32_t(intValue);
            entry.size = sizeof(int32_t);
            break;
        case CFG_STRING:
            entry.value = duplicateString(strValue);
            entry.size = static_cast<int32_t>(strValue.size());
            break;
        case CFG_BYTES: {
            auto* bytes = new uint8_t[bytesValue.size()];
            if (!bytesValue.empty()) std::memcpy(bytes, bytesValue.data(), bytesValue.size());
            entry.value = bytes;
            entry.size = static_cast<int32_t>(bytesValue.size());
            break;
        }
        case CFG_STR_LIST: {
            std::unique_ptr<char*[]> pointers(new char*[strList.size()]());
            size_t i = 0;
            try {
                for (const std::string& s : strList) pointers[i++] = duplicateString(s);
            } catch (...) {
                for (size_t j = 0; j < strList.size(); ++j) std::free(pointers[j]);
                throw;
            }
            entry.value = pointers.release();
            entry.size = static_cast<int32_t>(strList.size() * sizeof(char*));
            break;
        }
        case CFG_INT_LIST: {
            auto* ints = new int32_t[intList.size()];
            size_t i = 0;
            for (int32_t v : intList) ints[i++] = v;
            entry.value = ints;
            entry.size = static_cast<int32_t>(intList.size() * sizeof(int32_t));
            break;
        }
        case CFG_OBJECT:
            fillNested(elements, entry);
            break;
        case CFG_OBJ_ARRAY:
            fillNested(objArray, entry);
            break;
        case CFG_NULL:
        case CFG_EMPTY_ARRAY:
        default:
            break;
    }
    entry.name = entryName.release();
}

namespace {

// Fills array with count top-level entries, each written by convertNext from the next element
// of the list, tagged with the list's radio and VNS.
template <typename ConvertNext>
void fillArray(size_t count, apiCfgPlusEntryArray* array, int radio, int vns,
               ConvertNext convertNext) {
    if (array == nullptr) return;
    array->count = static_cast<int32_t>(count);
    array->entries = nullptr;
    if (count == 0) return;

    EntryBlock block(count);
    for (size_t i = 0; i < count; ++i) {
        apiCfgPlusEntry& entry = block.next();
        convertNext(entry);
        entry.radio = radio;
        entry.vns = vns;
        block.commitOne();
    }
    array->entries = block.release();
}

}  // namespace

void cfgElement::setApiCfgPlusList(const std::list<cfgElement>& list, apiCfgPlusEntryArray* array,
                                   int radio, int vns) {
    // Converted straight from the list: the element is only read, so no copy is needed.
    auto next = list.begin();
    fillArray(list.size(), array, radio, vns,
              [&next](apiCfgPlusEntry& entry) { (next++)->toApiCfgPlusEntry(entry); });
}

void cfgElement::setApiCfgPlusList(std::list<cfgElement>&& list, apiCfgPlusEntryArray* array,
                                   int radio, int vns) {
    fillArray(list.size(), array, radio, vns, [&list](apiCfgPlusEntry& entry) {
        list.front().toApiCfgPlusEntry(entry);
        list.pop_front();
    });
}

void cfgElement::freeApiCfgPlusEntry(apiCfgPlusEntry& entry) {
    if (entry.freeFn != nullptr) {
        // The custom release takes over entirely; name and value block are its business.
        entry.freeFn(&entry);
        return;
    }
    std::free(entry.name);
    entry.name = nullptr;
    switch (entry.type) {
        case CFG_BOOL:
        case CFG_INT:
            delete static_cast<int32_t*>(entry.value);
            break;
        case CFG_DOUBLE:
            delete static_cast<double*>(entry.value);
            break;
        case CFG_STRING:
            std::free(entry.value);
            break;
        case CFG_BYTES:
            delete[] static_cast<uint8_t*>(entry.value);
            break;
        case CFG_INT_LIST:
            delete[] static_cast<int32_t*>(entry.value);
            break;
        case CFG_STR_LIST: {
            auto** strings = static_cast<char**>(entry.value);
            for (size_t i = 0; i < jcp::entryItemCount(entry, sizeof(char*)); ++i)
                std::free(strings[i]);
            delete[] strings;
            break;
        }
        case CFG_OBJECT:
        case CFG_OBJ_ARRAY: {
            auto* nested = static_cast<apiCfgPlusEntry*>(entry.value);
            for (size_t i = 0; i < jcp::entryItemCount(entry, sizeof(apiCfgPlusEntry)); ++i)
                freeApiCfgPlusEntry(nested[i]);
            delete[] nested;
            break;
        }
        default:
            return;
    }
    entry.value = nullptr;
}

void cfgElement::freeApiCfgPlusEntries(apiCfgPlusEntryArray* array) {
    if (array == nullptr || array->count == 0) return;
    for (int32_t i = 0; i < array->count; ++i) freeApiCfgPlusEntry(array->entries[i]);
    delete[] array->entries;
    array->entries = nullptr;
    array->count = 0;
}
