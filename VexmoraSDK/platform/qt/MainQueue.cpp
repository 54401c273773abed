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

/// Blocks run for at most this long before the event loop's other work: half a frame at 120 Hz.
constexpr std::chrono::milliseconds kMaxTurn(4);

// Threads may add blocks until the process is gone. Blocks that arrive after the application has
// ended stay here, so that no other thread destroys objects of the main thread.
struct State : BlockQueue {
    /// An object of the main thread, which exists while an application does.
    QObject* receiver = nullptr;
    /// Whether an event that runs blocks has been posted to the receiver.
    bool scheduled = false;
    /// The thread of the latest application, for comparison only.
    const QThread* mainThread = nullptr;
};

State& state() {
    static NoDestructor<State> state;
    return *state;
}

void runBlocks() noexcept;

// The caller holds the mutex, so the receiver stays alive.
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
        // A block may run a nested event loop, in which the remaining blocks must run.
        if (state().blocks.size() > 1) schedule();
        state().runNext(lock);
        if (std::chrono::steady_clock::now() >= end) break;
    }
    if (state().receiver && !state().blocks.empty()) schedule();
}

/// Makes Qt initialise the statics of its text layout.
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

/// The application, if it has a user interface. A mere QCoreApplication has no main queue, because
/// Qt Gui cannot be used with it.
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
    // The only application may have ended before the first call.
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
