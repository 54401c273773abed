#include "adserver/Faults.h"

#include "adserver/HttpServer.h"

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

// What the answer says.

json::value oneAd(json::array ads) {
    return json::array{ads.front()};
}

json::value threeAds(json::array ads) {
    while (ads.size() > 3)
        ads.pop_back();
    return ads;
}

json::value noAds(json::array) {
    return json::array{};
}

json::value bareAd(json::array ads) {
    return ads.front();
}

json::value adWithoutClickUrl(json::array ads) {
    ads.front().as_object().erase("clickUrl");
    return oneAd(ads);
}

json::value adWith(json::array ads, const json::object& members) {
    for (const auto& member : members)
        ads.front().as_object()[member.key()] = member.value();
    return oneAd(ads);
}

json::value adOfNoType(json::array ads) {
    return adWith(ads, {{"adTypeId", 2}});
}

json::value nativeAd(json::array ads) {
    return adWith(ads, {{"adTypeId", 1},
                        {"title", "A native ad"},
                        {"description", "Nobody asked for it, but here it is."},
                        {"displayName", "Uninvited Guests"}});
}

json::value refusedPicture(json::array ads) {
    return adWith(ads, {{"bannerUrl", "http://127.0.0.1:1/refused.png"}});
}

json::value unresolvedPicture(json::array ads) {
    return adWith(ads, {{"bannerUrl", "http://pictures.invalid/unresolved.png"}});
}

// How it travels.

std::string half(const Exchange& exchange) {
    return exchange.body.substr(0, exchange.body.size() / 2);
}

void whole(Exchange& exchange) {
    exchange.response.set_content(exchange.body, exchange.contentType);
}

void compressed(Exchange& exchange) {
    whole(exchange);
}

void notFound(Exchange& exchange) {
    exchange.response.status = 404;
}

void serverError(Exchange& exchange) {
    exchange.response.status = 500;
}

void noContent(Exchange& exchange) {
    exchange.response.status = 204;
}

void empty(Exchange& exchange) {
    exchange.body.clear();
    whole(exchange);
}

void garbage(Exchange& exchange) {
    exchange.body = "Out to lunch. Back at two.";
    whole(exchange);
}

void late(Exchange& exchange) {
    HttpServer::connection().wait(std::chrono::milliseconds(300));
    whole(exchange);
}

void never(Exchange&) {
    HttpServer::connection().wait();
}

void halfThenNothing(Exchange& exchange) {
    exchange.response.set_content_provider(
        exchange.body.size(), exchange.contentType,
        [part = half(exchange)](std::size_t, std::size_t, httplib::DataSink& sink) {
            sink.write(part.data(), part.size());
            HttpServer::connection().wait();
            return false;
        });
}

void cutShort(Exchange& exchange) {
    exchange.response.set_content_provider(
        exchange.body.size(), exchange.contentType,
        [part = half(exchange)](std::size_t, std::size_t, httplib::DataSink& sink) {
            sink.write(part.data(), part.size());
            return false;
        });
}

void chunksCutShort(Exchange& exchange) {
    exchange.response.set_chunked_content_provider(
        exchange.contentType, [part = half(exchange)](std::size_t, httplib::DataSink& sink) {
            sink.write(part.data(), part.size());
            return false;
        });
}

void endless(Exchange& exchange) {
    exchange.response.set_chunked_content_provider(
        exchange.contentType, [body = exchange.body](std::size_t offset, httplib::DataSink& sink) {
            const std::string more = offset == 0 ? body : std::string(64 * 1024, ' ');
            return sink.write(more.data(), more.size());
        });
}

void redirect(Exchange& exchange) {
    const httplib::Request& request = exchange.request;
    exchange.response.set_redirect(request.path + "?types=" + request.get_param_value("types"));
}

void redirectToItself(Exchange& exchange) {
    exchange.response.set_redirect(exchange.request.target);
}

void redirectToFile(Exchange& exchange) {
    exchange.response.set_redirect("file:///etc/hostname");
}

constexpr Fault none{"", oneAd, whole, whole};

constexpr Fault faults[] = {
    {"fault-status-404", oneAd, notFound, whole},
    {"fault-status-500", oneAd, serverError, whole},
    {"fault-status-204", oneAd, noContent, whole},
    {"fault-empty-body", oneAd, empty, whole},
    {"fault-not-json", oneAd, garbage, whole},
    {"fault-slow", oneAd, late, whole},
    {"fault-stall", oneAd, never, whole},
    {"fault-stall-body", oneAd, halfThenNothing, whole},
    {"fault-cut-short", oneAd, cutShort, whole},
    {"fault-cut-chunked", oneAd, chunksCutShort, whole},
    {"fault-endless", oneAd, endless, whole},
    {"fault-redirect", oneAd, redirect, whole},
    {"fault-redirect-loop", oneAd, redirectToItself, whole},
    {"fault-redirect-file", oneAd, redirectToFile, whole},
    {"fault-gzip", oneAd, compressed, whole},

    {"fault-empty-array", noAds, whole, whole},
    {"fault-object", bareAd, whole, whole},
    {"fault-three", threeAds, whole, whole},
    {"fault-missing-click", adWithoutClickUrl, whole, whole},
    {"fault-bad-type", adOfNoType, whole, whole},
    {"fault-native", nativeAd, whole, whole},
    {"fault-picture-refused", refusedPicture, whole, whole},
    {"fault-picture-unresolved", unresolvedPicture, whole, whole},

    {"fault-picture-404", oneAd, whole, notFound},
    {"fault-picture-empty", oneAd, whole, empty},
    {"fault-picture-garbage", oneAd, whole, garbage},
    {"fault-picture-slow", oneAd, whole, late},
    {"fault-picture-stall", oneAd, whole, never},
    {"fault-picture-cut-short", oneAd, whole, cutShort},
    {"fault-picture-endless", oneAd, whole, endless},
    {"fault-picture-redirect-loop", oneAd, whole, redirectToItself},
};

}  // namespace

const Fault& Fault::of(std::string_view container) {
    for (const Fault& fault : faults) {
        if (fault.container == container) return fault;
    }
    return none;
}

bool Fault::spoilsPicture() const {
    return sendPicture != whole;
}

bool Fault::compresses() const {
    return sendAds == compressed;
}

}  // namespace VexmoraSDK
