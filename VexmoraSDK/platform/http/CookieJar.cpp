// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/CookieJar.h"

#include <memory>
#include <sstream>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// A line of libcurl's list: domain, whether subdomains match, path, whether it is for HTTPS only,
/// when it expires, name, value, with tabs between.
struct Cookie {
    explicit Cookie(const std::string& line) {
        std::istringstream text(line);
        for (auto* field : {&domain, &matches, &path, &secure, &expires, &name})
            std::getline(text, *field, '\t');
    }

    std::string identity() const { return domain + '\t' + path + '\t' + name; }

    /// libcurl has no other way to remove a single cookie.
    std::string expired() const {
        return domain + '\t' + matches + '\t' + path + '\t' + secure + "\t1\t" + name + "\tx";
    }

    std::string domain, matches, path, secure, expires, name;
};

}  // namespace

CURLSH* CookieJar::share() {
    if (share_) return share_;
    CURLSH* const share = curl_share_init();
    if (curl_share_setopt(share, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE) == CURLSHE_OK) {
        share_ = share;
    } else {
        curl_share_cleanup(share);
    }
    return share_;
}

void CookieJar::bound(CURL* easy, std::size_t maxCookies) {
    curl_slist* list = nullptr;
    curl_easy_getinfo(easy, CURLINFO_COOKIELIST, &list);
    const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> owned(list,
                                                                            curl_slist_free_all);
    std::map<std::uint64_t, Cookie> cookies;  // by when they were first seen
    for (; list; list = list->next) {
        Cookie cookie(list->data);
        const auto known = ages_.find(cookie.identity());
        cookies.emplace(known == ages_.end() ? ++last_ : known->second, std::move(cookie));
    }
    for (; cookies.size() > maxCookies; cookies.erase(cookies.begin()))
        curl_easy_setopt(easy, CURLOPT_COOKIELIST, cookies.begin()->second.expired().c_str());
    ages_.clear();
    for (const auto& [age, cookie] : cookies)
        ages_.emplace(cookie.identity(), age);
}

}  // namespace VexmoraSDK::platform
