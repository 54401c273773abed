#include <getopt.h>
#include <malloc.h>
#include <signal.h>
#include <sys/prctl.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "tests/LibraryFolder.h"
#include "tests/faults/CountedTasks.h"
#include "tests/soak/Showing.h"

namespace VexmoraSDK {
namespace {

constexpr auto kDeadline = std::chrono::minutes(2);
constexpr unsigned kFaultyPercent = 5;
constexpr std::size_t kAtOnce = 96;
constexpr long kHeapMayGrow = 1 << 20;

[[noreturn]] void fail(const std::string& why) {
    std::fprintf(stderr, "soak: %s\n", why.c_str());
    std::exit(1);
}

/// Runs the event loop until `condition` holds; false when that takes too long.
template <class Condition>
bool waitFor(Condition condition) {
    const QDeadlineTimer deadline(kDeadline);
    QTimer look;
    look.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// The mock ad server, in a process of its own.
class Server {
 public:
    Server() {
        process_.setProgram(QCoreApplication::applicationDirPath() +
                            QStringLiteral("/vexmora-adserver"));
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process_.start(QProcess::ReadOnly);
    }

    ~Server() {
        process_.terminate();
        process_.waitForFinished();
    }

    std::string requestUrlFormat() {
        const QByteArray label = "Request template: ";
        while (process_.waitForReadyRead()) {
            while (process_.canReadLine()) {
                const auto line = process_.readLine().trimmed();
                if (!line.startsWith(label)) continue;
                // Else what the server says of each request would be kept here.
                process_.closeReadChannel(QProcess::StandardOutput);
                return line.mid(label.size()).toStdString();
            }
        }
        fail("no ad server");
    }

 private:
    QProcess process_;
};

/// What the process holds.
struct Holdings {
    long heap = 0;
    long sockets = 0;
    long otherDescriptors = 0;
    long threads = 0;

    static Holdings now() {
        namespace fs = std::filesystem;
        Holdings holdings;
        const auto heap = mallinfo2();
        holdings.heap = static_cast<long>(heap.uordblks + heap.hblkhd);
        for (const auto& descriptor : fs::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const std::string leadsTo = fs::read_symlink(descriptor.path(), gone);
            ++(leadsTo.starts_with("socket:") ? holdings.sockets : holdings.otherDescriptors);
        }
        using Tasks = fs::directory_iterator;
        holdings.threads = std::distance(Tasks("/proc/self/task"), Tasks());
        return holdings;
    }

    /// Whether these are no more than those of `before`. Connections are kept, as many as there
    /// were transfers at once.
    bool areNoMoreThan(const Holdings& before, long connections) const {
        return heap <= before.heap + kHeapMayGrow && sockets <= before.sockets + connections &&
               otherDescriptors <= before.otherDescriptors && threads <= before.threads;
    }
};

class Soak {
 public:
    explicit Soak(unsigned seed) : random_(seed) {}

    /// Shows so many ads more, and returns when nothing of it is under way any more.
    void show(std::size_t ads) {
        for (std::size_t started = 0; started < ads || !showings_.empty();) {
            for (; started < ads && showings_.size() < kAtOnce; ++started)
                showings_.push_back(Showing::start(random_, kFaultyPercent));
            const auto before = showings_.size();
            if (!waitFor([&] { return look() < before; })) reportStuck();
        }
        if (!waitFor(CountedTasks::allAreThrough)) fail("a request never completed");
        if (CountedTasks::completedTwice() > 0) fail("a request completed twice");
    }

    unsigned long shown() const { return shown_; }
    unsigned long faulty() const { return faulty_; }
    unsigned long drawn() const { return drawn_; }
    unsigned long errors() const { return errors_; }
    unsigned long silent() const { return silent_; }
    unsigned long cutShort() const { return cutShort_; }
    unsigned long wrong() const { return wrong_; }

 private:
    /// How many views are left.
    std::size_t look() {
        for (const auto& showing : showings_)
            showing->maybeLetGo(random_);
        std::erase_if(showings_, [this](const auto& showing) {
            if (showing->isOver()) count(*showing);
            return showing->isOver();
        });
        return showings_.size();
    }

    void count(const Showing& showing) {
        ++shown_;
        faulty_ += showing.isFaulty();
        const auto heard = showing.heard();
        ++(showing.wasCutShort() ? cutShort_
           : heard.empty()       ? silent_
           : heard == "D"        ? drawn_
                                 : errors_);
        if (showing.isRight()) return;
        ++wrong_;
        std::fprintf(stderr, "soak: %s\n", showing.description().c_str());
    }

    [[noreturn]] void reportStuck() const {
        for (const auto& showing : showings_)
            std::fprintf(stderr, "soak: %s\n", showing->description().c_str());
        fail("no view has ended for too long");
    }

    Random random_;
    std::vector<std::shared_ptr<Showing>> showings_;
    unsigned long shown_ = 0;
    unsigned long faulty_ = 0;
    unsigned long drawn_ = 0;
    unsigned long errors_ = 0;
    unsigned long silent_ = 0;
    unsigned long cutShort_ = 0;
    unsigned long wrong_ = 0;
};

int run(std::size_t ads, unsigned seed) {
    auto& limits = platform::UrlSessionLimits::shared();
    limits.total = std::chrono::seconds(5);
    limits.body = std::size_t{1} << 20;

    Server server;
    const LibraryFolder folder(server.requestUrlFormat());
    QElapsedTimer time;
    time.start();
    std::printf("seed %u\n", seed);
    std::fflush(stdout);

    Soak soak(seed);
    const std::size_t warmUp =
        std::max<std::size_t>(ads / 10, std::min<std::size_t>(ads / 2, 1000));
    soak.show(warmUp);
    const auto before = Holdings::now();
    soak.show(ads - warmUp);
    const long connections = static_cast<long>(limits.transfers);
    Holdings after;
    const bool holdsNoMore = waitFor([&] {
        after = Holdings::now();
        return after.areNoMoreThan(before, connections);
    });

    std::printf(
        "| %lu | %lu | %.1f | %lu | %lu | %lu | %lu | %lu | %+ld KiB | %ld → %ld | %ld → %ld | %ld "
        "→ %ld "
        "|\n",
        soak.shown(), soak.faulty(), static_cast<double>(time.elapsed()) / 60'000, soak.drawn(),
        soak.errors(), soak.silent(), soak.cutShort(), soak.wrong(),
        (after.heap - before.heap) / 1024, before.sockets, after.sockets, before.otherDescriptors,
        after.otherDescriptors, before.threads, after.threads);
    if (soak.wrong() > 0) fail("wrong outcomes");
    if (!holdsNoMore) fail("the process holds more than before");
    return 0;
}

unsigned long number(const char* text) {
    char* end = nullptr;
    const unsigned long value = std::strtoul(text, &end, 10);
    if (end == text || *end != '\0' || value == 0) fail(std::string("not a number: ") + text);
    return value;
}

}  // namespace
}  // namespace VexmoraSDK

// What fontconfig has loaded it keeps.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

int main(int argc, char** argv) {
    const QGuiApplication app(argc, argv);
    std::size_t ads = 2000;
    unsigned seed = 1;
    const option known[] = {
        {"ads", required_argument, nullptr, 'a'}, {"seed", required_argument, nullptr, 's'}, {}};
    for (int found; (found = getopt_long(argc, argv, "", known, nullptr)) != -1;) {
        switch (found) {
            case 'a': ads = VexmoraSDK::number(optarg); break;
            case 's': seed = static_cast<unsigned>(VexmoraSDK::number(optarg)); break;
            default: return 2;
        }
    }
    return VexmoraSDK::run(ads, seed);
}
