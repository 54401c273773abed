#include "tests/faults/Outcomes.h"

#include <fstream>
#include <sstream>

namespace VexmoraSDK {
namespace {

std::vector<std::string> cellsOf(const std::string& row) {
    constexpr auto kAround = " `";
    std::vector<std::string> cells;
    std::istringstream text(row.substr(1));
    for (std::string cell; std::getline(text, cell, '|');) {
        const auto begin = cell.find_first_not_of(kAround);
        cells.push_back(cell.substr(begin, cell.find_last_not_of(kAround) + 1 - begin));
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
        promises.push_back({"fault-" + row.at(0), row.at(1), row.at(2), row.at(3)});
        if (row.size() == 4) continue;
        promises.push_back({"fault-picture-" + row[0], row.at(4), row.at(5), row.at(6)});
    }
    return promises;
}

}  // namespace VexmoraSDK
