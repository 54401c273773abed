// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/Gzip.h"

#include <zlib.h>

#include <array>
#include <memory>
#include <new>

namespace VexmoraSDK::platform {

GunzipResult gunzip(const Data& file, std::size_t maxBytes, Data& decoded) {
    z_stream stream{};
    constexpr int kOnlyGzip = 16;
    if (inflateInit2(&stream, MAX_WBITS + kOnlyGzip) != Z_OK) throw std::bad_alloc();
    const std::unique_ptr<z_stream, int (*)(z_stream*)> ending(&stream, inflateEnd);

    std::array<std::byte, 32'768> piece;
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(file.data()));
    stream.avail_in = static_cast<uInt>(file.size());
    while (true) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result == Z_BUF_ERROR) return GunzipResult::truncated;  // no input is left
        if (result == Z_MEM_ERROR) throw std::bad_alloc();
        if (result != Z_OK && result != Z_STREAM_END) return GunzipResult::damaged;
        const std::size_t count = piece.size() - stream.avail_out;
        if (count > maxBytes - decoded.size()) return GunzipResult::tooLarge;
        decoded.insert(decoded.end(), piece.data(), piece.data() + count);
        if (result != Z_STREAM_END) continue;
        if (stream.avail_in == 0) return GunzipResult::whole;
        inflateReset(&stream);
    }
}

}  // namespace VexmoraSDK::platform
