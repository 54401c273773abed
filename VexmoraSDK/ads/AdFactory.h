// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/errors/VexmoraError.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/utils/Utils.h"

namespace VexmoraSDK {

/// Fetches ads and builds their models. The ad server is trusted: a record that makes no model is a
/// fatal stop, not an error.
class AdFactory {
 public:
    /// Builds the model of one record and starts to load its picture. A missing member, an unknown
    /// "adTypeId", an invalid URL or a model that is no `T` is a fatal stop.
    template <class T>
    static std::shared_ptr<T> createAd(const AdRecord& record) {
        return platform::forcedConversion<T>(modelFrom(record));
    }

    /// Fetches a response. Returns at once; `completion` gets its body on the main thread.
    /// `errorCallback` runs on a delivery thread with a `RequestError`.
    static void fetchResponse(const platform::Url& url,
                              std::function<void(const platform::Data& body)> completion,
                              ErrorCallback errorCallback);

    /// Fetches a native ad. Returns at once; `completion` runs on the main thread. `errorCallback`
    /// runs on a delivery thread with a `RequestError`, or on the main thread with a `ParsingError`
    /// and then once more with `NoFill`.
    static void fetchAndCreateAd(const platform::Url& url,
                                 std::function<void(std::shared_ptr<Native>)> completion,
                                 ErrorCallback errorCallback);

    /// The same for a banner ad.
    static void fetchAndCreateBanner(const platform::Url& url,
                                     std::function<void(std::shared_ptr<Banner>)> completion,
                                     ErrorCallback errorCallback);

 private:
    static std::shared_ptr<ImageAd> modelFrom(const AdRecord& record);
};

}  // namespace VexmoraSDK
