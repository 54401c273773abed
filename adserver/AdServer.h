// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adserver/Catalog.h"

namespace VexmoraSDK {

/// A mock ad server. It answers ad requests from a catalogue, serves the pictures and the landing
/// pages of its ads, shows its catalogue and the latest requests on a web page, and answers wrongly
/// on demand. adserver/README.md lists its addresses and faults.
///
/// It serves from its construction to its destruction, on 127.0.0.1 and on threads of its own. Its
/// members may be called from any thread.
class AdServer {
 public:
    /// A request and how it was answered.
    struct Answer {
        std::chrono::system_clock::time_point at;
        std::string method;
        std::string target;     ///< Path and query, byte for byte as they were received.
        std::string outcome;    ///< For a log: "ad tea", "no ad", "fault-stall", "picture tea.png".
        std::string warning{};  ///< "unknown placement" or "unknown fault", else empty.
    };

    struct Options {
        int port = 0;                         ///< 0: any free port.
        std::chrono::milliseconds latency{};  ///< The delay of each response.
        /// Called before each response is sent, on the thread of its connection; not for requests
        /// of the server's own web page.
        std::function<void(const Answer&)> onAnswer{};
    };

    /// A request as it was received.
    struct Request {
        std::string method;
        std::string target;                          ///< Path and query, byte for byte.
        std::map<std::string, std::string> headers;  ///< Names in lower case.
        int clientPort = 0;                          ///< Different for each connection.
    };

    explicit AdServer(Catalog catalog);
    AdServer(Catalog catalog, Options options);
    /// Closes all connections, those of stalled requests too, without waiting for any client.
    ~AdServer();

    /// All container identifiers that get a faulty response.
    static std::vector<std::string> faultyContainers();

    /// 0 when the requested port was not free; nothing is served then.
    int port() const;
    /// "http://127.0.0.1:PORT"
    std::string address() const;
    /// The request address template: "http://127.0.0.1:PORT/ads?container=%@&types=%@"
    std::string requestUrlFormat() const;

    /// Serves the catalogue of this file from the next request on. If the file cannot be used, the
    /// catalogue before it stays, and the mistakes of the file are returned, one on each line; the
    /// web page shows them too.
    std::string reload(const std::filesystem::path& catalogFile);

    /// The warnings of the catalogue that is served.
    std::vector<std::string> warnings() const;

    /// The latest 10,000 requests, oldest first. A request is among them before the first byte of
    /// its response is sent.
    std::vector<Request> requests() const;
    /// Blocks until `requests()` holds at least `count`; returns false when that takes longer than
    /// `deadline`.
    bool waitForRequests(std::size_t count,
                         std::chrono::milliseconds deadline = std::chrono::seconds(10)) const;

 private:
    struct Site;
    std::unique_ptr<Site> site_;
};

}  // namespace VexmoraSDK
