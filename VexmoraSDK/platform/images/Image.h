#pragma once

#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform {

/// A decoded picture. Immutable, so that any thread may hold and read it.
class VEXMORA_EXPORT Image {
 public:
    struct Impl;

    /// Decodes a picture. Absent for bytes that are none and for one of more than 16 million
    /// pixels, for which no memory is taken. Any thread.
    static std::shared_ptr<const Image> fromData(const Data& data);

    /// Builds what decoding needs for the life of the process. Exit handlers that are registered
    /// afterwards find it whole, and so do the threads that they stop. Any thread.
    static void prepareDecoding();

    explicit Image(std::unique_ptr<const Impl> impl);
    ~Image();

    /// The natural size in points.
    Size size() const;
    /// The backend's own picture, for presenters.
    const Impl& impl() const { return *impl_; }

 private:
    std::unique_ptr<const Impl> impl_;
};

}  // namespace VexmoraSDK::platform
