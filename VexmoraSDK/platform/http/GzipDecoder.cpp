#include "VexmoraSDK/platform/http/GzipDecoder.h"

#include <array>
#include <new>

namespace VexmoraSDK::platform {

GzipDecoder::GzipDecoder() {
    constexpr int kOnlyGzip = 16;
    if (inflateInit2(&stream_, MAX_WBITS + kOnlyGzip) != Z_OK) throw std::bad_alloc();
}

GzipDecoder::~GzipDecoder() {
    inflateEnd(&stream_);
}

bool GzipDecoder::decode(const std::byte* bytes, std::size_t count, const Sink& sink) {
    std::array<std::byte, 32'768> piece;
    stream_.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes));
    stream_.avail_in = static_cast<uInt>(count);
    do {
        // Such files may follow one another.
        if (isComplete_) inflateReset(&stream_);
        stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream_.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream_, Z_NO_FLUSH);
        // The middle one is said when the last piece has just taken all there was.
        if (result != Z_OK && result != Z_BUF_ERROR && result != Z_STREAM_END) return false;
        isComplete_ = result == Z_STREAM_END;
        if (!sink(piece.data(), piece.size() - stream_.avail_out)) return false;
    } while (stream_.avail_in > 0 || (stream_.avail_out == 0 && !isComplete_));
    return true;
}

}  // namespace VexmoraSDK::platform
