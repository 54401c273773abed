// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtGui/QGuiApplication>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <optional>

#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Json.h"
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/quick/Accessibility.h"
#include "VexmoraSDK/quick/VexmoraAdItem.h"
#include "VexmoraSDK/views/AdViewHandler.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "benchmarks/AdKind.h"
#include "benchmarks/AnsweringUrlSession.h"
#include "benchmarks/Measure.h"

namespace VexmoraSDK::benchmarks {
namespace {

using platform::Data;

/// An operation to measure, and the number of bytes that it reads.
struct Operation {
    std::string name;
    std::function<void()> run;
    std::size_t bytes = 0;
};

Data fileContents(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QFile::ReadOnly)) {
        std::cerr << "cannot read " << path << '\n';
        std::exit(2);
    }
    const QByteArray bytes = file.readAll();
    return platform::dataOf({bytes.data(), static_cast<std::size_t>(bytes.size())});
}

std::string record(const AdKind& kind) {
    const auto adType = std::to_string(static_cast<long>(kind.adType));
    return R"({"adTypeId":)" + adType + R"(,"clickUrl":"http://127.0.0.1/landing/plants?window",)" +
           R"("bannerUrl":"http://127.0.0.1/)" + std::string(kind.name) + R"(","displayName":)" +
           R"("Solstice Gardens","title":"A green corner for the darkest room","description":)" +
           R"("Snake plants, cast-iron plants and ferns that forgive a missed week. Each comes )" +
           R"(potted in clay, with a card that says where to put it and when to water it."})";
}

std::string answerOf(const AdKind& kind, int ads) {
    std::string answer;
    for (int i = 0; i < ads; ++i)
        answer.append(i == 0 ? "[" : ",").append(record(kind));
    return answer.append("]");
}

std::shared_ptr<VexmoraView> showAd(const AdKind& kind) {
    bool received = false;
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [&](VexmoraView&) { received = true; };
    auto view = kind.createView(std::move(delegate));
    runUntil([&] { return received; });
    return view;
}

/// Shows the ad in a host that uses a slot.
void showAdInSlot(const AdKind& kind) {
    bool received = false;
    AdSlot::Delegate delegate;
    delegate.didReceiveAd = [&](VexmoraView&) { received = true; };
    AdSlot slot(std::move(delegate));
    slot.setPlacement({kind.container, "", kind.adType, {}});
    slot.setVisibleFraction(1);
    slot.wake();
    runUntil([&] { return received; });
}

/// An ad in a scene of Qt Quick, from the making of its item until it is painted. The window is not
/// shown, so that one frame is painted, and no other for an item that has no ad yet.
class SceneAd {
 public:
    SceneAd() {
        // As in an app, whose pages import QtQuick.
        QQmlComponent(&engine_).setData("import QtQuick\nItem {}", QUrl());
        window_.resize(320, 60);
    }

    /// A view of the factory's, in an item that is a link to screen readers and nothing else.
    void showView(const AdKind& kind) {
        struct Link : ViewItem {
            explicit Link(QQuickItem* parent) : ViewItem(parent) { Link::updateAccessibility(); }
            using ViewItem::show;
            void updateAccessibility() override {
                auto* const link = accessible.update(
                    this, QAccessible::Link, translated("Advertisement"), false, {this, "press()"});
                if (link) link->setProperty("focusable", activeFocusOnTab());
            }
            AccessibleItem accessible;
        } item(window_.contentItem());
        bool received = false;
        auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [&](VexmoraView&) { received = true; };
        item.show(kind.createView(std::move(delegate)));
        runUntil([&] { return received; });
        item.updateAccessibility();
        paint(item);
    }

    /// An item that asks for the ad and sees to it.
    void showItem(const AdKind& kind) {
        VexmoraAdItem item(window_.contentItem());
        item.setContainerId(QString::fromStdString(kind.container));
        item.setAdType(int(kind.adType));
        runUntil([&] { return item.status() == Vexmora::Status::Ready; });
        paint(item);
    }

