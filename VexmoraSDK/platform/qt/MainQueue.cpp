// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/MainQueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextLayout>
#include <chrono>
#include <mutex>

#include "VexmoraSDK/platform/foundation/BlockQueue.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK::platform {
namespace {

/// After so long the event loop's other work has its turn: half a frame at 120 Hz.
constexpr std::chrono::milliseconds kMaxTurn(4);

// Threads may hand in blocks until the process is gone. Blocks that come after the application has
// ended stay here, so that nothing that belongs to the main thread is destroyed elsewhere.
struct State : BlockQueue {
    /// Lives on the main thread while there is an application.
    QObject* receiver = nullptr;
    /// Whether the receiver has an event to come that runs blocks.
    bool scheduled = false;
    /// The thread of the latest application, for comparison only.
    const QThread* mainThread = nullptr;
};

State& state() {
    static NoDestructor<State> state;
    return *state;
}

void runBlocks() noexcept;

// The mutex is held, so the receiver cannot go away meanwhile.
void schedule() {
    if (state().scheduled) return;
    QMetaObject::invokeMethod(state().receiver, runBlocks, Qt::QueuedConnection);
    state().scheduled = true;
}

void runBlocks() noexcept {
    const auto end = std::chrono::steady_clock::now() + kMaxTurn;
    std::unique_lock lock(state().mutex);
    state().scheduled = false;
    while (state().receiver && !state().hasEnded && !state().blocks.empty()) {
        // A block may run an event loop of its own, in which the remaining blocks have to run.
        if (state().blocks.size() > 1) schedule();
        state().runNext(lock);
        if (std::chrono::steady_clock::now() >= end) break;
    }
    if (state().receiver && !state().blocks.empty()) schedule();
}

/// Has Qt build the statics that it needs to lay out texts.
void layOutText() {
    QTextLayout layout(QStringLiteral("x"));
    layout.beginLayout();
    layout.createLine().setLineWidth(100);
    layout.endLayout();
}

void applicationEnds() {
    std::unique_lock lock(state().mutex);
    const std::unique_ptr<QObject> receiver(std::exchange(state().receiver, nullptr));
    state().scheduled = false;
    lock.unlock();
}

/// Of a toolkit with a user interface. A QCoreApplication alone has no main queue: neither its
/// fonts nor anything else of Qt Gui may be used.
QGuiApplication* guiApplication() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance());
}

void applicationStarts() {
    if (!guiApplication()) return;
    QThread* const thread = guiApplication()->thread();
    auto receiver = std::make_unique<QObject>();
    receiver->moveToThread(thread);
    qAddPostRoutine(applicationEnds);

    const std::lock_guard lock(state().mutex);
    state().mainThread = thread;
    state().receiver = receiver.release();
    if (state().blocks.empty()) return;
    // Blocks that an earlier application left behind are destroyed on the main thread.
    auto left = std::exchange(state().blocks, {});
    state().blocks.push_back([left = std::move(left)] {});
    schedule();
}

}  // namespace

MainQueue* MainQueue::main() {
    static MainQueue queue;
    // Qt runs the routine whenever an application starts, and at once if there is one.
    [[maybe_unused]] static const bool watching = (qAddPreRoutine(applicationStarts), true);
    const std::lock_guard lock(state().mutex);
    // The only application may have ended before anybody asked.
    return state().mainThread || QCoreApplication::closingDown() ? &queue : nullptr;
}

void MainQueue::async(std::function<void()> block) {
    const std::lock_guard lock(state().mutex);
    state().blocks.push_back(std::move(block));
    if (state().receiver && !state().hasEnded) schedule();
}

void MainQueue::prepareForEnd() {
    if (guiApplication()) layOutText();
}

void MainQueue::end() {
    state().end(isMainThread());
}

bool MainQueue::isMainThread() const {
    const std::lock_guard lock(state().mutex);
    return state().mainThread == QThread::currentThread();
}

bool MainQueue::isRunningBlock() const {
    return BlockQueue::isRunningBlock();
}

}  // namespace VexmoraSDK::platform
