#include "tests/soak/Leaving.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "tests/App.h"
#include "tests/LibraryFolder.h"
#include "tests/Program.h"
#include "tests/soak/Showing.h"

namespace VexmoraSDK {
namespace {

constexpr int kExitCode = 7;
constexpr unsigned kFaultyPercent = 50;
constexpr std::size_t kAtOnce = 32;

std::atomic<bool> isTime = false;

void leaveNow() {
    static std::atomic<bool> leaving = false;
    if (!leaving.exchange(true)) std::exit(kExitCode);
}

}  // namespace

int Leaving::leave(int times) {
    Program server({VEXMORA_ADSERVER, "--catalog", VEXMORA_CATALOG});
    const LibraryFolder folder(server.readLabelled("Request template: "));
    server.stopReading();
    int done = 0;
    int failures = 0;
    while (done < times) {
        for (const auto* place : {"the end of main", "a call of the main thread",
                                  "a call of a delivery thread", "another thread"}) {
            for (const int outcomes : {0, 1, 5, 20, 60}) {
                Program process(
                    {"/proc/self/exe", "--leave", place, std::to_string(outcomes), folder.path()});
                const auto said = process.readAll();
                const int status = process.wait();
                ++done;
                if (said.empty() && status == kExitCode) continue;
                ++failures;
                std::fprintf(stderr, "%s after %d outcomes: status %d\n%s\n", place, outcomes,
                             status, said.c_str());
            }
        }
    }
    std::printf("%d exits, %d of them not clean\n", done, failures);
    return failures;
}

int Leaving::leaveFrom(const std::string& place, int outcomes, const std::string& folder) {
    platform::Bundle::setLibraryFolder(folder);
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    const auto hear = [&, heard = std::make_shared<std::atomic<int>>(0)](const std::string& what) {
        if (++*heard < outcomes) return;
        if (place == "a call of the main thread" && what == "drawn") leaveNow();
        if (place == "a call of a delivery thread" && what == "error 3") leaveNow();
        isTime = true;
        isTime.notify_all();
    };
    {
        const App app;
        std::thread leaver;
        if (place == "another thread") {
            leaver = std::thread([] {
                isTime.wait(false);
                leaveNow();
            });
        }
        Random random(static_cast<unsigned>(getpid()));
        auto& showings = *new std::vector<std::shared_ptr<Showing>>;  // outlive the app
        App::waitFor([&] {
            std::erase_if(showings, [](const auto& showing) { return showing->isOver(); });
            while (showings.size() < kAtOnce)
                showings.push_back(Showing::start(random, kFaultyPercent, hear));
            for (const auto& showing : showings)
                showing->maybeLetGo(random);
            if (outcomes == 0) hear("nothing yet");
            return place == "the end of main" && isTime;
        });
        if (leaver.joinable()) leaver.join();
    }
    leaveNow();
    return 0;
}

}  // namespace VexmoraSDK

// Of ThreadSanitizer, where the program is built with it: a process that exits leaves the thread
// behind in which libcurl resolves a name.
extern "C" const char* __tsan_default_suppressions() {
    return "thread:libcurl";
}
