#include "VexmoraSDK/platform/http/Transfer.h"

#include <utility>

namespace VexmoraSDK::platform {

void Transfer::fail(int code, const char* description) {
    Dictionary userInfo;
    userInfo.emplace(kLocalizedDescriptionKey, std::string(description));
    userInfo.emplace(kFailingUrlStringKey, url.text());
    error.emplace("VexmoraURLErrorDomain", code, std::move(userInfo));
}

bool Transfer::isAnsweredByCache() {
    const auto now = HttpCache::now();
    earlier = HttpCache::shared().find(url, now);
    usesEarlier = earlier && earlier->isFresh(now);
    return usesEarlier;
}

void Transfer::complete() {
    const auto callback = std::exchange(completion, nullptr);
    if (error) {
        callback(std::nullopt, std::nullopt, std::move(error));
    } else {
        consultCache();
        callback(std::move(body), response, std::nullopt);
    }
}

void Transfer::consultCache() {
    const HttpCache::Times times{asked, HttpCache::now()};
    if (!usesEarlier) return HttpCache::shared().keep(url, terms, body, times);
    if (terms) HttpCache::shared().renew(earlier, *terms, times);
    body = *earlier->body;
    response.statusCode = 200;
}

}  // namespace VexmoraSDK::platform
