// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <map>
#include <mutex>
#include <utility>

namespace VexmoraSDK::platform {

/// Keeps what Qt's font database has found until fonts come or go: a look-up in it takes longer
/// than drawing an ad does. Any thread.
template <class Key, class Result>
class FontLookupCache {
 public:
    /// The result that is kept for `key`, or else that of `lookUp`.
    template <class LookUp>
    Result find(const Key& key, LookUp lookUp) {
        std::unique_lock lock(mutex_);
        watchApplication();
        if (const auto known = results_.find(key); known != results_.end()) return known->second;
        const int changes = changes_;
        // The database tells of changes while it holds its own lock.
        lock.unlock();
        Result result = lookUp();
        lock.lock();
        if (changes == changes_ && results_.size() < kMaxEntries) results_.emplace(key, result);
        return result;
    }

 private:
    /// More than an app has fonts in use.
    static constexpr std::size_t kMaxEntries = 256;

    void watchApplication() {
        auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
        if (!application || application_ == application) return;
        application_ = application;
        results_.clear();
        QObject::connect(application, &QGuiApplication::fontDatabaseChanged, [this] {
            const std::lock_guard lock(mutex_);
            results_.clear();
            ++changes_;
        });
    }

    std::mutex mutex_;
    QPointer<QGuiApplication> application_;
    std::map<Key, Result> results_;
    int changes_ = 0;
};

}  // namespace VexmoraSDK::platform
