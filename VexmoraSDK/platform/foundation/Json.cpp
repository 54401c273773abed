// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Json.h"

#include <boost/json.hpp>
#include <string>

namespace VexmoraSDK::platform::Json {
namespace {

namespace json = boost::json;

constexpr std::size_t kMaxDepth = 512;
constexpr std::size_t kMaxBytes = 1 << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

Error readerError(const std::string& reason, std::size_t offset) {
    Dictionary userInfo;
    userInfo.emplace(kLocalizedDescriptionKey, std::string("The data is not valid JSON."));
    userInfo.emplace(kDebugDescriptionKey, reason + " at byte " + std::to_string(offset));
    return {"VexmoraJSONErrorDomain", 1, std::move(userInfo)};
}

Value valueFrom(const json::value& source) {
    switch (source.kind()) {
        case json::kind::null: return {};
        case json::kind::bool_: return source.get_bool();
        case json::kind::int64: return source.get_int64();
        case json::kind::uint64: return static_cast<double>(source.get_uint64());
        case json::kind::double_: return source.get_double();
        case json::kind::string: return std::string(source.get_string());
        case json::kind::array: {
            Array array;
            array.reserve(source.get_array().size());
            for (const auto& element : source.get_array())
                array.push_back(valueFrom(element));
            return array;
        }
        case json::kind::object: {
            Dictionary dictionary;
            for (const auto& member : source.get_object()) {
                dictionary.emplace(member.key(), valueFrom(member.value()));
            }
            return dictionary;
        }
    }
    return {};
}

}  // namespace

std::variant<Value, Error> read(const Data& data) {
    std::string_view text = textOf(data);
    if (text.size() > kMaxBytes) return readerError("longer than 1 MiB", kMaxBytes);
    const std::size_t skipped = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    text.remove_prefix(skipped);

    json::parse_options options;
    options.max_depth = kMaxDepth;
    // A text may hold 20,000 small objects; this resource frees the memory of all of them together.
    json::monotonic_resource memory;
    json::parser parser({}, options);
    parser.reset(&memory);
    json::error_code failure;
    const std::size_t consumed = parser.write(text.data(), text.size(), failure);
    if (failure) return readerError(failure.message(), skipped + consumed);

    const json::value top = parser.release();
    if (!top.is_array() && !top.is_object()) {
        return readerError("the top level is neither an array nor an object", skipped);
    }
    return valueFrom(top);
}

}  // namespace VexmoraSDK::platform::Json
