// SPDX-License-Identifier: MIT
#include <QtCore/QSignalMapper>
#include <QtGui/QFontMetrics>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "benchmarks/AdKind.h"
#include "benchmarks/FloorView.h"
#include "benchmarks/Measure.h"
#include "benchmarks/QtFloor.h"
#include "benchmarks/TrustedCertificate.h"

namespace VexmoraSDK::benchmarks {
namespace {

namespace json = boost::json;

using Options = std::map<std::string, std::string, std::less<>>;

[[noreturn]] void refuse(const std::string& reason) {
    std::cerr << "vexmora-bench: " << reason << '\n';
    std::exit(2);
}

int number(const Options& options, std::string_view name) {
    const auto found = options.find(name);
    if (found == options.end()) refuse("--" + std::string(name) + " is missing");
    return std::atoi(found->second.c_str());
}

/// The image that all ads are painted on.
QImage& canvas(QSize size) {
    static QImage canvas;
    if (canvas.size() != size) canvas = QImage(size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
}

void paint(VexmoraView& view) {
    const auto [width, height] = view.frame().size;
    QPainter painter(&canvas(QSizeF(width, height).toSize()));
    platform::paintView(painter, view);
}

void paint(const FloorView& view) {
    QPainter painter(&canvas(view.size()));
    view.paint(painter);
}

/// The costs of each ad of one contender.
struct Times {
    Samples received;  ///< Until the app was told of the ad.
    Samples painted;
    Samples main;     ///< Processor time of the main thread, painting included.
    Samples wakeUps;  ///< The wake-ups of all threads.

    /// Adds an ad that was requested when `watch` began and is painted now.
    void add(Milliseconds receivedAfter, const Stopwatch& watch) {
        painted.add(watch.passed());
        main.add(watch.worked());
        received.add(receivedAfter);
        wakeUps.add(watch.wakeUps());
    }

    json::object json() const {
        return {{"received", received.json()},
                {"painted", painted.json()},
                {"main", main.json()},
                {"wakeUps", wakeUps.json()}};
    }
};

std::shared_ptr<VexmoraDelegate> delegateThat(std::function<void()> receives) {
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [receives = std::move(receives)](VexmoraView&) { receives(); };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError& error) {
        std::cerr << "error " << static_cast<int>(error.code());
        if (error.userInfo()) {
            for (const auto& [key, value] : *error.userInfo()) {
                if (const auto* text = value.as<std::string>()) std::cerr << ' ' << *text;
            }
        }
        std::cerr << '\n';
        std::_Exit(1);
    };
    return delegate;
}

/// With the option "pictures", ads of that many placements take turns, each with a cacheable
/// picture of its own.
void choosePlacement(const Options& options, int turn) {
    if (!options.contains("pictures")) return;
    AdKind::container = "kept-" + std::to_string(turn % number(options, "pictures"));
}

void showSdkAd(const AdKind& kind, Times& times) {
    const Stopwatch watch;
    std::optional<Milliseconds> received;
    const auto view = kind.createView(delegateThat([&] { received = watch.passed(); }));
    runUntil([&] { return received.has_value(); });
    paint(*view);
    times.add(*received, watch);
}

void showFloorAd(QtFloor& floor, const AdKind& kind, Times& times) {
    const Stopwatch watch;
    std::optional<FloorView> view;
    std::optional<Milliseconds> received;
    floor.fetch(kind.address(), [&](QtFloor::Ad ad) {
        view.emplace(kind, std::move(ad));
        received = watch.passed();
    });
    runUntil([&] { return received.has_value(); });
    paint(*view);
    times.add(*received, watch);
}

using Contender = std::pair<std::string_view, std::function<void(Times&)>>;

/// Shows one ad after the other. The contenders take turns, so that other load of the machine
/// affects them alike. With the option "only", one of them runs alone.
json::object inTurn(const Options& options, const std::vector<Contender>& contenders) {
    constexpr int kWarmUp = 5;
    const auto only = options.find("only");
    std::map<std::string_view, Times> times;
    for (int i = -kWarmUp; i < number(options, "count"); ++i) {
        for (const auto& [name, show] : contenders) {
            if (only != options.end() && only->second != name) continue;
            Times ignored;
            show(i < 0 ? ignored : times[name]);
            settle();
        }
    }
    json::object result;
    for (const auto& [name, taken] : times)
        result[name] = taken.json();
    return result;
}

json::object oneByOne(const Options& options) {
    const AdKind& kind = AdKind::named(options.at("kind"));
    QtFloor floor;
    return inTurn(options, {{"sdk", [&](Times& times) { showSdkAd(kind, times); }},
                            {"floor", [&](Times& times) { showFloorAd(floor, kind, times); }}});
}

/// A scene that shows one page after the other, with the SDK's item or with one written by hand.
class Scene {
 public:
    Scene(const AdKind& kind, const std::string& folder) : kind_(kind) {
        QObject::connect(&ready_, &QSignalMapper::mappedInt,
                         [this] { received_ = watch_->passed(); });
        window_.resize(AdKind::screenSize());
        window_.show();
        for (const auto* name : {"SdkPage", "HandWrittenPage"}) {
            const auto file = QString::fromStdString(folder + '/' + name + ".qml");
            auto& component = components_.emplace_back(
                std::make_unique<QQmlComponent>(&engine_, QUrl::fromLocalFile(file)));
            if (!component->isReady()) refuse(component->errorString().toStdString());
        }
    }