 private:
    void paint(QQuickItem& item) {
        item.setSize({item.implicitWidth(), item.implicitHeight()});
        window_.grabWindow();
    }

    QQmlEngine engine_;
    QQuickWindow window_;
};

Operation painting(std::string name, const AdKind& kind, int scale) {
    const auto view = showAd(kind);
    const auto [width, height] = view->frame().size;
    QImage picture(QSizeF(width * scale, height * scale).toSize(),
                   QImage::Format_ARGB32_Premultiplied);
    const auto bytes = static_cast<std::size_t>(picture.sizeInBytes());
    return {std::move(name),
            [view, picture, scale]() mutable {
                picture.fill(Qt::transparent);
                QPainter painter(&picture);
                painter.scale(scale, scale);
                platform::paintView(painter, *view);
            },
            bytes};
}

/// Builds a view whose request never completes.
Operation buildingView(const AdKind& kind) {
    return {"build view: " + std::string(kind.name), [adType = kind.adType] {
                VexmoraViewFactory::createView("unanswered", adType, nullptr);
            }};
}

template <class Ad>
Operation buildingModel(const AdKind& kind) {
    auto ad = Utils::parseAdJson(platform::dataOf(answerOf(kind, 1))).front();
    ad["bannerUrl"] = "http://127.0.0.1/unanswered";
    return {"build model: " + std::string(kind.name),
            [ad = std::move(ad)] { AdFactory::createAd<Ad>(ad); }};
}

struct Observer : platform::Object {
    std::string_view className() const override { return "Observer"; }
    Method method(std::string_view) const override {
        return [](Object&, Object*) {};
    }
};

Operation posting(std::string name, int observers) {
    auto& center = platform::NotificationCenter::defaultCenter();
    std::vector<std::shared_ptr<Observer>> objects;
    for (int i = 0; i < observers; ++i) {
        objects.push_back(std::make_shared<Observer>());
        center.addObserver(objects.back(), "heard:", "benchmark", objects.back());
    }
    return {std::move(name),
            [&center, objects] { center.post("benchmark", objects[objects.size() / 2]); }};
}

