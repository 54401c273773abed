#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

constexpr Outcomes kDrawn = {"drawn", "drawn", "drawn"};
constexpr Outcomes kStop = {"stop", "stop", "stop"};
constexpr Outcomes kRequestError = {"RequestError", "RequestError", "RequestError"};
constexpr Outcomes kNoAd = {"ParsingError, NoFill", "ParsingError, NoFill", "NoFill"};
constexpr Outcomes kNothing = {"nothing", "nothing", "nothing"};
constexpr Outcomes kNoPicture = {"stop", "ImageRequestError", "stop"};

constexpr Promise good(std::string_view fault) {
    return {fault, kDrawn, kDrawn, false};
}

/// An answer of HTTP without an ad or a picture in it.
constexpr Promise useless(std::string_view fault) {
    return {fault, kNoAd, kNoPicture, false};
}

/// An error of the transport.
constexpr Promise failed(std::string_view fault) {
    return {fault, kRequestError, kNothing, false};
}

/// The same, once a limit of time is reached.
constexpr Promise late(std::string_view fault) {
    return {fault, kRequestError, kNothing, true};
}

constexpr Promise kPromises[] = {
    useless("status-404"),
    useless("status-500"),
    useless("status-204"),
    useless("status-304"),
    useless("status-206"),
    useless("empty-body"),
    useless("garbage"),
    good("slow"),
    good("gzip"),
    good("redirect"),
    good("redirect-chain"),
    good("until-closed"),
    failed("refused"),
    failed("unresolved"),
    late("stall-connect"),
    late("stall-handshake"),
    failed("bad-certificate"),
    failed("nothing"),
    failed("cut-status"),
    failed("cut-headers"),
    failed("cut-short"),
    failed("cut-chunked"),
    failed("cut-gzip"),
    failed("reset"),
    failed("reset-body"),
    late("stall"),
    late("stall-status"),
    late("stall-headers"),
    late("stall-body"),
    late("dribble"),
    failed("early-hints"),
    failed("long-header"),
    failed("many-headers"),
    failed("endless-headers"),
    failed("endless"),
    failed("gzip-bomb"),
    failed("redirect-far"),
    failed("redirect-loop"),
    failed("not-http"),
    failed("version"),
    useless("length-short"),
    good("length-twice"),
    failed("lengths-differ"),
    failed("length-negative"),
    failed("length-words"),
    failed("length-overflow"),
    failed("chunk-words"),
    failed("chunk-negative"),
    failed("chunk-overflow"),
    failed("chunk-short"),
    failed("gzip-lie"),
    failed("encoding-unknown"),
    failed("redirect-file"),
    failed("redirect-words"),

    {"empty-array", kNoAd, {}, false},
    {"nesting", kNoAd, {}, false},
    {"three", kDrawn, {}, false},
    {"native", {"stop", "drawn", "stop"}, {}, false},
    {"object", kStop, {}, false},
    {"missing-click", kStop, {}, false},
    {"bad-type", kStop, {}, false},
};

}  // namespace

std::span<const Promise> promises() {
    return kPromises;
}

}  // namespace VexmoraSDK
