// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace VexmoraSDK {

/// One ad that the server can hand out.
struct Creative {
    static constexpr std::int64_t kNativeAdType = 1;  ///< The only ad type whose ads have texts.

    std::int64_t adTypeId = 0;
    std::string clickUrl;           ///< An absolute URL, or a path on this server ("/landing/tea").
    std::filesystem::path picture;  ///< A PNG, JPEG or WebP file; file names are unique.
    std::string title{};            ///< This and the next two are for native ads only.
    std::string description{};
    std::string displayName{};
    int scale = 1;       ///< The picture's pixels for each point of the ad's size, or 1.
    std::string name{};  ///< Its name in the catalogue; if empty, the server uses the picture's.
};

/// All ads of a server.
struct Catalog {
    /// All ads. Of several that suit a request the first is preferred.
    std::vector<Creative> creatives;
    /// The ads of those containers that have a list of their own.
    std::map<std::string, std::vector<Creative>, std::less<>> placements;

    /// The warnings: members that would stop an app or look wrong in it. One line each: file, line,
    /// member, mistake.
    std::vector<std::string> warnings{};

    /// Reads a catalogue; adserver/README.md describes the format. Throws std::runtime_error when
    /// the file cannot be used, with a line for each mistake: file, line, member, expectation.
    static Catalog load(const std::filesystem::path& file = defaultFile());

    /// The catalogue that is shipped with the server: ../share/vexmora-adserver/catalog.json,
    /// relative to the folder of the running program.
    static std::filesystem::path defaultFile();

    /// The ads that suit a request, best first. If the container is a placement, these are its ads
    /// of the accepted types; otherwise all ads of the first accepted type that the catalogue has,
    /// except for those of a scale that is not 1. The pointers are valid as long as the catalogue
    /// stays unchanged.
    std::vector<const Creative*> candidates(std::string_view container,
                                            const std::vector<std::int64_t>& acceptedTypes) const;
};

}  // namespace VexmoraSDK
