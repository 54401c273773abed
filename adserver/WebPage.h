// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// The files of the server's web page, from adserver/web/.
namespace VexmoraSDK::WebPage {

extern const std::string_view kHtml;
extern const std::string_view kStyle;
extern const std::string_view kScript;
extern const std::string_view kIcon;

}  // namespace VexmoraSDK::WebPage
