// SPDX-License-Identifier: MIT
#include "adserver/JsonWithLines.h"

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <utility>

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

/// Builds the values from the parser's events. The parser chooses the names of the event handlers,
/// and is given one character at a time, so that `line` is always the line of that character.
class Builder {
 public:
    using Error = boost::system::error_code;
    using Text = json::string_view;
    using Kind = JsonWithLines::Kind;

    static constexpr std::size_t max_object_size = 100'000;
    static constexpr std::size_t max_array_size = 100'000;
    static constexpr std::size_t max_key_size = 100'000;
    static constexpr std::size_t max_string_size = 100'000;

    bool on_document_begin(Error&) { return true; }
    bool on_document_end(Error&) { return true; }
    bool on_object_begin(Error&) { return begin(Kind::object); }
    bool on_object_end(std::size_t, Error&) { return end(); }
    bool on_array_begin(Error&) { return begin(Kind::array); }
    bool on_array_end(std::size_t, Error&) { return end(); }
    bool on_key_part(Text part, std::size_t, Error&) { return collect(part); }
    bool on_key(Text part, std::size_t, Error&) {
        collect(part);
        name_ = std::exchange(text_, {});
        return true;
    }
    bool on_string_part(Text part, std::size_t, Error&) { return collect(part); }
    bool on_string(Text part, std::size_t, Error&) { return scalar(Kind::string, part); }
    bool on_number_part(Text part, Error&) { return collect(part); }
    bool on_int64(std::int64_t number, Text part, Error&) {
        return scalar(Kind::integer, part, number);
    }
    bool on_uint64(std::uint64_t, Text part, Error&) { return scalar(Kind::other, part); }
    bool on_double(double, Text part, Error&) { return scalar(Kind::other, part); }
    bool on_bool(bool value, Error&) { return scalar(Kind::other, value ? "true" : "false"); }
    bool on_null(Error&) { return scalar(Kind::other, "null"); }
    bool on_comment_part(Text, Error&) { return true; }
    bool on_comment(Text, Error&) { return true; }

    int line = 1;
    JsonWithLines root;

 private:
    bool collect(Text part) {
        text_.append(part.data(), part.size());
        return true;
    }

    bool scalar(Kind kind, Text part, std::int64_t number = 0) {
        collect(part);
        begin(kind);
        open_.back().integer = number;
        open_.back().text = std::exchange(text_, {});
        return end();
    }

    bool begin(Kind kind) {
        open_.push_back({.kind = kind, .line = line, .name = std::exchange(name_, {})});
        return true;
    }

    bool end() {
        JsonWithLines value = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) {
            root = std::move(value);
        } else {
            open_.back().values.push_back(std::move(value));
        }
        return true;
    }

    std::vector<JsonWithLines> open_;
    std::string name_;
    std::string text_;
};

}  // namespace

const JsonWithLines* JsonWithLines::member(std::string_view wanted) const {
    const auto found = std::find_if(values.begin(), values.end(), [&](const JsonWithLines& value) {
        return value.name == wanted;
    });
    return found == values.end() ? nullptr : &*found;
}

std::string JsonWithLines::description() const {
    switch (kind) {
        case Kind::object: return "an object";
        case Kind::array: return "an array";
        case Kind::string: return '"' + text + '"';
        default: return text;
    }
}

JsonWithLines JsonWithLines::parse(std::string_view text) {
    json::basic_parser<Builder> parser{json::parse_options{}};
    Builder& builder = parser.handler();
    boost::system::error_code error;
    for (const char& character : text) {
        const bool taken = parser.write_some(true, &character, 1, error) == 1;
        if (error) throw Error(builder.line, "expected JSON (" + error.message() + ')');
        if (!taken) throw Error(builder.line, "expected nothing after the end of the JSON text");
        if (character == '\n') ++builder.line;
    }
    parser.write_some(false, nullptr, 0, error);
    if (error) throw Error(builder.line, "expected more: the JSON text breaks off here");
    return std::move(builder.root);
}

}  // namespace VexmoraSDK
