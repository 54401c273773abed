#pragma once

#include <string_view>

/// The server's own page, as it lies in adserver/web/.
namespace VexmoraSDK::WebPage {

extern const std::string_view html;
extern const std::string_view style;
extern const std::string_view script;
extern const std::string_view icon;

}  // namespace VexmoraSDK::WebPage
