// SPDX-License-Identifier: MIT
#include <QtCore/QPointer>

#include "VexmoraSDK/quick/VexmoraAdItem.h"
#include "VexmoraSDK/quick/VexmoraScreenItem.h"
#include "tests/qt/presenters/Presenters.h"
#include "tests/qt/quick/Scene.h"

namespace VexmoraSDK {
namespace {

class QuickPresenters final : public Presenters {
 public:
    QuickPresenters() {
        scene_.window().requestActivate();
        App::waitFor([&] { return scene_.window().isActive(); });
        button_->setAcceptTouchEvents(true);
        button_->forceActiveFocus();
        recordInputsOf(button_);
        addScreen();
    }

    QObject* addAd(View view) override {
        auto* ad = new VexmoraAdItem(scene_.window().contentItem());
        ad->setPosition({10, 20});
        ad->setSize({380, 100});
        ad->setView(std::move(view));
        return ad;
    }
    void setView(QObject* ad, View view) override {
        qobject_cast<VexmoraAdItem*>(ad)->setView(std::move(view));
    }
    QSizeF sizeOf(QObject* ad) override {
        const auto* item = qobject_cast<QQuickItem*>(ad);
        return {item->implicitWidth(), item->implicitHeight()};
    }

    AdSlot* slotOf(QObject* ad) override { return &qobject_cast<VexmoraAdItem*>(ad)->ad()->slot(); }
    void listen(QObject* ad, std::function<void(const char*)> hear) override {
        auto* const item = qobject_cast<VexmoraAdItem*>(ad);
        QObject::connect(item->ad(), &VexmoraAd::adChanged, item, [hear] { hear("adChanged"); });
        listenTo(item, hear);
    }
    void moveAd(QObject* ad, QPoint to) override { qobject_cast<QQuickItem*>(ad)->setPosition(to); }
    Qt::CursorShape cursorAt(QPoint) override { return scene_.window().cursor().shape(); }
    void cover(bool covers) override { cover_->setVisible(covers); }

    QObject* screen() override { return screen_.data(); }
    void addScreen() override {
        screen_ = new VexmoraScreenItem(button_);
        EXPECT_TRUE(screen_->isFocusScope());
        screen_->setSize({400, 300});
    }
    bool present(View view) override { return screen_->present(std::move(view)); }
    bool presentAd(QObject* ad) override {
        return screen_->present(qobject_cast<VexmoraAdItem*>(ad));
    }
    bool isPresenting() override { return screen_->isPresenting(); }
    void close() override { screen_->close(); }
    void setInsets(int top, int right) override {
        screen_->setTopInset(top);
        screen_->setRightInset(right);
    }

    void onPresentingChanged(std::function<void()> act) override {
        QObject::connect(screen_, &VexmoraScreenItem::presentingChanged, std::move(act));
    }

    QWindow* window() override { return &scene_.window(); }
    void resize(QSize size) override { screen_->setSize(size); }
    void mirror() override { scene_.mirror(); }
    void setScale(int scale) override { scene_.show(QGuiApplication::screens().at(scale - 1)); }
    QColor colorAt(double x, double y) override { return scene_.colorAt(x, y); }
    QObject* focused() override { return scene_.window().activeFocusItem(); }

    int clicks() override { return button_->property("clicks").toInt(); }
    int escapes() override { return button_->property("escapes").toInt(); }

 private:
    Scene scene_;
    QQuickItem* const button_ = scene_.add(R"(MouseArea {
        id: button; property int clicks; property int escapes
        width: 400; height: 300
        acceptedButtons: Qt.AllButtons
        cursorShape: Qt.IBeamCursor
        onClicked: ++clicks
        onWheel: {}
        Shortcut { sequence: "Escape"; onActivated: ++button.escapes }
    })");
    QQuickItem* const cover_ =
        scene_.add("Rectangle { x: 200; width: 200; height: 300; z: 1; visible: false }");
    QPointer<VexmoraScreenItem> screen_;
};

}  // namespace

std::unique_ptr<Presenters> Presenters::ofQuick() {
    return std::make_unique<QuickPresenters>();
}

}  // namespace VexmoraSDK
