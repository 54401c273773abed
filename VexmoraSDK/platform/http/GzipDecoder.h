#pragma once

#include <zlib.h>

#include <cstddef>
#include <functional>

namespace VexmoraSDK::platform {

/// Undoes the compression of a body while it arrives. libcurl could, too, but takes a compressed
/// body that was cut off for a whole one.
class GzipDecoder {
 public:
    /// Gets decoded bytes, in order; false when it wants no more.
    using Sink = std::function<bool(const std::byte* bytes, std::size_t count)>;

    /// Throws `std::bad_alloc`.
    GzipDecoder();
    ~GzipDecoder();
    GzipDecoder(const GzipDecoder&) = delete;
    GzipDecoder& operator=(const GzipDecoder&) = delete;

    /// False when these are not the next bytes of a gzip file, or the sink wants no more.
    bool decode(const std::byte* bytes, std::size_t count, const Sink& sink);

    /// Whether the bytes so far are a whole file.
    bool isComplete() const { return isComplete_; }

 private:
    z_stream stream_{};
    bool isComplete_ = false;
};

}  // namespace VexmoraSDK::platform
