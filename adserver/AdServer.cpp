// SPDX-License-Identifier: MIT
#include "adserver/AdServer.h"

#include <algorithm>
#include <boost/json.hpp>
#include <cctype>
#include <charconv>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <iterator>
#include <mutex>

#include "adserver/Faults.h"
#include "adserver/HttpServer.h"
#include "adserver/WebPage.h"

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

constexpr std::size_t kMaxLoggedRequests = 10'000;
constexpr std::size_t kMaxAnswersShown = 100;

constexpr char kLandingPage[] = R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>You tapped an ad</title>
<style>
  body { font: 18px/1.5 sans-serif; color: #21303f; background: #f3f6f8; text-align: center }
  main { max-width: 24em; margin: 20vh auto; padding: 2em; background: #fff; border-radius: 1em }
</style>
<main><h1>You tapped an ad</h1><p>This is where it leads. Nothing is for sale here.</p></main>
</html>
)";

std::vector<std::int64_t> parseTypes(const std::string& list) {
    std::vector<std::int64_t> types;
    const char* at = list.data();
    const char* const end = at + list.size();
    std::int64_t type = 0;
    while (at < end) {
        const auto [stop, error] = std::from_chars(at, end, type);
        if (error == std::errc{}) types.push_back(type);
        at = std::find(stop, end, ',');
        if (at < end) ++at;
    }
    return types;
}

std::string contentType(const std::filesystem::path& picture) {
    const std::string extension = picture.extension();
    return extension == ".png" ? "image/png" : extension == ".webp" ? "image/webp" : "image/jpeg";
}

void sendErrorPage(const httplib::Request&, httplib::Response& response) {
    if (!response.body.empty()) return;
    const std::string status = std::to_string(response.status);
    response.set_content(
        "<!DOCTYPE html><title>" + status + "</title><h1>Error " + status + "</h1>", "text/html");
}

AdServer::Request logged(const httplib::Request& request) {
    AdServer::Request entry{request.method, request.target, {}, request.remote_port};
    for (const auto& [name, value] : request.headers) {
        std::string lowerCase = name;
        std::transform(name.begin(), name.end(), lowerCase.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        entry.headers.emplace(std::move(lowerCase), value);
    }
    // httplib adds these to the client's headers.
    for (const char* name : {"remote_addr", "remote_port", "local_addr", "local_port"}) {
        entry.headers.erase(name);
    }
    return entry;
}

/// A catalogue in which all creatives have names, and its pictures by file name.
struct Stock {
    explicit Stock(Catalog catalogToServe) : catalog(std::move(catalogToServe)) {
        for (Creative& creative : catalog.creatives)
            take(creative);
        for (auto& [container, creatives] : catalog.placements) {
            for (Creative& creative : creatives)
                take(creative);
        }
    }

    void take(Creative& creative) {
        if (creative.name.empty()) creative.name = creative.picture.stem().string();
        pictures.emplace(creative.picture.filename().string(), creative.picture);
    }

    Catalog catalog;
    std::map<std::string, std::filesystem::path> pictures;
};

std::string contents(const std::filesystem::path& picture) {
    std::ifstream file(picture, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

struct AdServer::Site {
    Site(Catalog catalogToServe, Options chosen)
        : options(std::move(chosen)),
          stock(std::make_shared<const Stock>(std::move(catalogToServe))) {
        http.onRequest = [this](httplib::Request& request) { receive(request); };
        http.Get("/ads",
                 [this](const auto& request, auto& response) { sendAds(request, response); });
        http.Get("/creatives/([^/]+)",
                 [this](const auto& request, auto& response) { sendPicture(request, response); });
        http.Get("/landing/.*", [this](const httplib::Request& request, auto& response) {
            note(request, "landing page");
            response.set_content(kLandingPage, "text/html");
        });
        http.set_error_handler([this](const httplib::Request& request, auto& response) {
            if (request.matches.empty()) note(request, "status " + std::to_string(response.status));
            sendErrorPage(request, response);
        });
        servePage();
        port = http.bind(options.port);
        address = "http://127.0.0.1:" + std::to_string(port);
        if (port != 0) http.serve();
    }

    void servePage() {
        const auto serve = [this](const char* path, std::string_view text, const char* type) {
            http.Get(path, [text, type](const httplib::Request&, httplib::Response& response) {
                response.set_header("Content-Security-Policy", "default-src 'self'");
                response.set_content(text.data(), text.size(), type);
            });
        };
        serve("/", WebPage::kHtml, "text/html; charset=utf-8");
        serve("/page/style\\.css", WebPage::kStyle, "text/css; charset=utf-8");
        serve("/page/script\\.js", WebPage::kScript, "text/javascript; charset=utf-8");
        serve("/page/icon\\.svg", WebPage::kIcon, "image/svg+xml");
        http.Get("/page/state\\.json", [this](const httplib::Request&, auto& response) {
            response.set_header("Cache-Control", "no-store");
            response.set_content(json::serialize(state()), "application/json");
        });
        http.Get("/page/pictures/([^/]+)", [this](const httplib::Request& request, auto& response) {
            const auto served = currentStock();
            const auto picture = served->pictures.find(request.matches[1]);
            if (picture == served->pictures.end()) {
                response.status = 404;
            } else {
                response.set_content(contents(picture->second), contentType(picture->second));
            }
        });
    }

    std::shared_ptr<const Stock> currentStock() {
        const std::lock_guard lock(mutex);
        return stock;
    }

    std::string reload(const std::filesystem::path& file) {
        std::shared_ptr<const Stock> fresh;
        std::string mistakes;
        try {
            fresh = std::make_shared<const Stock>(Catalog::load(file));
        } catch (const std::exception& error) {
            mistakes = error.what();
        }
        const std::lock_guard lock(mutex);
        if (fresh) stock = std::move(fresh);
        problem = mistakes;
        return mistakes;
    }

    void receive(httplib::Request& request) {
        {
            const std::lock_guard lock(mutex);
            log.push_back(logged(request));
            if (log.size() > kMaxLoggedRequests) log.pop_front();
        }
        arrived.notify_all();
        // httplib compresses if the client accepts it; ads are too small to gain from that.
        request.headers.erase("Accept-Encoding");
        if (!isOfPage(request)) HttpServer::connection().wait(options.latency);
    }

    static bool isOfPage(const httplib::Request& request) {
        return request.path == "/" || request.path.starts_with("/page/");
    }

    void note(const httplib::Request& request, const std::string& outcome,
              const std::string& warning = "") {
        const Answer answer{std::chrono::system_clock::now(), request.method, request.target,
                            outcome, warning};
        if (options.onAnswer) options.onAnswer(answer);
        const std::lock_guard lock(mutex);
        answers.push_front(answer);
        if (answers.size() > kMaxAnswersShown) answers.pop_back();
    }

    void sendAds(const httplib::Request& request, httplib::Response& response) {
        const std::string container = request.get_param_value("container");
        const std::string types = request.get_param_value("types");
        const std::optional<Fault> fault = Fault::of(container);
        if (!fault) return refuse(request, response, container);
        const auto served = currentStock();
        std::vector<const Creative*> candidates =
            served->catalog.candidates(container, parseTypes(types));
        if (fault->container.empty()) {
            takeTurns(candidates, container + '?' + types);
            note(request, candidates.empty() ? "no ad" : "ad " + candidates.front()->name,
                 served->catalog.placements.contains(container) ? "" : "unknown placement");
        } else {
            note(request, container);
        }

        json::array ads;
        for (const Creative* creative : candidates)
            ads.push_back(record(*creative, *fault));
        Exchange exchange{request,
                          response,
                          ports,
                          "application/json",
                          ads.empty() ? "[]" : fault->compose(ads),
                          "no-store"};
        fault->ads->send(exchange);
    }

    /// An unknown fault gets status 400, so that a typing mistake does not look like a fault that
    /// the app survived.
    void refuse(const httplib::Request& request, httplib::Response& response,
                const std::string& container) {
        note(request, "status 400", "unknown fault");
        response.status = 400;
        response.set_content("There is no fault \"" + container + "\". The page " + address +
                                 "/ lists all faults.\n",
                             "text/plain; charset=utf-8");
    }

    void sendPicture(const httplib::Request& request, httplib::Response& response) {
        const auto served = currentStock();
        const auto picture = served->pictures.find(request.matches[1]);
        if (picture == served->pictures.end()) {
            note(request, "status 404");
            response.status = 404;
            return;
        }
        const std::string container = request.get_param_value("container");
        const std::optional<Fault> fault = Fault::of(container);
        if (!fault) return refuse(request, response, container);
        note(request, fault->spoilsPicture() ? container : "picture " + picture->first);
        // A client sees a changed picture after a minute at most.
        Exchange exchange{request,
                          response,
                          ports,
                          contentType(picture->second),
                          contents(picture->second),
                          fault->spoilsPicture() ? "no-store" : "max-age=60"};
        fault->picture->send(exchange);
    }

    /// Puts another candidate first for each repetition of a request.
    void takeTurns(std::vector<const Creative*>& candidates, const std::string& asked) {
        if (candidates.empty()) return;
        const std::lock_guard lock(mutex);
        const std::size_t turn = turns[asked]++ % candidates.size();
        std::rotate(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(turn),
                    candidates.end());
    }

    json::object record(const Creative& creative, const Fault& fault) const {
        std::string picture = address + "/creatives/" + creative.picture.filename().string();
        if (fault.spoilsPicture()) picture.append("?container=").append(fault.container);
        const bool onThisServer = creative.clickUrl.starts_with('/');
        json::object record{{"adTypeId", creative.adTypeId},
                            {"clickUrl", (onThisServer ? address : "") + creative.clickUrl},
                            {"bannerUrl", picture}};
        if (creative.adTypeId == Creative::kNativeAdType) {
            record["title"] = creative.title;
            record["description"] = creative.description;
            record["displayName"] = creative.displayName;
        }
        return record;
    }

    /// What the web page shows.
    json::object state() {
        json::array ads;
        json::array recent;
        const auto served = currentStock();
        for (const Creative& creative : served->catalog.creatives) {
            json::array containers;
            for (const auto& [container, creatives] : served->catalog.placements) {
                const bool offered =
                    std::any_of(creatives.begin(), creatives.end(),
                                [&](const auto& other) { return other.name == creative.name; });
                if (offered) containers.emplace_back(container);
            }
            ads.push_back({{"name", creative.name},
                           {"picture", "/page/pictures/" + creative.picture.filename().string()},
                           {"containers", containers},
                           {"record", record(creative, *Fault::of(""))}});
        }
        const std::lock_guard lock(mutex);
        for (const Answer& answer : answers) {
            const auto sinceEpoch = answer.at.time_since_epoch();
            recent.push_back({{"at", sinceEpoch / std::chrono::milliseconds(1)},
                              {"method", answer.method},
                              {"target", answer.target},
                              {"outcome", answer.outcome},
                              {"warning", answer.warning}});
        }
        return {{"requestUrlFormat", requestUrlFormat()},
                {"problem", problem},
                {"warnings", json::value_from(served->catalog.warnings)},
                {"faults", json::value_from(faultyContainers())},
                {"ads", ads},
                {"answers", recent}};
    }

    std::string requestUrlFormat() const { return address + "/ads?container=%@&types=%@"; }

    const Options options;
    int port = 0;
    std::string address;

    std::mutex mutex;
    std::condition_variable arrived;
    std::shared_ptr<const Stock> stock;
    std::string problem;  // mistakes of the catalogue that could not be used
    std::deque<Request> log;
    std::deque<Answer> answers;  // the latest first
    std::map<std::string, std::size_t> turns;

    UnreachablePorts ports;
    HttpServer http;  // the last member, because its threads use all others
};

AdServer::AdServer(Catalog catalog) : AdServer(std::move(catalog), Options{}) {}

AdServer::AdServer(Catalog catalog, Options options)
    : site_(std::make_unique<Site>(std::move(catalog), std::move(options))) {}

AdServer::~AdServer() = default;

std::vector<std::string> AdServer::faultyContainers() {
    return Fault::containers();
}

int AdServer::port() const {
    return site_->port;
}

std::string AdServer::address() const {
    return site_->address;
}

std::string AdServer::requestUrlFormat() const {
    return site_->requestUrlFormat();
}

std::string AdServer::reload(const std::filesystem::path& catalogFile) {
    return site_->reload(catalogFile);
}

std::vector<std::string> AdServer::warnings() const {
    return site_->currentStock()->catalog.warnings;
}

std::vector<AdServer::Request> AdServer::requests() const {
    const std::lock_guard lock(site_->mutex);
    return {site_->log.begin(), site_->log.end()};
}

bool AdServer::waitForRequests(std::size_t count, std::chrono::milliseconds deadline) const {
    std::unique_lock lock(site_->mutex);
    return site_->arrived.wait_for(lock, deadline, [&] { return site_->log.size() >= count; });
}

}  // namespace VexmoraSDK
