// SPDX-License-Identifier: MIT
#include "VexmoraSDK/utils/Utils.h"

#include <utility>

// Reading a response and building its models need each other. Nothing else in this folder includes
// `ads/`.
#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/Json.h"

namespace VexmoraSDK {
namespace {

AdRecord recordFrom(const platform::Dictionary& ad) {
    AdRecord record;
    for (const auto& [name, value] : ad) {
        if (const auto number = value.integerValue()) {
            record.emplace_hint(record.end(), name, std::to_string(*number));
        } else if (const auto* text = value.as<std::string>()) {
            record.emplace_hint(record.end(), name, *text);
        }
    }
    return record;
}

/// Returns `value` as a `T`. Another type is a fatal stop.
template <class T>
const T& forced(const platform::Value& value, std::string_view typeName) {
    const T* converted = value.as<T>();
    if (!converted) platform::fatalConversion(value.typeName(), typeName);
    return *converted;
}

std::vector<AdRecord> recordsFrom(const platform::Value& json) {
    std::vector<AdRecord> records;
    for (const auto& ad : forced<platform::Array>(json, "array")) {
        records.push_back(recordFrom(forced<platform::Dictionary>(ad, "dictionary")));
    }
    return records;
}

}  // namespace

void Utils::getDataFromUrl(const platform::Url& url,
                           std::function<void(platform::SharedData)> completion,
                           ErrorCallback errorCallback, platform::TaskPriority priority) {
    auto task = platform::UrlSession::shared().dataTask(
        url,
        [completion = std::move(completion), errorCallback = std::move(errorCallback)](
            platform::SharedData body, std::optional<platform::UrlResponse>,
            std::optional<platform::Error> error) {
            if (error) {
                errorCallback(VexmoraError(VexmoraErrorCodes::RequestError, error->userInfo()));
            } else {
                completion(std::move(body));
            }
        },
        priority);
    task.resume();
}

std::vector<AdRecord> Utils::parseAdJson(const platform::Data& data) {
    const auto answer = platform::Json::read(data);
    const auto* json = std::get_if<platform::Value>(&answer);
    return json ? recordsFrom(*json) : std::vector<AdRecord>();
}

template <class T>
std::shared_ptr<T> Utils::getAdFromJson(const platform::Data& data,
                                        const ErrorCallback& errorCallback) {
    const auto answer = platform::Json::read(data);
    if (const auto* error = std::get_if<platform::Error>(&answer)) {
        errorCallback(VexmoraError(VexmoraErrorCodes::ParsingError, error->userInfo()));
        return nullptr;
    }
    const auto records = recordsFrom(std::get<platform::Value>(answer));
    if (records.empty()) {
        errorCallback(VexmoraError(VexmoraErrorCodes::ParsingError, std::nullopt));
        return nullptr;
    }
    std::vector<std::shared_ptr<T>> ads;
    ads.reserve(records.size());
    for (const auto& record : records)
        ads.push_back(AdFactory::createAd<T>(record));
    return ads.front();
}

template std::shared_ptr<Banner> Utils::getAdFromJson(const platform::Data&, const ErrorCallback&);
template std::shared_ptr<Native> Utils::getAdFromJson(const platform::Data&, const ErrorCallback&);

}  // namespace VexmoraSDK
