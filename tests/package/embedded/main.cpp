// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <cstdlib>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/platform/qt/EmbeddedResources.h"

using namespace VexmoraSDK;

// Exits when the ad is there.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (!platform::useEmbeddedResources()) return EXIT_FAILURE;

    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [](VexmoraView&) { QGuiApplication::exit(EXIT_SUCCESS); };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError&) { std::_Exit(EXIT_FAILURE); };
    const auto view = VexmoraViewFactory::createView("home-bottom", "320x60", delegate);
    return QGuiApplication::exec();
}