    void show(std::size_t which, Times& times) {
        const QVariantMap properties = {
            {QStringLiteral("address"), QString::fromStdString(kind_.address())},
            {QStringLiteral("adType"), static_cast<int>(kind_.adType)},
            {QStringLiteral("parent"), QVariant::fromValue(window_.contentItem())}};
        const Stopwatch watch;
        received_.reset();
        watch_ = &watch;
        const std::unique_ptr<QObject> page(
            components_[which]->createWithInitialProperties(properties));
        ready_.setMapping(page.get(), 0);
        QObject::connect(page.get(), SIGNAL(ready()), &ready_, SLOT(map()));
        runUntil([&] { return received_.has_value(); });
        waitForFrame();
        times.add(*received_, watch);
    }

    void waitForFrame() {
        bool shown = false;
        const auto connection =
            QObject::connect(&window_, &QQuickWindow::frameSwapped, [&] { shown = true; });
        window_.update();
        runUntil([&] { return shown; });
        QObject::disconnect(connection);
    }

 private:
    const AdKind& kind_;
    QSignalMapper ready_;  // A signal of QML cannot be connected to a function.
    QQmlEngine engine_;
    QQuickWindow window_;
    std::vector<std::unique_ptr<QQmlComponent>> components_;
    const Stopwatch* watch_ = nullptr;
    std::optional<Milliseconds> received_;
};

/// The floor takes turns too, though it shows nothing in the scene, so that its caches are as cold
/// as the others' after the wait for a frame.
json::object inScenes(const Options& options) {
    const AdKind& kind = AdKind::named(options.at("kind"));
    Scene scene(kind, options.at("qml"));
    QtFloor floor;
    return inTurn(options, {{"sdk", [&](Times& times) { scene.show(0, times); }},
                            {"qml", [&](Times& times) { scene.show(1, times); }},
                            {"floor", [&](Times& times) {
                                 showFloorAd(floor, kind, times);
                                 scene.waitForFrame();
                             }}});
}

/// The costs of showing many ads at once.
struct Burst {
    Samples passed;
    Samples created;  ///< Processor time of the calls of `createView`.
    Samples main;     ///< Processor time of the main thread after these calls.
    Samples longest;
    Samples process;  ///< Processor time of all threads.
    Samples lostFrames;

    /// Adds a burst whose ads were requested when `watch` began and are all there now.
    void add(const Stopwatch& watch, Milliseconds calls, MainThreadStalls& stalls) {
        stalls.tick();
        passed.add(watch.passed());
        created.add(calls);
        main.add(watch.worked() - calls);
        longest.add(stalls.longest());
        process.add(watch.workedByAll());
        lostFrames.add(long{stalls.lostFrames()});
    }

