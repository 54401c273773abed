// SPDX-License-Identifier: MIT
#include "tests/soak/ExitRun.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/images/Image.h"
#include "tests/App.h"
#include "tests/LibraryFolder.h"
#include "tests/Program.h"
#include "tests/soak/AdRun.h"

namespace VexmoraSDK {
namespace {

constexpr int kExitStatus = 7;
constexpr unsigned kFaultyPercent = 50;
constexpr std::size_t kAdsAtOnce = 32;

std::atomic<bool> isTime = false;

void itIsTime() {
    isTime = true;
    isTime.notify_all();
}

void exitNow() {
    static std::atomic<bool> exiting = false;
    if (!exiting.exchange(true)) std::exit(kExitStatus);
}

/// Waits for ever, as a call does that waits for a main thread that exits.
[[noreturn]] void block() {
    itIsTime();
    while (true)
        pause();
}

std::atomic<bool> decodes = false;

/// Decodes a picture that takes for ever.
[[noreturn]] void decode() {
    const auto folder = std::filesystem::path(VEXMORA_CATALOG).parent_path() / "pictures";
    std::ifstream file(std::filesystem::directory_iterator(folder)->path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const auto picture = platform::dataOf(bytes);
    while (true) {
        platform::Image::fromData(picture);
        decodes = true;
    }
}

void decodeOnDeliveryThread() {
    const auto invalid = platform::Url::fromString("relative").value();
    platform::UrlSession::shared().dataTask(invalid, [](auto, auto, auto) { decode(); }).resume();
}

}  // namespace

int ExitRun::runAll(int times, const std::string& onlyPlace) {
    Program server({VEXMORA_ADSERVER, "--catalog", VEXMORA_CATALOG});
    const LibraryFolder folder(server.readLabelled("Request template: "));
    server.stopReading();
    std::vector<std::string> places = {"the end of main",
                                       "a call of the main thread",
                                       "a call of a delivery thread",
                                       "another thread",
                                       "another thread beside a block that waits",
                                       "beside a call that waits",
                                       "beside a decoder"};
    if (!onlyPlace.empty()) places = {onlyPlace};
    int runs = 0;
    int failures = 0;
    while (runs < times) {
        for (const auto& place : places) {
            for (const int events : {0, 1, 5, 20, 60}) {
                Program process({"/proc/self/exe", "--exit-from", place, std::to_string(events),
                                 folder.path()});
                const auto output = process.readAll();
                const int status = process.wait();
                ++runs;
                if (output.empty() && status == kExitStatus) continue;
                ++failures;
                std::fprintf(stderr, "%s after %d events: status %d\n%s\n", place.c_str(), events,
                             status, output.c_str());
            }
        }
    }
    std::printf("%d exits, %d of them not clean\n", runs, failures);
    return failures;
}

int ExitRun::exitFrom(const std::string& place, int events, const std::string& folder) {
    platform::Bundle::setLibraryFolder(folder);
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    const auto listener = [&, count =
                                  std::make_shared<std::atomic<int>>(0)](const std::string& event) {
        if (++*count < events) return;
        if (place == "a call of the main thread" && event == "drawn") exitNow();
        if (place == "a call of a delivery thread" && event == "RequestError") exitNow();
        if (place == "another thread beside a block that waits")
            return platform::MainQueue::main()->async(block);
        if (place == "beside a call that waits") {
            if (event == "RequestError") block();
            return;
        }
        itIsTime();
    };
    {
        const App app;
        std::thread exiter;
        if (place.starts_with("another thread")) {
            exiter = std::thread([] {
                isTime.wait(false);
                exitNow();
            });
        }
        if (place == "beside a decoder") decodeOnDeliveryThread();
        Random random(static_cast<unsigned>(getpid()));
        auto& runs = *new std::list<AdRun>;  // They outlive the app.
        App::waitFor([&] {
            runs.remove_if([](const AdRun& run) { return run.isOver(); });
            while (runs.size() < kAdsAtOnce)
                runs.emplace_back(random, kFaultyPercent, listener);
            for (AdRun& run : runs)
                run.maybeRelease(random);
            if (events == 0) listener("nothing");
            return (place == "the end of main" || place == "beside a call that waits" ||
                    (place == "beside a decoder" && decodes)) &&
                   isTime;
        });
        if (exiter.joinable()) exiter.join();
    }
    exitNow();
    return 0;
}

}  // namespace VexmoraSDK