std::vector<Operation> operations(const std::string& pictures) {
    const AdKind& banner = AdKind::named("banner");
    const AdKind& native = AdKind::named("native");
    const std::map<std::string_view, Data> creatives = {
        {"banner", fileContents(pictures + "/harbour-coffee-320x60.png")},
        {"native", fileContents(pictures + "/solstice-gardens-native.jpg")},
        {"interstitial", fileContents(pictures + "/solstice-gardens-300x250.jpg")}};

    std::vector<Operation> all;
    for (const AdKind& kind : AdKind::all()) {
        answer(kind.address(), platform::dataOf(answerOf(kind, 1)));
        answer("http://127.0.0.1/" + std::string(kind.name), creatives.at(kind.name));
        all.push_back({"whole ad: " + std::string(kind.name), [&kind] { showAd(kind); }});
    }
    all.push_back({"whole ad in a slot: banner", [&banner] { showAdInSlot(banner); }});
    const auto scene = std::make_shared<SceneAd>();
    all.push_back({"banner in a scene, view", [&banner, scene] { scene->showView(banner); }});
    all.push_back({"banner in a scene, item", [&banner, scene] { scene->showItem(banner); }});
    for (const auto& [name, bytes] : creatives) {
        all.push_back(
            {"decode: " + std::string(name),
             [bytes = bytes] { benchmark::DoNotOptimize(platform::Image::fromData(bytes)); },
             bytes.size()});
    }
    for (const int ads : {1, 100}) {
        const Data body = platform::dataOf(answerOf(native, ads));
        all.push_back({"parse: " + std::to_string(ads) + (ads == 1 ? " ad" : " ads"),
                       [body] { benchmark::DoNotOptimize(Utils::parseAdJson(body)); },
                       body.size()});
    }
    for (const AdKind& kind : AdKind::all())
        all.push_back(buildingView(kind));
    all.push_back(buildingModel<Banner>(banner));
    all.push_back(buildingModel<Native>(native));
    const std::string description =
        Utils::parseAdJson(platform::dataOf(answerOf(native, 1))).front().at("description");
    const auto font = platform::Font::named("Helvetica", 12).value();
    all.push_back({"address", [] {
                       benchmark::DoNotOptimize(platform::Url::fromString(
                           "http://127.0.0.1:8080/ads?container=home-bottom&types=77,83,84"));
                   }});
    all.push_back({"find font",
                   [] { benchmark::DoNotOptimize(platform::Font::named("Helvetica-Bold", 13)); }});
    all.push_back({"lay out text",
                   [description, font] { platform::TextLayout(description, font, 178).size(); },
                   description.size()});
    all.push_back({"lay out native ad", [description] {
                       const auto view = VexmoraNativeView::create();
                       const auto& handler = *view->vexmoraDelegate();
                       const platform::Rect frame{{135, 0}, {188, 20}};
                       handler.addTextView(*view, frame, Utils::nativeTitleFont, "A green corner");
                       handler.addTextView(*view, frame, Utils::nativeDescriptionFont, description);
                       handler.addTextView(*view, frame, Utils::nativeDisplayNameFont, "Gardens");
                       view->sizeToFit();
                   }});
    all.push_back(painting("paint banner", banner, 1));
    all.push_back(painting("paint native", native, 1));
    all.push_back(painting("paint native at 2x", native, 2));
    all.push_back(painting("paint interstitial", AdKind::named("interstitial"), 1));
    all.push_back(posting("notify: 1 observer", 1));
    all.push_back(posting("notify: 10,000 observers", 10'000));
    return all;
}

QImage readByQt(const Data& bytes) {
    QByteArray data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                              static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    return QImageReader(&buffer).read();
}

/// Each picture of a folder, decoded by the library and by Qt.
std::vector<Operation> decoders(const std::string& pictures) {
    std::vector<Operation> all;
    for (const auto& file : std::filesystem::directory_iterator(pictures)) {
        const auto name = file.path().filename().string();
        const Data bytes = fileContents(file.path().string());
        all.push_back({"codec: " + name,
                       [bytes] { benchmark::DoNotOptimize(platform::Image::fromData(bytes)); }});
        all.push_back({"QImageReader: " + name, [bytes] { readByQt(bytes); }});
    }
    return all;
}

/// Counts the instructions of one run; the program must run under callgrind.
void count(const Operation& operation) {
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        operation.run();
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    operation.run();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(operation.name.c_str());
}

}  // namespace
}  // namespace VexmoraSDK::benchmarks

/// `vexmora-micro LIBRARY PICTURES count` counts instructions under callgrind; without "count",
/// Google Benchmark measures time, and that of decoding each of the pictures.
int main(int argc, char** argv) {
    using namespace VexmoraSDK::benchmarks;
    if (argc < 3) {
        std::cerr << "expected the library's folder and that of the pictures\n";
        return 2;
    }
    QGuiApplication app(argc, argv);
    VexmoraSDK::platform::Bundle::setLibraryFolder(argv[1]);
    auto all = operations(argv[2]);
    if (argc > 3 && std::string_view(argv[3]) == "count") {
        for (const auto& operation : all)
            count(operation);
        return 0;
    }
    std::ranges::move(decoders(argv[2]), std::back_inserter(all));
    for (const auto& operation : all) {
        const auto run = [&operation](benchmark::State& state) {
            for (auto _ : state)
                operation.run();
            if (operation.bytes > 0) {
                state.SetBytesProcessed(state.iterations() *
                                        static_cast<std::int64_t>(operation.bytes));
            }
        };
        benchmark::RegisterBenchmark(operation.name.c_str(), run);
    }
    argc -= 2;
    argv[2] = argv[0];
    benchmark::Initialize(&argc, argv + 2);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
