// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/errors/VexmoraError.h"
#include "VexmoraSDK/platform/foundation/Color.h"
#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK {

/// One ad of the server's response: its numbers and strings, all as text, under their member names.
using AdRecord = std::map<std::string, std::string, std::less<>>;

/// Fetches and parses ads, and holds the views' constants.
class Utils {
 public:
    /// A font by name, and its text colour.
    struct Font {
        std::string_view family;
        double size;  ///< in points
        platform::Color color;
    };

    /// Gets the body at `url` with one GET. Calls exactly one of the callbacks, once, on a
    /// background thread, after it has returned: `completion` with the body for any HTTP response,
    /// whatever its status, `errorCallback` with a `RequestError` when the transfer failed.
    static void getDataFromUrl(const platform::Url& url,
                               std::function<void(platform::SharedData)> completion,
                               ErrorCallback errorCallback,
                               platform::TaskPriority priority = platform::TaskPriority::normal);

    /// The records of a response; none when it is not JSON. JSON that is no array of objects is a
    /// fatal stop.
    static std::vector<AdRecord> parseAdJson(const platform::Data& data);

    /// Builds a model from every record of a response, which starts the loading of every picture,
    /// and gives the first; absent, after a `ParsingError` through `errorCallback`, when the
    /// response is not JSON or holds no ad. `T` is `Banner` or `Native`. A record that makes no `T`
    /// is a fatal stop. Main thread.
    template <class T>
    static std::shared_ptr<T> getAdFromJson(const platform::Data& data,
                                            const ErrorCallback& errorCallback);

    static constexpr std::string_view adReadyNotificationName = "adReady";
    static constexpr std::string_view adReadyCallbackSelector = "adReadyCallback:";
    static constexpr std::string_view handleTapCallbackSelector = "handleTap:";

    /// The y coordinate of a native ad's first text, and the spacing below each text, in points.
    static constexpr double nativeStartY = 0.0;
    static constexpr double nativeYElementPadding = -15.0;

    static constexpr Font nativeTitleFont{"Helvetica-Bold", 13.0, platform::Color::black()};
    static constexpr Font nativeDescriptionFont{"Helvetica", 12.0, platform::Color::black()};
    static constexpr Font nativeDisplayNameFont{"Helvetica", 12.0, platform::Color::gray()};
};

}  // namespace VexmoraSDK
