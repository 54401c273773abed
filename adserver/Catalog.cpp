// SPDX-License-Identifier: MIT
#include "adserver/Catalog.h"

#include <algorithm>
#include <array>
#include <boost/url/parse.hpp>
#include <cctype>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <stdexcept>

#include "adserver/JsonWithLines.h"
#include "adserver/PictureSize.h"

namespace VexmoraSDK {
namespace {

constexpr auto kAdTypes =
    std::to_array<std::int64_t>({Creative::kNativeAdType, 14, 15, 77, 79, 83, 84});
constexpr std::array kPictureExtensions{".png", ".jpg", ".jpeg", ".webp"};

/// The sizes of the ad types with a fixed size, in points.
const std::map<std::int64_t, PictureSize> kSizes = {
    {14, {300, 250}}, {15, {728, 90}}, {77, {320, 60}}, {83, {320, 100}}, {84, {468, 60}}};

template <typename Range, typename T>
bool contains(const Range& range, const T& value) {
    return std::find(std::begin(range), std::end(range), value) != std::end(range);
}

/// Whether the name needs no percent-encoding in a URL.
bool isPlain(const std::string& name) {
    return std::all_of(name.begin(), name.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '-' || c == '_' || c == '.';
    });
}

/// Whether a text is a URL with a scheme, or a path on the server.
bool isUrlOrPath(const std::string& address) {
    const auto end = std::find_if_not(address.begin(), address.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '+' || c == '-' || c == '.';
    });
    return address.starts_with('/') ||
           (end != address.end() && end != address.begin() && *end == ':');
}

bool isValidUrl(const std::string& address) {
    return boost::urls::parse_uri_reference(address).has_value();
}

std::string description(const PictureSize& size) {
    return std::to_string(size.width) + " × " + std::to_string(size.height);
}

/// Reads a catalogue and collects its mistakes.
class Reader {
 public:
    explicit Reader(std::filesystem::path file) : file_(std::move(file)) {}

    Catalog read() {
        std::ifstream stream(file_, std::ios::binary);
        std::error_code unknown;
        if (!stream || std::filesystem::is_directory(file_, unknown)) {
            complain("", "expected a readable file");
            return {};
        }
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        try {
            readSections(JsonWithLines::parse(text));
        } catch (const JsonWithLines::Error& error) {
            complain(':' + std::to_string(error.line), error.what());
        }
        return std::move(catalog_);
    }

    /// All mistakes, one on each line; empty when there are none.
    const std::string& mistakes() const { return mistakes_; }

 private:
    using Kind = JsonWithLines::Kind;

    void complain(const std::string& line, const std::string& what) {
        if (!mistakes_.empty()) mistakes_ += '\n';
        mistakes_ += file_.string() + line + ": " + what;
    }

    void complain(const JsonWithLines& value, const std::string& place, const std::string& what) {
        complain(':' + std::to_string(value.line), place.empty() ? what : place + ": " + what);
    }

    void warn(const JsonWithLines& value, const std::string& place, const std::string& what) {
        catalog_.warnings.push_back(file_.string() + ':' + std::to_string(value.line) + ": " +
                                    place + ": " + what);
    }

    bool expect(bool fulfilled, const JsonWithLines& value, const std::string& place,
                const std::string& what) {
        if (!fulfilled) complain(value, place, "expected " + what + ", not " + value.description());
        return fulfilled;
    }

    /// Complains unless `value` is an object with unique names, all of them in `known` if that is
    /// not empty. Returns whether it is an object.
    bool expectObject(const JsonWithLines& value, const std::string& place,
                      std::initializer_list<std::string_view> known = {}) {
        if (!expect(value.kind == Kind::object, value, place, "an object")) return false;
        std::string allNames;
        for (const std::string_view name : known)
            allNames.append(allNames.empty() ? "" : ", ").append(name);
        for (const JsonWithLines& member : value.values) {
            const std::string inner = within(place, member.name);
            const JsonWithLines* const first = value.member(member.name);
            if (first != &member) {
                complain(member, inner,
                         "expected once, but line " + std::to_string(first->line) + " has it too");
            } else if (known.size() > 0 && !contains(known, member.name)) {
                complain(member, inner, "unknown; expected one of " + allNames);
            }
        }
        return true;
    }

    const JsonWithLines* need(const JsonWithLines& parent, const std::string& place,
                              std::string_view name, const std::string& what) {
        const JsonWithLines* const value = parent.member(name);
        if (!value) complain(parent, within(place, name), "expected " + what + ", found nothing");
        return value;
    }

    std::string text(const JsonWithLines& parent, const std::string& place, std::string_view name,
                     const std::string& what = "a text") {
        const JsonWithLines* const value = need(parent, place, name, what);
        const bool given = value && expect(value->kind == Kind::string && !value->text.empty(),
                                           *value, within(place, name), what);
        return given ? value->text : "";
    }

    void readSections(const JsonWithLines& root) {
        if (!expectObject(root, "", {"creatives", "placements"})) return;
        const JsonWithLines* const creatives = need(root, "", "creatives", "an object");
        const JsonWithLines* const placements = need(root, "", "placements", "an object");
        if (creatives && expectObject(*creatives, "creatives")) {
            for (const JsonWithLines& value : creatives->values)
                readCreative(value, within("creatives", value.name));
        }
        if (placements && expectObject(*placements, "placements")) {
            for (const JsonWithLines& value : placements->values)
                readPlacement(value, within("placements", value.name));
        }
    }