    json::object json() const {
        return {{"passed", passed.json()},   {"created", created.json()},
                {"main", main.json()},       {"longest", longest.json()},
                {"process", process.json()}, {"lostFrames", lostFrames.json()}};
    }
};

using Views = std::vector<std::shared_ptr<VexmoraView>>;

Views showAtOnce(const Options& options, const AdKind& kind, int count, Burst* burst) {
    Views views;
    int received = 0;
    const auto delegate = delegateThat([&] { ++received; });
    const Stopwatch watch;
    for (int i = 0; i < count; ++i) {
        choosePlacement(options, i);
        views.push_back(kind.createView(delegate));
    }
    const auto created = watch.worked();
    MainThreadStalls stalls;
    runUntil([&] { return received == count; });
    if (burst) burst->add(watch, created, stalls);
    return views;
}

void showByHandAtOnce(const Options& options, QtFloor& floor, const AdKind& kind, int count,
                      Burst* burst) {
    std::deque<FloorView> views;
    const Stopwatch watch;
    for (int i = 0; i < count; ++i) {
        choosePlacement(options, i);
        floor.fetch(kind.address(),
                    [&](QtFloor::Ad ad) { views.emplace_back(kind, std::move(ad)); });
    }
    const auto created = watch.worked();
    MainThreadStalls stalls;
    runUntil([&] { return views.size() == static_cast<std::size_t>(count); });
    if (burst) burst->add(watch, created, stalls);
}

json::object atOnce(const Options& options) {
    const AdKind& kind = AdKind::named(options.at("kind"));
    const int views = number(options, "views");
    QtFloor floor;
    Burst sdk;
    Burst byHand;
    showAtOnce(options, kind, 1, nullptr);
    showByHandAtOnce(options, floor, kind, 1, nullptr);
    settle();
    for (int round = 0; round < number(options, "rounds"); ++round) {
        showAtOnce(options, kind, views, &sdk);
        settle();
        showByHandAtOnce(options, floor, kind, views, &byHand);
        settle();
    }
    return {{"sdk", sdk.json()}, {"floor", byHand.json()}, {"threads", threads()}};
}

json::object inMemory(const Options& options) {
    const AdKind& kind = AdKind::named(options.at("kind"));
    const int count = number(options, "views");
    const auto threadsBefore = threads();
    { const auto warm = showAtOnce(options, kind, std::min(count, 64), nullptr); }
    settle();
    json::array rounds;
    for (int round = 0; round < number(options, "rounds"); ++round) {
        const auto heapBefore = liveHeap();
        const auto pssBefore = residentBytes("Pss");
        const auto rssBefore = residentBytes("Rss");
        auto views = showAtOnce(options, kind, count, nullptr);
        settle();
        const auto heapWith = liveHeap();
        const auto pssWith = residentBytes("Pss");
        const auto rssWith = residentBytes("Rss");
        views.clear();
        settle();
        rounds.push_back({{"heapBefore", heapBefore},
                          {"heapWith", heapWith},
                          {"heapAfter", liveHeap()},
                          {"pssBefore", pssBefore},
                          {"pssWith", pssWith},
                          {"pssAfter", residentBytes("Pss")},
                          {"rssBefore", rssBefore},
                          {"rssWith", rssWith},
                          {"rssAfter", residentBytes("Rss")}});
    }
    return {{"rounds", rounds}, {"threadsBefore", threadsBefore}, {"threadsAfter", threads()}};
}

/// The first ad of a process, by one contender: how long the call took, and the time until the ad
/// was painted. With the option "text", the app has shown a text before.
json::object first(const Options& options) {
    const AdKind& kind = AdKind::named(options.at("kind"));
    const auto& contender = options.at("only");
    if (const auto file = options.find("certificate"); file != options.end())
        trustCertificate(file->second);
    Times times;
    if (contender == "qml") {
        Scene scene(kind, options.at("qml"));
        scene.show(1, times);
        return times.json();
    }
    if (options.contains("text")) QFontMetrics(QGuiApplication::font()).horizontalAdvance(u'x');
    const Stopwatch watch;
    Milliseconds called{};
    bool received = false;
    std::shared_ptr<VexmoraView> view;
    std::unique_ptr<QtFloor> floor;
    std::optional<FloorView> floorView;
    if (contender == "sdk") {
        view = kind.createView(delegateThat([&] { received = true; }));
        called = watch.worked();
    } else {
        floor = std::make_unique<QtFloor>();
        floor->fetch(kind.address(), [&](QtFloor::Ad ad) {
            floorView.emplace(kind, std::move(ad));
            received = true;
        });
        called = watch.worked();
    }
    runUntil([&] { return received; });
    const auto receivedAfter = watch.passed();
    if (view) paint(*view);
    if (floorView) paint(*floorView);
    times.add(receivedAfter, watch);
    auto result = times.json();
    result["called"] = {called.count()};
    return result;
}

}  // namespace
}  // namespace VexmoraSDK::benchmarks

int main(int argc, char** argv) {
    using namespace VexmoraSDK::benchmarks;
    const std::map<std::string_view, boost::json::object (*)(const Options&)> modes = {
        {"one-by-one", oneByOne},
        {"scenes", inScenes},
        {"at-once", atOnce},
        {"memory", inMemory},
        {"first", first}};
    const auto mode = argc > 1 ? modes.find(argv[1]) : modes.end();
    if (mode == modes.end()) refuse("expected one-by-one, scenes, at-once, memory or first");
    Options options;
    for (int i = 2; i + 1 < argc; i += 2)
        options.emplace(std::string_view(argv[i]).substr(2), argv[i + 1]);
    if (options.contains("container")) AdKind::container = options.at("container");
    QGuiApplication app(argc, argv);
    VexmoraSDK::platform::Bundle::setLibraryFolder(options.at("library"));
    std::cout << boost::json::serialize(mode->second(options)) << std::endl;
    return 0;
}
