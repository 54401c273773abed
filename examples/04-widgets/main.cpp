#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <cstdio>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/widgets/VexmoraWidget.h"
#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"

using namespace VexmoraSDK;

// A banner among widgets, and an interstitial ad over all of them.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    auto* screen = new VexmoraWidgetScreen(&window);
    std::shared_ptr<VexmoraView> interstitial;

    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [&](VexmoraView& view) {
        if (&view == interstitial.get()) screen->present(interstitial);
    };
    delegate->didDismissScreen = [](VexmoraView&) { std::puts("didDismissScreen"); };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError& error) {
        std::printf("didHaveError, code %td\n", error.code());
    };

    auto* next = new QPushButton("Next article");
    QObject::connect(next, &QPushButton::clicked, [&] {
        interstitial = VexmoraViewFactory::createView("between-articles", "300x250", delegate);
        interstitial->setFrame(screen->viewFrame());
    });

    const auto banner = VexmoraViewFactory::createView("home-bottom", "320x60", nullptr);
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel("<h1>Ferry back in service</h1>"), 1, Qt::AlignTop);
    layout->addWidget(next);
    layout->addWidget(new VexmoraWidget(banner), 0, Qt::AlignCenter);
    window.resize(360, 560);
    window.show();
    return QApplication::exec();
}
