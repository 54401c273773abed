// SPDX-License-Identifier: MIT
#include "tests/faults/Outcomes.h"

#include <array>
#include <fstream>
#include <sstream>

#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {
namespace {

std::vector<std::string> cellsOf(const std::string& row) {
    constexpr auto kPadding = " `";
    std::vector<std::string> cells;
    std::istringstream text(row.substr(1));
    for (std::string cell; std::getline(text, cell, '|');) {
        const auto begin = cell.find_first_not_of(kPadding);
        cells.push_back(cell.substr(begin, cell.find_last_not_of(kPadding) + 1 - begin));
    }
    return cells;
}

}  // namespace

std::vector<std::vector<std::string>> rowsOf(const std::string& table) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream page(VEXMORA_OUTCOMES);
    std::string line;
    while (std::getline(page, line) && line != "<!-- " + table + ":begin -->") {
    }
    while (std::getline(page, line) && line != "<!-- " + table + ":end -->") {
        if (line.starts_with("| `")) rows.push_back(cellsOf(line));
    }
    return rows;
}

std::vector<Promise> promises() {
    std::vector<Promise> promises;
    for (const auto& row : rowsOf("outcomes")) {
        for (std::size_t i = 1; i < row.size(); ++i) {
            constexpr std::array kKinds = {VexmoraViewType::banner, VexmoraViewType::native,
                                           VexmoraViewType::interstitial};
            const auto* const prefix = i > kKinds.size() ? "fault-picture-" : "fault-";
            promises.push_back({prefix + row[0], kKinds[(i - 1) % kKinds.size()], row[i]});
        }
    }
    return promises;
}

bool hasItsAdAlone(const VexmoraView& view) {
    return dynamic_cast<const InternalAdView&>(view).ad().use_count() == 1;
}

}  // namespace VexmoraSDK
