#include "VexmoraSDK/quick/VexmoraAdItem.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtQuick/QQuickWindow>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/quick/Vexmora.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"

namespace VexmoraSDK {

/// How the item hears of one view. Any thread holds it; only the main thread looks at the item,
/// which is absent once it is gone or shows another view.
struct VexmoraAdItem::Ear {
    QPointer<VexmoraAdItem> item;
};

namespace {

using platform::MainQueue;

bool isShownOnScreens(VexmoraViewType viewType) {
    return viewType == VexmoraViewType::interstitial;
}

QSizeF sizeNamed(const QString& adSize) {
    const auto kind = adViewBySize().find(adSize.toStdString());
    if (kind == adViewBySize().end() || isShownOnScreens(kind->second)) return QSizeF(0, 0);
    return QSizeF(adSize.section(QLatin1Char('x'), 0, 0).toInt(),
                  adSize.section(QLatin1Char('x'), 1, 1).toInt());
}

QString descriptionOf(const VexmoraError& error) {
    if (error.userInfo()) {
        const auto found = error.userInfo()->find(platform::kLocalizedDescriptionKey);
        if (found != error.userInfo()->end()) {
            if (const auto* text = found->second.as<std::string>())
                return QString::fromStdString(*text);
        }
    }
    const int code = static_cast<int>(error.code());
    return QLatin1String(QMetaEnum::fromType<Vexmora::ErrorCode>().valueToKey(code));
}

// The address that a tap opens. Taps come to views that have an ad.
QString clickUrlOf(VexmoraView& view) {
    if (const auto* banner = dynamic_cast<VexmoraBannerView*>(&view))
        return QString::fromStdString(banner->ad()->clickUrl().text());
    if (const auto* native = dynamic_cast<VexmoraNativeView*>(&view))
        return QString::fromStdString(native->ad()->clickUrl().text());
    return QString();
}

void runOnMainThread(std::function<void()> block) {
    auto* const queue = MainQueue::main();
    if (queue->isMainThread())
        block();
    else
        queue->async(std::move(block));
}

template <class EarPointer>
std::shared_ptr<VexmoraDelegate> delegateFor(const EarPointer& ear) {
    using Item = VexmoraAdItem;
    auto delegate = std::make_shared<VexmoraDelegate>();
    const auto tells = [&ear](void (Item::*signal)()) {
        return [ear, signal](VexmoraView&) {
            if (ear->item) Q_EMIT(ear->item->*signal)();
        };
    };
    delegate->didReceiveAd = tells(&Item::didReceiveAd);
    delegate->willShowScreen = tells(&Item::willShowScreen);
    delegate->willDismissScreen = tells(&Item::willDismissScreen);
    delegate->didDismissScreen = tells(&Item::didDismissScreen);
    delegate->willLeaveApplication = [ear](VexmoraView& view) {
        if (ear->item) Q_EMIT ear->item->willLeaveApplication(clickUrlOf(view));
    };
    delegate->didHaveError = [ear](VexmoraView&, const VexmoraError& error) {
        const int code = static_cast<int>(error.code());
        runOnMainThread([ear, code, description = descriptionOf(error)] {
            if (ear->item) Q_EMIT ear->item->didHaveError(code, description);
        });
    };
    return delegate;
}

}  // namespace

VexmoraAdItem::VexmoraAdItem(QQuickItem* parent) : ViewItem(parent) {}

VexmoraAdItem::~VexmoraAdItem() {
    stopHearing();
}

void VexmoraAdItem::setContainerId(const QString& containerId) {
    if (containerId_ == containerId) return;
    containerId_ = containerId;
    choiceChanged();
    Q_EMIT containerIdChanged();
}

void VexmoraAdItem::setAdSize(const QString& adSize) {
    if (adSize_ == adSize) return;
    adSize_ = adSize;
    const QPointer guard(this);
    // First, so that the implicit size changes once.
    setReservedSize(sizeNamed(adSize));
    if (guard) choiceChanged();
    if (guard) Q_EMIT adSizeChanged();
}

void VexmoraAdItem::setAdType(int adType) {
    if (adType_ == adType) return;
    adType_ = adType;
    choiceChanged();
    Q_EMIT adTypeChanged();
}

void VexmoraAdItem::setViewType(int viewType) {
    if (viewType_ == viewType) return;
    viewType_ = viewType;
    choiceChanged();
    Q_EMIT viewTypeChanged();
}

void VexmoraAdItem::setView(std::shared_ptr<VexmoraView> view) {
    willAskAnew_ = false;
    stopHearing();
    place(std::move(view));
}

void VexmoraAdItem::componentComplete() {
    ViewItem::componentComplete();
    if (!view()) askLater();
}

// The former view goes at once: its ad is not what the properties say now.
void VexmoraAdItem::choiceChanged() {
    stopHearing();
    place(nullptr);
    if (isComponentComplete()) askLater();
}

void VexmoraAdItem::askLater() {
    if (std::exchange(willAskAnew_, true)) return;
    // No block of the main queue, in which the request would start one turn later still.
    const auto askNow = [this] {
        if (std::exchange(willAskAnew_, false)) ask();
    };
    QMetaObject::invokeMethod(this, askNow, Qt::QueuedConnection);
}

void VexmoraAdItem::ask() {
    const auto ear = std::make_shared<Ear>(Ear{this});
    ear_ = ear;
    auto view = makeView(delegateFor(ear));
    // The host may have heard of an error already, and have destroyed the item or placed a view.
    if (!ear->item) return;
    if (view && isShownOnScreens(view->viewType())) {
        const QSizeF size = screenSize();
        view->setFrame({{0, 0}, {size.width(), size.height()}});
    }
    place(std::move(view));
}

std::shared_ptr<VexmoraView> VexmoraAdItem::makeView(
    const std::shared_ptr<VexmoraDelegate>& delegate) const {
    const auto container = containerId_.toStdString();
    if (container.empty()) return nullptr;
    if (!adSize_.isEmpty())
        return VexmoraViewFactory::createView(container, adSize_.toStdString(), delegate);
    if (adType_ != 0)
        return VexmoraViewFactory::createView(container, VexmoraAdType{adType_}, delegate);
    if (viewType_ != 0)
        return VexmoraViewFactory::createView(container, VexmoraViewType{viewType_}, delegate);
    return nullptr;
}

void VexmoraAdItem::place(std::shared_ptr<VexmoraView> view) {
    adView_ = std::move(view);
    show(adView_ && isShownOnScreens(adView_->viewType()) ? nullptr : adView_);
}

QSizeF VexmoraAdItem::screenSize() const {
    if (!size().isEmpty() || !window()) return size();
    return window()->size();
}

void VexmoraAdItem::stopHearing() {
    if (ear_) ear_->item.clear();
    ear_.reset();
}

}  // namespace VexmoraSDK
