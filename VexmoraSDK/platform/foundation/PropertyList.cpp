// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/PropertyList.h"

#include <plist/plist.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <sstream>
#include <vector>

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

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// libplist recurses into every level of a list and knows no limit of its own.
constexpr std::size_t kMaxLevelsRead = 10'000;

std::size_t count(std::string_view text, std::string_view part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size()))
        ++found;
    return found;
}

/// As much of the objects of a binary list as must be known before libplist reads it. What an
/// offset places outside of the list reads as empty.
class BinaryObjects {
 public:
    /// A list without a trailer has no objects.
    explicit BinaryObjects(std::string_view list) : list_(list) {
        constexpr std::size_t kTrailer = 26;
        if (list.size() < kTrailer) return;
        const std::size_t trailer = list.size() - kTrailer;
        offsetSize_ = number(trailer, 1);
        referenceSize_ = number(trailer + 1, 1);
        count_ = std::min(number(trailer + 2, 8), list.size());
        top_ = number(trailer + 10, 8);
        offsets_ = number(trailer + 18, 8);
    }

    /// Whether a text has a zero in it. libplist aborts at such a key, and the library writes none.
    bool haveAZeroInAText() const {
        for (std::size_t i = 0; i < count_; ++i) {
            const auto object = at(i);
            const std::size_t width = object.type == kAscii ? 1 : object.type == kUtf16 ? 2 : 0;
            for (std::size_t unit = 0; width != 0 && unit < object.size; ++unit) {
                const std::size_t where = object.contents + unit * width;
                if (where + width > list_.size()) break;
                if (number(where, width) == 0) return true;
            }
        }
        return false;
    }

    /// Whether arrays and dictionaries are nested deeper than `max`.
    bool areDeeperThan(std::size_t max) const {
        std::vector<std::size_t> level = {top_};
        for (std::size_t depth = 0; !level.empty(); ++depth) {
            // More levels than there are objects are a cycle.
            if (depth > std::min(max, count_)) return true;
            std::vector<bool> seen(count_);
            std::vector<std::size_t> next;
            for (const std::size_t container : level) {
                for (const std::size_t member : membersOf(at(container))) {
                    if (member >= count_ || seen[member] || !isContainer(at(member))) continue;
                    seen[member] = true;
                    next.push_back(member);
                }
            }
            level = std::move(next);
        }
        return false;
    }

 private:
    enum Type : unsigned { kAscii = 5, kUtf16 = 6, kArray = 10, kSet = 12, kDictionary = 13 };

    struct Object {
        std::size_t type = 0;
        std::size_t size = 0;
        std::size_t contents = 0;
    };

    std::size_t number(std::size_t position, std::size_t length) const {
        std::size_t value = 0;
        if (position > list_.size() || length > list_.size() - position) return value;
        for (const char byte : list_.substr(position, length))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    Object at(std::size_t index) const {
        const std::size_t position = number(offsets_ + index * offsetSize_, offsetSize_);
        const std::size_t marker = number(position, 1);
        Object object{marker >> 4, marker & 15, position + 1};
        if (object.size == 15) {
            // 15 means that the size follows as an integer object.
            const std::size_t length = std::size_t{1} << (number(object.contents, 1) & 3);
            object.size = number(object.contents + 1, length);
            object.contents += 1 + length;
        }
        return object;
    }

    static bool isContainer(const Object& object) {
        return object.type == kArray || object.type == kSet || object.type == kDictionary;
    }

    std::vector<std::size_t> membersOf(const Object& container) const {
        std::vector<std::size_t> members;
        if (!isContainer(container)) return members;
        const std::size_t each = container.type == kDictionary ? 2 : 1;
        const std::size_t count = each * std::min(container.size, list_.size());
        for (std::size_t i = 0; i < count && container.contents + i < list_.size(); ++i)
            members.push_back(number(container.contents + i * referenceSize_, referenceSize_));
        return members;
    }

    std::string_view list_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t count_ = 0;
    std::size_t top_ = 0;
    std::size_t offsets_ = 0;
};

/// Whether libplist can read the list without harm. A list of XML has at most as many levels as it
/// opens arrays and dictionaries.
bool isHarmless(std::string_view list) {
    if (!list.starts_with("bplist")) {
        return count(list, "<array") + count(list, "<dict") <= kMaxLevelsRead;
    }
    const BinaryObjects objects(list);
    return !objects.haveAZeroInAText() && !objects.areDeeperThan(kMaxLevelsRead);
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

/// Converts `node`. Containers nested deeper than `levels` become empty.
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
            return std::string(text, static_cast<std::size_t>(length));
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

/// libplist returns a null node when it lacks memory.
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
    std::string_view list = textOf(data);
    if (list.starts_with(kByteOrderMark)) list.remove_prefix(kByteOrderMark.size());
    if (!isHarmless(list)) return std::nullopt;
    plist_t root = nullptr;
    plist_from_memory(list.data(), static_cast<std::uint32_t>(list.size()), &root);
    const Plist owner(root);
    if (!root || plist_get_node_type(root) != PLIST_DICT) return std::nullopt;
    return dictionaryFrom(root, kMaxLevels);
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
