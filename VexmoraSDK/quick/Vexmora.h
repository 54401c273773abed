// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QObject>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/errors/VexmoraErrorCodes.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/types/VexmoraViewType.h"

/// The library's enumerations in QML: `Vexmora.AdType.Banner`, `Vexmora.ErrorCode.NoFill`.
namespace VexmoraSDK::Vexmora {

Q_NAMESPACE_EXPORT(VEXMORA_EXPORT)
QML_NAMED_ELEMENT(Vexmora)
Q_CLASSINFO("RegisterEnumClassesUnscoped", "false")

enum class AdType : int {
    Native = rawValue(VexmoraAdType::native),
    MediumRectangle = rawValue(VexmoraAdType::mediumRectangle),
    Leaderboard = rawValue(VexmoraAdType::leaderboard),
    Banner = rawValue(VexmoraAdType::banner),
    Slideshow = rawValue(VexmoraAdType::slideshow),
    MediumBanner = rawValue(VexmoraAdType::mediumBanner),
    FullBanner = rawValue(VexmoraAdType::fullBanner),
};
Q_ENUM_NS(AdType)

enum class ViewType : int {
    Banner = rawValue(VexmoraViewType::banner),
    Interstitial = rawValue(VexmoraViewType::interstitial),
    Native = rawValue(VexmoraViewType::native),
};
Q_ENUM_NS(ViewType)

/// The state of a placement's ad.
enum class Status : int {
    Null,     ///< no ad is requested
    Loading,  ///< the first ad has not arrived yet
    Ready,    ///< an ad is drawn; unchanged while the next one loads, and if that fails
    Error,    ///< no ad arrived
};
Q_ENUM_NS(Status)

/// How an ad fills its item.
enum class FillMode : int {
    AsIs = static_cast<int>(VexmoraSDK::FillMode::asIs),  ///< in its own size, at the top left;
                                                          ///< where mirrored, at the top right
    Fit = static_cast<int>(VexmoraSDK::FillMode::fit),    ///< as large as fits, in the middle
};
Q_ENUM_NS(FillMode)

/// `VexmoraErrorCodes` explains each code.
enum class ErrorCode : int {
    UnknownError = static_cast<int>(VexmoraErrorCodes::UnknownError),
    ParsingError = static_cast<int>(VexmoraErrorCodes::ParsingError),
    RequestError = static_cast<int>(VexmoraErrorCodes::RequestError),
    InvalidAdTypeError = static_cast<int>(VexmoraErrorCodes::InvalidAdTypeError),
    NoFill = static_cast<int>(VexmoraErrorCodes::NoFill),
    InvalidViewTypeError = static_cast<int>(VexmoraErrorCodes::InvalidViewTypeError),
    ImageRequestError = static_cast<int>(VexmoraErrorCodes::ImageRequestError),
};
Q_ENUM_NS(ErrorCode)

}  // namespace VexmoraSDK::Vexmora
