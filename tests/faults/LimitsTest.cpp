#include <gmock/gmock.h>

#include <sstream>

#include "tests/faults/Hosts.h"
#include "tests/faults/Page.h"

namespace VexmoraSDK {
namespace {

struct Row {
    Host host;
    std::string seen;
    /// Of the whole process, in MiB. Some forty are the toolkit's.
    long mostMemory;
};

const Row kRows[] = {
    {{"fault-endless", Kind::banner}, "RequestError", 200},
    {{"fault-picture-endless", Kind::banner}, "nothing", 200},
    {{"fault-gzip-bomb", Kind::banner}, "RequestError", 200},
    {{"fault-picture-gzip-bomb", Kind::banner}, "nothing", 200},
    {{"fault-endless-headers", Kind::banner}, "RequestError", 100},
    {{"fault-early-hints", Kind::banner}, "RequestError", 100},
    {{"fault-hundred-thousand", Kind::banner}, "drawn", 800},
    {{"fault-nesting", Kind::banner}, "ParsingError, NoFill", 100},
    {{"fault-long-title", Kind::native}, "drawn", 400},
    {{"fault-accents", Kind::native}, "drawn", 200},
    {{"bomb-png", Kind::native}, "ImageRequestError", 100},
    {{"bomb-jpeg", Kind::native}, "ImageRequestError", 100},
    {{"bomb-webp", Kind::native}, "ImageRequestError", 100},
    {{"bomb-bmp", Kind::native}, "ImageRequestError", 100},
    {{"bomb-gif", Kind::native}, "ImageRequestError", 100},
    {{"bomb-gif-frame", Kind::native}, "drawn", 100},
};

/// Memory under a sanitizer is not what it is without.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMeasures = false;
#else
constexpr bool kMeasures = true;
#endif

TEST(LimitsTest, HoldWhateverTheServerSends) {
    std::ostringstream table;
    table << "| the server sends | to a view of kind | the host sees | peak of memory, MiB |\n"
             "|---|---|---|---|\n";
    for (const Row& row : kRows) {
        std::string seen;
        long memory = 0;
        const auto isKept = [&](const std::string& told) {
            // The toolkit may have said something, too.
            std::istringstream words(told);
            for (std::string word; word != "host:" && words >> word;) {
            }
            std::getline(words >> std::ws, seen, ':');
            words >> memory;
            return seen == row.seen && (memory <= row.mostMemory || !kMeasures);
        };
        EXPECT_EXIT(showAndTell(row.host), testing::ExitedWithCode(0), testing::Truly(isKept))
            << row.host.container;
        table << "| `" << row.host.container << "` | "
              << (row.host.kind == Kind::banner ? "banner" : "native") << " | " << seen << " | "
              << memory << " |\n";
    }
    Page::setTable("limits", table.str());
}

}  // namespace
}  // namespace VexmoraSDK
