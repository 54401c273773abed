// SPDX-License-Identifier: MIT
#include <QtCore/QPointer>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include "VexmoraSDK/widgets/VexmoraWidget.h"
#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"
#include "tests/App.h"
#include "tests/qt/presenters/Presenters.h"

namespace VexmoraSDK {
namespace {

class WidgetPresenters final : public Presenters {
 public:
    WidgetPresenters() {
        window_.setPalette(Qt::white);
        window_.resize(400, 300);
        button_->setFlat(true);
        button_->setAttribute(Qt::WA_AcceptTouchEvents);
        button_->resize(400, 300);
        button_->setCursor(Qt::IBeamCursor);
        QObject::connect(button_, &QPushButton::clicked, [this] { ++clicks_; });
        QObject::connect(&shortcut_, &QShortcut::activated, [this] { ++escapes_; });
        window_.show();
        window_.activateWindow();
        App::waitFor([&] { return window_.isActiveWindow(); });
        button_->setFocus();
        recordInputsOf(button_);
        cover_->hide();
        addScreen();
    }

    QObject* addAd(View view) override {
        auto* ad = new VexmoraWidget(std::move(view), &window_);
        ad->move(10, 20);
        ad->resize(380, 100);
        ad->show();
        return ad;
    }
    void setView(QObject* ad, View view) override {
        qobject_cast<VexmoraWidget*>(ad)->setView(std::move(view));
    }
    QSizeF sizeOf(QObject* ad) override { return qobject_cast<VexmoraWidget*>(ad)->sizeHint(); }

    AdSlot* slotOf(QObject* ad) override { return &qobject_cast<VexmoraWidget*>(ad)->slot(); }
    void listen(QObject* ad, std::function<void(const char*)> hear) override {
        auto* const widget = qobject_cast<VexmoraWidget*>(ad);
        QObject::connect(widget, &VexmoraWidget::adChanged, widget, [hear] { hear("adChanged"); });
        listenTo(widget, hear);
    }
    void moveAd(QObject* ad, QPoint to) override { qobject_cast<QWidget*>(ad)->move(to); }
    Qt::CursorShape cursorAt(QPoint point) override {
        return window_.childAt(point)->cursor().shape();
    }
    void cover(bool covers) override {
        cover_->setAutoFillBackground(true);
        cover_->setGeometry(200, 0, 200, 300);
        cover_->setVisible(covers);
        cover_->raise();
    }

    QObject* screen() override { return screen_.data(); }
    void addScreen() override { screen_ = new VexmoraWidgetScreen(button_); }
    bool present(View view) override { return screen_->present(std::move(view)); }
    bool presentAd(QObject* ad) override {
        return screen_->present(qobject_cast<VexmoraWidget*>(ad));
    }
    bool isPresenting() override { return screen_->isPresenting(); }
    void close() override { screen_->close(); }
    void setInsets(int top, int right) override { screen_->setContentsMargins(0, top, right, 0); }

    void onPresentingChanged(std::function<void()> act) override {
        QObject::connect(screen_, &VexmoraWidgetScreen::presentingChanged, std::move(act));
    }

    QWindow* window() override { return window_.windowHandle(); }
    void resize(QSize size) override { button_->resize(size); }
    void mirror() override { window_.setLayoutDirection(Qt::RightToLeft); }
    void setScale(int scale) override { scale_ = scale; }
    QColor colorAt(double x, double y) override {
        QImage picture(window_.size() * scale_, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale_);
        window_.render(&picture);
        return picture.pixelColor(int(x * scale_), int(y * scale_));
    }
    QObject* focused() override { return QApplication::focusWidget(); }

    int clicks() override { return clicks_; }
    int escapes() override { return escapes_; }

 private:
    int scale_ = 1;
    int clicks_ = 0;
    int escapes_ = 0;
    QWidget window_;
    QPushButton* const button_ = new QPushButton(&window_);
    QWidget* const cover_ = new QWidget(&window_);
    QShortcut shortcut_{Qt::Key_Escape, &window_};
    QPointer<VexmoraWidgetScreen> screen_;
};

}  // namespace

std::unique_ptr<Presenters> Presenters::ofWidgets() {
    return std::make_unique<WidgetPresenters>();
}

}  // namespace VexmoraSDK
