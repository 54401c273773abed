#include "VexmoraSDK/quick/VexmoraAdItem.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtQuick/QQuickWindow>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/quick/Accessibility.h"
#include "VexmoraSDK/quick/Vexmora.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"

namespace VexmoraSDK {

/// Listens to one view on behalf of the item. Any thread may hold it; only the main thread uses the
/// item, which is absent once it is destroyed or shows another view.
struct VexmoraAdItem::Listener {
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

// The address that a tap opens. Only a view that has an ad is tapped.
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

template <class ListenerPointer>
std::shared_ptr<VexmoraDelegate> delegateFor(const ListenerPointer& listener) {
    using Item = VexmoraAdItem;
    auto delegate = std::make_shared<VexmoraDelegate>();
    const auto tells = [&listener](void (Item::*signal)()) {
        return [listener, signal](VexmoraView&) {
            if (listener->item) Q_EMIT(listener->item->*signal)();
        };
    };
    delegate->didReceiveAd = tells(&Item::didReceiveAd);
    delegate->willShowScreen = tells(&Item::willShowScreen);
    delegate->willDismissScreen = tells(&Item::willDismissScreen);
    delegate->didDismissScreen = tells(&Item::didDismissScreen);
    delegate->willLeaveApplication = [listener](VexmoraView& view) {
        if (listener->item) Q_EMIT listener->item->willLeaveApplication(clickUrlOf(view));
    };
    delegate->didHaveError = [listener](VexmoraView&, const VexmoraError& error) {
        const int code = static_cast<int>(error.code());
        runOnMainThread([listener, code, description = descriptionOf(error)] {
            if (listener->item) Q_EMIT listener->item->didHaveError(code, description);
        });
    };
    return delegate;
}

}  // namespace

VexmoraAdItem::VexmoraAdItem(QQuickItem* parent) : ViewItem(parent) {
    // Its parent may have brought it into a scene before it was an ad item.
    updateAccessibility();
}

VexmoraAdItem::~VexmoraAdItem() {
    stopListening();
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
    stopListening();
    place(std::move(view));
}

void VexmoraAdItem::updateAccessibility() {
    if (auto* link = makeAccessible(this, QAccessible::Link, tr("Advertisement")))
        connect(link, SIGNAL(pressAction()), SLOT(press()), Qt::UniqueConnection);
}

void VexmoraAdItem::componentComplete() {
    ViewItem::componentComplete();
    if (!view()) askLater();
}

// The former view goes at once: the properties no longer ask for its ad.
void VexmoraAdItem::choiceChanged() {
    stopListening();
    place(nullptr);
    if (isComponentComplete()) askLater();
}

void VexmoraAdItem::askLater() {
    if (std::exchange(willAskAnew_, true)) return;
    // A block of the main queue would not do: a request made in it starts one turn later still.
    const auto askNow = [this] {
        if (std::exchange(willAskAnew_, false)) ask();
    };
    QMetaObject::invokeMethod(this, askNow, Qt::QueuedConnection);
}

void VexmoraAdItem::ask() {
    const auto listener = std::make_shared<Listener>(Listener{this});
    listener_ = listener;
    auto view = makeView(delegateFor(listener));
    // The host may have heard of an error meanwhile and have destroyed the item or set a view.
    if (!listener->item) return;
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

void VexmoraAdItem::stopListening() {
    if (listener_) listener_->item.clear();
    listener_.reset();
}

}  // namespace VexmoraSDK
