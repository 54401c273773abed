#pragma once

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <map>
#include <mutex>
#include <utility>

namespace VexmoraSDK::platform {

/// What Qt's font database answered, until fonts come or go: asking it takes longer than drawing an
/// ad does. Never destroyed. Any thread.
template <class Question, class Answer>
class FontAnswers {
 public:
    template <class Ask>
    Answer find(const Question& question, Ask ask) {
        std::unique_lock lock(mutex_);
        watchApplication();
        if (const auto known = answers_.find(question); known != answers_.end())
            return known->second;
        const int changes = changes_;
        // The database tells of changes from inside its own lock.
        lock.unlock();
        Answer answer = ask();
        lock.lock();
        if (changes == changes_ && answers_.size() < kMost) answers_.emplace(question, answer);
        return answer;
    }

 private:
    /// More than an app has fonts in use.
    static constexpr std::size_t kMost = 256;

    void watchApplication() {
        if (application_ == qGuiApp) return;
        application_ = qGuiApp;
        answers_.clear();
        QObject::connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, [this] {
            const std::lock_guard lock(mutex_);
            answers_.clear();
            ++changes_;
        });
    }

    std::mutex mutex_;
    QPointer<QGuiApplication> application_;
    std::map<Question, Answer> answers_;
    int changes_ = 0;
};

}  // namespace VexmoraSDK::platform
