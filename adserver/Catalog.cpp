#include "adserver/Catalog.h"

#include <algorithm>
#include <array>
#include <boost/json.hpp>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

constexpr std::array adTypes{Creative::native, 14L, 15L, 77L, 79L, 83L, 84L};
constexpr std::array pictureExtensions{".png", ".jpg", ".jpeg", ".webp"};

template <typename Range, typename T>
bool contains(const Range& range, const T& value) {
    return std::find(std::begin(range), std::end(range), value) != std::end(range);
}

[[noreturn]] void mistake(const std::string& place, const std::string& expected) {
    throw std::runtime_error(place + ": expected " + expected);
}

json::value parse(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream) mistake(file.string(), "a readable file");
    json::parser parser;
    boost::system::error_code error;
    const std::size_t parsed = parser.write(text, error);
    if (!error) return parser.release();
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(parsed);
    mistake(file.string() + ':' + std::to_string(1 + std::count(text.begin(), end, '\n')),
            "JSON (" + error.message() + ')');
}

const json::object& object(const json::value* value, const std::string& place) {
    if (!value || !value->is_object()) mistake(place, "an object");
    return value->get_object();
}

std::string text(const json::object& parent, std::string_view name, const std::string& place) {
    const json::value* value = parent.if_contains(name);
    if (!value || !value->is_string() || value->get_string().empty()) {
        mistake(place + '.' + std::string(name), "a text");
    }
    return json::value_to<std::string>(*value);
}

long adType(const json::object& parent, const std::string& place) {
    const json::value* value = parent.if_contains("adTypeId");
    if (!value || !value->is_int64() || !contains(adTypes, value->get_int64())) {
        mistake(place + ".adTypeId", "one of 1, 14, 15, 77, 79, 83, 84");
    }
    return value->get_int64();
}

/// Whether an address can hold the name as it is.
bool isPlain(const std::string& name) {
    return std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '-' || c == '_' || c == '.';
    });
}

std::filesystem::path picture(const json::object& parent, const std::filesystem::path& folder,
                              const std::string& place) {
    const std::filesystem::path name = text(parent, "picture", place);
    if (!isPlain(name.native()) || !contains(pictureExtensions, name.extension()) ||
        !std::filesystem::is_regular_file(folder / name)) {
        mistake(place + ".picture", "a .png, .jpg, .jpeg or .webp file in " + folder.string() +
                                        ", its name of letters, digits, '-', '_' and '.' only");
    }
    return folder / name;
}

Creative creative(const json::value& value, const std::filesystem::path& pictures,
                  const std::string& place) {
    const json::object& members = object(&value, place);
    Creative creative;
    creative.adTypeId = adType(members, place);
    creative.clickUrl = text(members, "clickUrl", place);
    creative.picture = picture(members, pictures, place);
    if (creative.adTypeId == Creative::native) {
        creative.title = text(members, "title", place);
        creative.description = text(members, "description", place);
        creative.displayName = text(members, "displayName", place);
    }
    return creative;
}

Catalog read(const std::filesystem::path& file) {
    const json::value root = parse(file);
    const json::object& sections = object(&root, file.string());
    Catalog catalog;

    std::map<std::string_view, const Creative&> named;
    const std::string creativesPlace = file.string() + ": creatives";
    const json::object& creatives = object(sections.if_contains("creatives"), creativesPlace);
    catalog.creatives.reserve(creatives.size());
    for (const auto& [name, value] : creatives) {
        catalog.creatives.push_back(creative(value, file.parent_path() / "pictures",
                                             creativesPlace + '.' + std::string(name)));
        named.emplace(name, catalog.creatives.back());
    }

    const std::string placementsPlace = file.string() + ": placements";
    for (const auto& [container, names] :
         object(sections.if_contains("placements"), placementsPlace)) {
        const std::string place = placementsPlace + '.' + std::string(container);
        if (!names.is_array()) mistake(place, "an array of names of creatives");
        for (const json::value& name : names.get_array()) {
            const auto found = name.is_string() ? named.find(name.get_string()) : named.end();
            if (found == named.end()) {
                mistake(place, "the name of a creative, not " + json::serialize(name));
            }
            catalog.placements[container].push_back(found->second);
        }
    }
    return catalog;
}

}  // namespace

std::optional<Catalog> Catalog::load(const std::filesystem::path& file, std::string& error) {
    try {
        return read(file);
    } catch (const std::exception& exception) {
        error = exception.what();
        return std::nullopt;
    }
}

std::filesystem::path Catalog::defaultFile() {
    std::error_code unreadable;
    return std::filesystem::read_symlink("/proc/self/exe", unreadable).parent_path().parent_path() /
           "share/vexmora-adserver/catalog.json";
}

std::vector<const Creative*> Catalog::candidates(std::string_view container,
                                                 const std::vector<long>& acceptedTypes) const {
    std::vector<const Creative*> suitable;
    if (const auto placement = placements.find(container); placement != placements.end()) {
        for (const Creative& creative : placement->second) {
            if (contains(acceptedTypes, creative.adTypeId)) suitable.push_back(&creative);
        }
        return suitable;
    }
    for (const long type : acceptedTypes) {
        for (const Creative& creative : creatives) {
            if (creative.adTypeId == type) suitable.push_back(&creative);
        }
        if (!suitable.empty()) break;
    }
    return suitable;
}

}  // namespace VexmoraSDK