    void readCreative(const JsonWithLines& value, const std::string& place) {
        Creative& creative = catalog_.creatives.emplace_back();
        creative.name = value.name;
        if (!expectObject(
                value, place,
                {"adTypeId", "clickUrl", "picture", "title", "description", "displayName"})) {
            return;
        }
        creative.adTypeId = adType(value, place);
        creative.clickUrl = clickUrl(value, place);
        creative.picture = picture(value, place);
        if (const JsonWithLines* const picture = value.member("picture"))
            readScale(creative, *picture, within(place, "picture"));
        if (creative.adTypeId == Creative::kNativeAdType) {
            creative.title = text(value, place, "title");
            creative.description = text(value, place, "description");
            creative.displayName = text(value, place, "displayName");
            return;
        }
        for (const char* name : {"title", "description", "displayName"}) {
            const JsonWithLines* const extra = value.member(name);
            if (extra) complain(*extra, within(place, name), "expected of native ads only");
        }
    }

    std::int64_t adType(const JsonWithLines& parent, const std::string& place) {
        const std::string what = "one of 1, 14, 15, 77, 79, 83, 84";
        const JsonWithLines* const value = need(parent, place, "adTypeId", what);
        if (!value) return 0;
        expect(value->kind == Kind::integer && contains(kAdTypes, value->integer), *value,
               within(place, "adTypeId"), what);
        return value->integer;
    }

    std::string clickUrl(const JsonWithLines& parent, const std::string& place) {
        const std::string what = "an address, or a path that begins with \"/\"";
        std::string address = text(parent, place, "clickUrl", what);
        if (!address.empty()) {
            const JsonWithLines& value = *parent.member("clickUrl");
            const std::string here = within(place, "clickUrl");
            expect(isUrlOrPath(address), value, here, what);
            if (!isValidUrl(address))
                warn(value, here, "stops the app: not a valid URL: " + value.description());
        }
        return address;
    }

    std::filesystem::path picture(const JsonWithLines& parent, const std::string& place) {
        const std::filesystem::path folder = file_.parent_path() / "pictures";
        const std::filesystem::path name = text(parent, place, "picture", "a file name");
        if (name.empty()) return {};
        const JsonWithLines& value = *parent.member("picture");
        const std::string here = within(place, "picture");
        if (expect(isPlain(name.native()) && contains(kPictureExtensions, name.extension()), value,
                   here,
                   "the name of a .png, .jpg, .jpeg or .webp file, of letters, digits, '-', '_' "
                   "and '.' only")) {
            std::error_code unknown;
            expect(std::filesystem::is_regular_file(folder / name, unknown), value, here,
                   "a file in " + folder.string());
        }
        return folder / name;
    }

    void readScale(Creative& creative, const JsonWithLines& value, const std::string& place) {
        const std::optional<PictureSize> pixels = PictureSize::of(creative.picture);
        if (!pixels) return warn(value, place, "stops the app: not a PNG, JPEG or WebP picture");
        const auto size = kSizes.find(creative.adTypeId);
        if (size == kSizes.end()) return;
        const auto [width, height] = size->second;
        creative.scale = std::max(1, pixels->width / width);
        if (*pixels == PictureSize{creative.scale * width, creative.scale * height}) return;
        warn(value, place,
             "looks wrong: expected " + description(size->second) +
                 " pixels or a whole multiple of it, not " + description(*pixels));
    }

    void readPlacement(const JsonWithLines& value, const std::string& place) {
        std::vector<Creative>& placement = catalog_.placements[value.name];
        if (!isValidUrl("/ads?container=" + value.name))
            warn(value, place, "stops the app that asks for it: not valid in a URL");
        expect(!value.name.starts_with("fault-"), value, place,
               "a name that does not begin with \"fault-\"");
        if (!expect(value.kind == Kind::array, value, place, "an array of names of creatives"))
            return;
        for (const JsonWithLines& name : value.values) {
            const auto found =
                std::find_if(catalog_.creatives.begin(), catalog_.creatives.end(),
                             [&](const Creative& creative) { return creative.name == name.text; });
            if (expect(name.kind == Kind::string && found != catalog_.creatives.end(), name, place,
                       "the name of a creative")) {
                placement.push_back(*found);
            }
        }
    }

    static std::string within(const std::string& place, std::string_view name) {
        return std::string(place).append(place.empty() ? "" : ".").append(name);
    }

    const std::filesystem::path file_;
    Catalog catalog_;
    std::string mistakes_;
};

}  // namespace

Catalog Catalog::load(const std::filesystem::path& file) {
    Reader reader(file);
    Catalog catalog = reader.read();
    if (!reader.mistakes().empty()) throw std::runtime_error(reader.mistakes());
    return catalog;
}

std::filesystem::path Catalog::defaultFile() {
    std::error_code unreadable;
    return std::filesystem::read_symlink("/proc/self/exe", unreadable).parent_path().parent_path() /
           "share/vexmora-adserver/catalog.json";
}

std::vector<const Creative*> Catalog::candidates(
    std::string_view container, const std::vector<std::int64_t>& acceptedTypes) const {
    std::vector<const Creative*> suitable;
    if (const auto placement = placements.find(container); placement != placements.end()) {
        for (const Creative& creative : placement->second) {
            if (contains(acceptedTypes, creative.adTypeId)) suitable.push_back(&creative);
        }
        return suitable;
    }
    for (const std::int64_t type : acceptedTypes) {
        for (const Creative& creative : creatives) {
            if (creative.adTypeId == type && creative.scale == 1) suitable.push_back(&creative);
        }
        if (!suitable.empty()) break;
    }
    return suitable;
}

}  // namespace VexmoraSDK
