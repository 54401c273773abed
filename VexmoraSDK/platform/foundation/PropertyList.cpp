#include "VexmoraSDK/platform/foundation/PropertyList.h"

#include <plist/plist.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <sstream>

namespace VexmoraSDK::platform::PropertyList {
namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using Text = std::unique_ptr<char, Free>;
using Plist = std::unique_ptr<void, FreePlist>;

/// Property lists count their dates from the first second of 2001.
constexpr std::chrono::sys_days kEpoch = std::chrono::year(2001) / 1 / 1;

/// libplist goes down into a list level by level, however deep, and cannot be told to stop.
constexpr std::size_t kMostObjects = 10'000;

std::size_t count(std::string_view text, std::string_view part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size()))
        ++found;
    return found;
}

/// What bounds the levels: the objects of a binary list, which its last bytes count, and the arrays
/// and dictionaries that another one opens.
std::size_t objectsIn(std::string_view list) {
    if (!list.starts_with("bplist")) return count(list, "<array") + count(list, "<dict");
    constexpr std::size_t kTrailer = 24;
    if (list.size() < kTrailer) return 0;
    std::size_t objects = 0;
    for (const char byte : list.substr(list.size() - kTrailer, sizeof objects))
        objects = objects << 8 | static_cast<unsigned char>(byte);
    return objects;
}

Value valueFrom(plist_t node, int levels);

Dictionary dictionaryFrom(plist_t node, int levels) {
    if (levels == 0) return {};
    Dictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, Free> iteratorOwner(iterator);
    if (!iterator) throw std::bad_alloc();
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        const Text keyOwner(key);
        if (!key || !item) return dictionary;
        dictionary.insert_or_assign(key, valueFrom(item, levels - 1));
    }
}

/// Of the containers in `node`, as many `levels` as this.
Value valueFrom(plist_t node, int levels) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t boolean = 0;
            plist_get_bool_val(node, &boolean);
            return boolean != 0;
        }
        case PLIST_UINT: {
            std::uint64_t integer = 0;
            plist_get_uint_val(node, &integer);
            return static_cast<std::int64_t>(integer);
        }
        case PLIST_REAL: {
            double number = 0;
            plist_get_real_val(node, &number);
            return number;
        }
        case PLIST_STRING: {
            std::uint64_t length = 0;
            const char* text = plist_get_string_ptr(node, &length);
            return std::string(text, length);
        }
        case PLIST_DATA: {
            std::uint64_t length = 0;
            const auto* bytes =
                reinterpret_cast<const std::byte*>(plist_get_data_ptr(node, &length));
            return Data(bytes, bytes + length);
        }
        case PLIST_DATE: {
            std::int32_t seconds = 0;
            std::int32_t microseconds = 0;
            plist_get_date_val(node, &seconds, &microseconds);
            return Date(kEpoch) + std::chrono::seconds(seconds) +
                   std::chrono::microseconds(microseconds);
        }
        case PLIST_ARRAY: {
            Array array;
            const auto size = levels > 0 ? plist_array_get_size(node) : 0;
            for (std::uint32_t i = 0; i < size; ++i) {
                array.push_back(valueFrom(plist_array_get_item(node, i), levels - 1));
            }
            return array;
        }
        case PLIST_DICT: return dictionaryFrom(node, levels);
        default: return {};
    }
}

/// libplist tells of a lack of memory with a null.
plist_t made(plist_t node) {
    if (!node) throw std::bad_alloc();
    return node;
}

/// The node of a value, which the caller owns; null for a null.
struct NodeMaker {
    plist_t operator()(std::monostate) const { return nullptr; }
    plist_t operator()(bool value) const { return made(plist_new_bool(value)); }
    plist_t operator()(std::int64_t value) const {
        return made(plist_new_uint(static_cast<std::uint64_t>(value)));
    }
    plist_t operator()(double value) const { return made(plist_new_real(value)); }
    plist_t operator()(const std::string& value) const {
        return made(plist_new_string(value.c_str()));
    }
    plist_t operator()(const Data& value) const {
        return made(plist_new_data(reinterpret_cast<const char*>(value.data()), value.size()));
    }
    plist_t operator()(Date value) const {
        const auto since = value - Date(kEpoch);
        const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
        const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(since - seconds);
        return made(plist_new_date(static_cast<std::int32_t>(seconds.count()),
                                   static_cast<std::int32_t>(rest.count())));
    }
    plist_t operator()(const Array& value) const {
        plist_t array = made(plist_new_array());
        for (const Value& element : value) {
            if (plist_t node = std::visit(*this, element.variant())) {
                plist_array_append_item(array, node);
            }
        }
        return array;
    }
    plist_t operator()(const Dictionary& value) const {
        plist_t dictionary = made(plist_new_dict());
        for (const auto& [key, member] : value) {
            if (plist_t node = std::visit(*this, member.variant())) {
                plist_dict_set_item(dictionary, key.c_str(), node);
            }
        }
        return dictionary;
    }
};

}  // namespace

std::optional<Dictionary> dictionary(const Data& data) {
    if (objectsIn(textOf(data)) > kMostObjects) return std::nullopt;
    plist_t root = nullptr;
    plist_from_memory(reinterpret_cast<const char*>(data.data()),
                      static_cast<std::uint32_t>(data.size()), &root);
    const Plist owner(root);
    if (!root || plist_get_node_type(root) != PLIST_DICT) return std::nullopt;
    return dictionaryFrom(root, kMostLevels);
}

std::optional<Dictionary> dictionaryWithContentsOfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream bytes;
    // Unlike the stream's iterators this does not throw, at a folder for instance.
    bytes << stream.rdbuf();
    if (!stream || !bytes) return std::nullopt;
    return dictionary(dataOf(bytes.view()));
}

Data binary(const Dictionary& dictionary) {
    const Plist root(NodeMaker()(dictionary));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    if (!bytes) throw std::bad_alloc();
    const Text owner(bytes);
    return dataOf({bytes, length});
}

}  // namespace VexmoraSDK::platform::PropertyList
