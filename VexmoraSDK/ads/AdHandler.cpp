// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/AdHandler.h"

#include "VexmoraSDK/ads/ImageAd.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"
#include "VexmoraSDK/utils/Utils.h"

namespace VexmoraSDK {

void AdHandler::setImage(std::shared_ptr<ImageAd> ad, const platform::Url& imageUrl) {
    Utils::getDataFromUrl(
        imageUrl,
        [ad = std::move(ad)](const platform::SharedData& bytes) {
            platform::unwrap(bytes, "body of a picture");
            ad->setImage(platform::Image::fromData(bytes));
            platform::NotificationCenter::defaultCenter().post(
                std::string(Utils::adReadyNotificationName), ad);
        },
        [](const VexmoraError&) {}, platform::TaskPriority::low);
}

}  // namespace VexmoraSDK
