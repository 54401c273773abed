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

/// A mock ad server: answers ad requests from a catalogue, serves the pictures and the landing
/// pages of its ads, shows people what it does on a page of its own, and misbehaves on demand.
/// adserver/README.md lists its addresses and faults.
///
/// Serves from its construction to its destruction, on 127.0.0.1 and on threads of its own. Its
/// members may be called from any thread.
class AdServer {
 public:
    /// What became of a request.
    struct Answer {
        std::chrono::system_clock::time_point at;
        std::string method;
        std::string target;   ///< Path and query, byte for byte.
        std::string outcome;  ///< For people: "ad tea", "no ad", "fault-stall", "picture tea.png".
    };

    struct Options {
        int port = 0;                         ///< 0 takes any free port.
        std::chrono::milliseconds latency{};  ///< By how much each answer is late.
        /// Called before each answer is sent, on the thread of its connection; not for those of the
        /// server's own page.
        std::function<void(const Answer&)> onAnswer{};
    };

    /// A request as it came over the wire.
    struct Request {
        std::string method;
        std::string target;                          ///< Path and query, byte for byte.
        std::map<std::string, std::string> headers;  ///< Names in lower case.
        int clientPort = 0;                          ///< Tells connections apart.
    };

    explicit AdServer(Catalog catalog);
    AdServer(Catalog catalog, Options options);
    /// Cuts all connections, stalled requests included, and waits for none of them.
    ~AdServer();

    /// The containers that get faults, every one.
    static std::vector<std::string> faultyContainers();

    /// 0 when the wished port was not to be had; nothing is served then.
    int port() const;
    /// "http://127.0.0.1:PORT"
    std::string address() const;
    /// The request address template: "http://127.0.0.1:PORT/ads?container=%@&types=%@"
    std::string requestUrlFormat() const;

    /// Serves another catalogue from the next request on, if the file can be used. Otherwise goes
    /// on as before and returns its mistakes, one a line; the server's page shows them, too.
    std::string reload(const std::filesystem::path& catalogFile);

    /// The latest 10,000 requests, oldest first. A client that has seen the beginning of an answer
    /// finds its request here.
    std::vector<Request> requests() const;
    /// Blocks until `requests()` holds at least `count`; false when that takes longer than
    /// `deadline`.
    bool waitForRequests(std::size_t count,
                         std::chrono::milliseconds deadline = std::chrono::seconds(10)) const;

 private:
    struct Site;
    std::unique_ptr<Site> site_;
};

}  // namespace VexmoraSDK
