#include "tests/soak/Outcomes.h"

#include <fstream>
#include <map>
#include <sstream>

namespace VexmoraSDK {
namespace {

Outcome outcome(const std::string& cell) {
    static const std::map<std::string, Outcome> words = {
        {"drawn", "D"},        {"nothing", ""}, {"stop", kStop},       {"ParsingError", "2"},
        {"RequestError", "3"}, {"NoFill", "5"}, {"UnknownError", "1"}, {"ImageRequestError", "7"}};
    Outcome heard;
    std::istringstream text(cell);
    for (std::string word; text >> word;) {
        if (word.back() == ',') word.pop_back();
        heard += words.at(word);
    }
    return heard;
}

std::vector<std::string> cells(const std::string& row) {
    std::vector<std::string> cells;
    std::istringstream text(row.substr(1));
    for (std::string cell; std::getline(text, cell, '|');)
        cells.push_back(cell);
    return cells;
}

}  // namespace

std::vector<Container> outcomesIn(const std::string& page) {
    std::ifstream text(page);
    std::vector<Container> containers;
    bool inTables = false;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("<!-- outcomes:")) inTables = line == "<!-- outcomes:begin -->";
        if (!inTables || !line.starts_with("| `")) continue;
        const auto row = cells(line);
        const auto fault = row[0].substr(2, row[0].size() - 4);
        containers.push_back(
            {"fault-" + fault, {outcome(row[1]), outcome(row[2]), outcome(row[3])}});
        if (row.size() == 7) {
            containers.push_back(
                {"fault-picture-" + fault, {outcome(row[4]), outcome(row[5]), outcome(row[6])}});
        }
    }
    return containers;
}

}  // namespace VexmoraSDK
