#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace VexmoraSDK {

/// One ad that the server can hand out.
struct Creative {
    static constexpr long native = 1;  ///< The ad type whose ads have texts.

    long adTypeId = 0;
    std::string clickUrl;           ///< Absolute, or a path on the server itself ("/landing/tea").
    std::filesystem::path picture;  ///< PNG, JPEG or WebP. Pictures differ in their file names.
    std::string title{};            ///< Native ads only, as are the two below.
    std::string description{};
    std::string displayName{};
    std::string name{};  ///< In the catalogue; the server makes one up where there is none.
};

/// What the server has to offer.
struct Catalog {
    /// Everything, in order of preference.
    std::vector<Creative> creatives;
    /// The creatives of those containers that have a choice of their own.
    std::map<std::string, std::vector<Creative>, std::less<>> placements;

    /// Reads a catalogue; adserver/README.md describes the format. Absent when the file cannot be
    /// used; `error` then names each mistake on a line: file, line, place, what was expected.
    static std::optional<Catalog> load(const std::filesystem::path& file, std::string& error);

    /// The catalogue that comes with the server:
    /// ../share/vexmora-adserver/catalog.json, seen from the running program's folder.
    static std::filesystem::path defaultFile();

    /// The ads that suit a request, best first: those of the placement whose type is accepted;
    /// where the container is no placement, those of the first accepted type that there is. They
    /// live as long as the catalogue stays unchanged.
    std::vector<const Creative*> candidates(std::string_view container,
                                            const std::vector<long>& acceptedTypes) const;
};

}  // namespace VexmoraSDK
