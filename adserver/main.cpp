// SPDX-License-Identifier: MIT
#include <getopt.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <charconv>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <string_view>

#include "adserver/AdServer.h"
#include "adserver/CatalogWatch.h"

namespace {

using VexmoraSDK::AdServer;
using VexmoraSDK::Catalog;
using VexmoraSDK::CatalogWatch;

constexpr char kUsage[] = R"(Usage: vexmora-adserver [OPTION]...
A mock ad server on 127.0.0.1, to try VexmoraSDK against.

  --port N        listen on port N (default: any free port); the settings that
                  VexmoraSDK is shipped with ask port 8080
  --catalog FILE  serve the ads of this catalogue (default: the one that comes
                  with the server); it is read again whenever it changes
  --latency MS    answer each request MS milliseconds late
  --help          show this help
  --version       show the version

The address that it prints leads to a page with the catalogue, pictures
included, and the latest requests. Each request is a line on standard output:
the time, the request, what was answered. Containers named fault-... get faulty
answers, for instance fault-status-404; the page lists them. What in the
catalogue would stop an app is a warning on standard error.

Ends at SIGINT (Ctrl+C) or SIGTERM. Exits with 2 when an option, the catalogue
or the port is no good.
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

/// A file descriptor that is readable once SIGINT or SIGTERM has come. The signals are blocked in
/// the calling thread and in the threads that it starts.
int openEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

std::string clockTime(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    tm local{};
    localtime_r(&seconds, &local);
    char text[sizeof "00:00:00"] = "";
    std::strftime(text, sizeof text, "%T", &local);
    return text + ('.' + std::to_string(1000 + sinceEpoch.count() % 1000).substr(1));
}

std::string now() {
    return clockTime(std::chrono::system_clock::now());
}

/// Prints one line; any thread. Control characters that a client sent must not reach the terminal.
void print(std::string line, bool red = false) {
    for (char& character : line) {
        if (static_cast<unsigned char>(character) < ' ' || character == '\x7f') character = '?';
    }
    if (red && isatty(STDOUT_FILENO)) line = "\x1b[31m" + line + "\x1b[0m";
    std::cout << line + '\n' << std::flush;
}

void printAnswer(const AdServer::Answer& answer) {
    const std::string warning = answer.warning.empty() ? "" : ", " + answer.warning;
    print(clockTime(answer.at) + "  " + answer.method + ' ' + answer.target + "  " +
              answer.outcome + warning,
          answer.outcome == "status 400");
}

void printWarnings(const std::vector<std::string>& warnings) {
    for (const std::string& warning : warnings)
        std::cerr << "warning: " << warning << '\n';
}

Catalog loadOrRefuse(const std::filesystem::path& file) {
    try {
        return Catalog::load(file);
    } catch (const std::exception& mistakes) {
        std::cerr << mistakes.what() << '\n';
        refuse("no usable catalogue");
    }
}

std::string summary(const Catalog& catalog) {
    return std::to_string(catalog.creatives.size()) + " ads, " +
           std::to_string(catalog.placements.size()) + " placements";
}

void serveUntilTheEnd(AdServer& server, const std::filesystem::path& catalogFile,
                      CatalogWatch& watch, int endSignals) {
    pollfd awaited[] = {{endSignals, POLLIN, 0}, {watch.descriptor(), POLLIN, 0}};
    while (awaited[0].revents == 0) {
        poll(awaited, std::size(awaited), -1);
        if (!watch.changed()) continue;
        const std::string mistakes = server.reload(catalogFile);
        if (mistakes.empty()) {
            print(now() + "  catalogue read again");
            printWarnings(server.warnings());
        } else {
            std::cerr << mistakes << '\n' << now() << "  catalogue not usable, the old one stays\n";
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    AdServer::Options options{.onAnswer = printAnswer};
    std::filesystem::path catalogFile = Catalog::defaultFile();
    const option known[] = {
        {"port", required_argument, nullptr, 'p'},    {"catalog", required_argument, nullptr, 'c'},
        {"latency", required_argument, nullptr, 'l'}, {"help", no_argument, nullptr, 'h'},
        {"version", no_argument, nullptr, 'v'},       {}};
    for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
        switch (found) {
            case 'p': options.port = numberUpTo(65'535, "--port", optarg); break;
            case 'c': catalogFile = std::filesystem::absolute(optarg); break;
            case 'l':
                options.latency =
                    std::chrono::milliseconds(numberUpTo(600'000, "--latency", optarg));
                break;
            case 'h': std::cout << kUsage; return 0;
            case 'v': std::cout << "vexmora-adserver " VEXMORA_VERSION "\n"; return 0;
            default:  // getopt_long has printed the reason
                std::cerr << "Try 'vexmora-adserver --help'.\n";
                return 2;
        }
    }
    if (optind < argc) refuse(std::string("unexpected argument \"") + argv[optind] + '"');

    CatalogWatch watch(catalogFile);
    Catalog catalog = loadOrRefuse(catalogFile);
    const std::string offer = summary(catalog);
    printWarnings(catalog.warnings);

    const int endSignals = openEndSignals();
    std::signal(SIGPIPE, SIG_IGN);  // the reader of the log may end before the server
    AdServer server(std::move(catalog), options);
    if (server.port() == 0) {
        refuse("port " + std::to_string(options.port) + " is taken; choose another with --port");
    }
    print("Listening on " + server.address());
    print("Request template: " + server.requestUrlFormat());
    print("Catalogue: " + catalogFile.string() + " (" + offer + ')');

    serveUntilTheEnd(server, catalogFile, watch, endSignals);
    return 0;
}
