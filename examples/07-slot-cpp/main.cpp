// SPDX-License-Identifier: MIT
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/presenting/AdSlot.h"

using namespace VexmoraSDK;

// Makes the library ask another ad server: copies the shipped resources and writes other settings
// beside them. The template is put into XML, so an & in it is written as &amp;.
void askServer(const std::filesystem::path& folder, const std::string& requestUrlFormat) {
    std::filesystem::copy(platform::Bundle::shippedLibraryFolder(), folder,
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing);
    std::ofstream(folder / "VexmoraSettings.plist")
        << "<plist version=\"1.0\"><dict><key>requestUrlFormat</key><string>" << requestUrlFormat
        << "</string></dict></plist>";
    platform::Bundle::setLibraryFolder(folder);
}

// A native ad that the app lays out itself, without a view on the screen. This app prints it.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc == 3) askServer(argv[1], argv[2]);

    std::optional<AdSlot> slot;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&] { slot->wake(); });

    AdSlot::Delegate delegate;
    delegate.nextWakeChanged = [&] {
        const auto wait = slot->untilNextWake();
        wait ? timer.start(*wait) : timer.stop();
    };
    delegate.stateChanged = [&] {
        if (const auto& ad = slot->ad())
            std::printf("%s\n%s\n", ad->title.c_str(), ad->description.c_str());
    };
    delegate.becameViewable = [] { std::puts("becameViewable"); };
    delegate.failed = [](const AdSlot::Failure& failure) {
        std::printf("failed: %s\n", failure.description.c_str());
    };

    slot.emplace(delegate);
    AdSlot::Placement placement;
    placement.containerId = "article-native";
    placement.adType = VexmoraAdType::native;
    slot->setPlacement(placement);
    slot->setRefreshInterval(std::chrono::seconds(30));
    slot->setVisibleFraction(1);  // All of it is on the screen.

    return QGuiApplication::exec();
}
