#include <getopt.h>

#include <charconv>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <string_view>

#include "adserver/AdServer.h"

namespace {

constexpr char usage[] = R"(Usage: vexmora-adserver [options]
A mock ad server on 127.0.0.1.

  --port N        listen on port N (default: any free port)
  --catalog FILE  serve the ads of this catalogue (default: the one that comes with the server)
  --latency MS    answer each request MS milliseconds late
  --help          show this help

Containers named fault-... get faulty answers, for instance fault-status-404.
)";

[[noreturn]] void refuse(const std::string& reason) {
    std::cerr << "vexmora-adserver: " << reason << '\n';
    std::exit(2);
}

int numberUpTo(int limit, std::string_view option, std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || number < 0 || number > limit) {
        refuse(std::string(option) + ": expected a number from 0 to " + std::to_string(limit) +
               ", not \"" + std::string(text) + '"');
    }
    return number;
}

/// The signals that end the server, blocked in the calling thread and in those that it starts.
sigset_t blockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

}  // namespace

int main(int argc, char** argv) {
    using VexmoraSDK::AdServer;
    using VexmoraSDK::Catalog;

    AdServer::Options options;
    std::filesystem::path catalogFile = Catalog::defaultFile();
    const option known[] = {{"port", required_argument, nullptr, 'p'},
                            {"catalog", required_argument, nullptr, 'c'},
                            {"latency", required_argument, nullptr, 'l'},
                            {"help", no_argument, nullptr, 'h'},
                            {}};
    for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
        switch (found) {
            case 'p': options.port = numberUpTo(65'535, "--port", optarg); break;
            case 'c': catalogFile = optarg; break;
            case 'l':
                options.latency =
                    std::chrono::milliseconds(numberUpTo(600'000, "--latency", optarg));
                break;
            case 'h': std::cout << usage; return 0;
            default:  // getopt_long has said what is wrong
                return 2;
        }
    }
    if (optind < argc) refuse(std::string("unexpected argument \"") + argv[optind] + '"');

    std::string error;
    auto catalog = Catalog::load(catalogFile, error);
    if (!catalog) refuse(error);

    const sigset_t endSignals = blockEndSignals();
    const AdServer server(std::move(*catalog), options);
    if (server.port() == 0) refuse("port " + std::to_string(options.port) + " is not to be had");
    std::cout << "Listening on " << server.address() << '\n'
              << "Request template: " << server.requestUrlFormat() << std::endl;

    int signal = 0;
    sigwait(&endSignals, &signal);
    return 0;
}
