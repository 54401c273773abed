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

namespace VexmoraSDK {
namespace {

namespace json = boost::json;

constexpr std::size_t logLimit = 10'000;

constexpr char landingPage[] = R"(<!DOCTYPE html>
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

std::vector<long> parseTypes(const std::string& list) {
    std::vector<long> types;
    const char* at = list.data();
    const char* const end = at + list.size();
    long type = 0;
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
    const std::string status = std::to_string(response.status);
    response.set_content(
        "<!DOCTYPE html><title>" + status + "</title><h1>Error " + status + "</h1>", "text/html");
}

AdServer::Request logged(const httplib::Request& request) {
    AdServer::Request entry{request.method, request.target, {}, request.remote_port};
    for (const auto& [name, value] : request.headers) {
        std::string lowerCase = name;
        std::transform(name.begin(), name.end(), lowerCase.begin(), ::tolower);
        entry.headers.emplace(std::move(lowerCase), value);
    }
    // httplib's own additions
    for (const char* name : {"remote_addr", "remote_port", "local_addr", "local_port"}) {
        entry.headers.erase(name);
    }
    return entry;
}

}  // namespace

struct AdServer::Site {
    Site(Catalog catalogToServe, Options chosen)
        : catalog(std::move(catalogToServe)), options(chosen) {
        for (const Creative& creative : catalog.creatives)
            addPicture(creative);
        for (const auto& [container, creatives] : catalog.placements) {
            for (const Creative& creative : creatives)
                addPicture(creative);
        }
        http.onRequest = [this](httplib::Request& request) { receive(request); };
        http.Get("/ads",
                 [this](const auto& request, auto& response) { sendAds(request, response); });
        http.Get("/creatives/([^/]+)",
                 [this](const auto& request, auto& response) { sendPicture(request, response); });
        http.Get("/landing/.*", [](const httplib::Request&, httplib::Response& response) {
            response.set_content(landingPage, "text/html");
        });
        http.set_error_handler(sendErrorPage);
        port = http.bind(options.port);
        address = "http://127.0.0.1:" + std::to_string(port);
        if (port != 0) http.serve();
    }

    void addPicture(const Creative& creative) {
        pictures.emplace(creative.picture.filename().string(), creative.picture);
    }

    void receive(httplib::Request& request) {
        {
            const std::lock_guard lock(mutex);
            log.push_back(logged(request));
            if (log.size() > logLimit) log.pop_front();
        }
        arrived.notify_all();
        // httplib compresses for whoever accepts it. Ads are too small for that to pay.
        request.headers.erase("Accept-Encoding");
        HttpServer::connection().wait(options.latency);
    }

    void sendAds(const httplib::Request& request, httplib::Response& response) {
        const std::string container = request.get_param_value("container");
        const std::string types = request.get_param_value("types");
        const Fault fault = Fault::of(container);
        std::vector<const Creative*> candidates = catalog.candidates(container, parseTypes(types));
        if (fault.container.empty()) takeTurns(candidates, container + '?' + types);

        json::array ads;
        for (const Creative* creative : candidates)
            ads.push_back(record(*creative, fault));
        Exchange exchange{request, response, doors, "application/json",
                          ads.empty() ? "[]" : fault.compose(std::move(ads))};
        fault.ads->send(exchange);
    }

    void sendPicture(const httplib::Request& request, httplib::Response& response) {
        const auto picture = pictures.find(request.matches[1]);
        if (picture == pictures.end()) {
            response.status = 404;
            return;
        }
        std::ifstream file(picture->second, std::ios::binary);
        Exchange exchange{request,
                          response,
                          doors,
                          contentType(picture->second),
                          {std::istreambuf_iterator<char>(file), {}}};
        const std::string container = request.get_param_value("container");
        Fault::of(container).picture->send(exchange);
    }

    /// Puts another candidate first each time that the same thing is asked for.
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
        if (creative.adTypeId == Creative::native) {
            record["title"] = creative.title;
            record["description"] = creative.description;
            record["displayName"] = creative.displayName;
        }
        return record;
    }

    const Catalog catalog;
    const Options options;
    std::map<std::string, std::filesystem::path> pictures;  // by file name
    int port = 0;
    std::string address;

    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<Request> log;
    std::map<std::string, std::size_t> turns;

    ClosedDoors doors;
    HttpServer http;  // its threads use all the above
};

AdServer::AdServer(Catalog catalog) : AdServer(std::move(catalog), Options{}) {}

AdServer::AdServer(Catalog catalog, Options options)
    : site_(std::make_unique<Site>(std::move(catalog), options)) {}

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
    return site_->address + "/ads?container=%@&types=%@";
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
