// SPDX-License-Identifier: MIT
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <cstdio>

#include "VexmoraSDK/widgets/VexmoraWidget.h"
#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"

using namespace VexmoraSDK;

// A banner among widgets, refreshed every half minute, and an interstitial ad over them that is
// loaded in advance.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    VexmoraWidgetScreen screen(&window);

    auto* banner = new VexmoraWidget;
    banner->setContainerId("home-bottom");
    banner->setAdSize("320x60");
    banner->setFillMode(VexmoraWidget::FillMode::Fit);
    banner->setRefreshInterval(30);
    QObject::connect(banner, &VexmoraWidget::becameViewable, [] { std::puts("becameViewable"); });
    QObject::connect(banner, &VexmoraWidget::errorChanged, [banner] {
        if (!banner->errorString().isEmpty()) std::puts(qPrintable(banner->errorString()));
    });

    // This widget is in no layout: the screen shows its ad.
    VexmoraWidget interstitial;
    interstitial.setContainerId("between-articles");
    interstitial.setAdSize("300x250");
    QObject::connect(&interstitial, &VexmoraWidget::didDismissScreen, &interstitial,
                     &VexmoraWidget::reload);

    auto* next = new QPushButton("Next article");
    QObject::connect(next, &QPushButton::clicked, [&] {
        if (screen.present(&interstitial)) return;
        // Without an ad the article comes at once.
        if (interstitial.status() != VexmoraWidget::Status::Loading) interstitial.reload();
    });

    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel("<h1>Ferry back in service</h1>"), 1, Qt::AlignTop);
    layout->addWidget(next);
    layout->addWidget(banner);
    window.resize(360, 560);
    window.show();
    return QApplication::exec();
}
