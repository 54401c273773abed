#pragma once

#include <string>

namespace VexmoraSDK::Page {

/// Keeps a table that this run has found out.
void setTable(const std::string& name, std::string table);

/// Puts the kept tables into the page, each between the lines "<!-- NAME:begin -->" and
/// "<!-- NAME:end -->". False when the page has no place for one of them.
bool write(const std::string& file);

}  // namespace VexmoraSDK::Page
