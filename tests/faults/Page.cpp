#include "tests/faults/Page.h"

#include <fstream>
#include <iterator>
#include <map>

namespace VexmoraSDK {
namespace {

std::map<std::string, std::string> tables;

}  // namespace

void Page::setTable(const std::string& name, std::string table) {
    tables[name] = std::move(table);
}

bool Page::write(const std::string& file) {
    std::ifstream old(file);
    std::string page{std::istreambuf_iterator<char>(old), {}};
    for (const auto& [name, table] : tables) {
        const std::string begin = "<!-- " + name + ":begin -->\n";
        const auto from = page.find(begin);
        const auto to = page.find("<!-- " + name + ":end -->", from);
        if (from == std::string::npos || to == std::string::npos) return false;
        page.replace(from + begin.size(), to - from - begin.size(), table);
    }
    return static_cast<bool>(std::ofstream(file) << page);
}

}  // namespace VexmoraSDK
